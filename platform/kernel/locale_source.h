// The user's language and first day of the week, as ICU reads them from the environment, unless the
// simulated machine says otherwise.
#pragma once

#include <windef.h>

#include <optional>

namespace platform {

struct LocaleChoice {
  LANGID language;         // the user's and the system's default language
  int firstDayFromMonday;  // 0 = Monday ... 6 = Sunday, as LOCALE_IFIRSTDAYOFWEEK counts
};

LocaleChoice CurrentLocale();
void SetLocaleChoice(std::optional<LocaleChoice> choice);

}  // namespace platform
