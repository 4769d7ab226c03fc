// The user's language (LC_ALL, LC_MESSAGES, LANG) and first day of the week (LC_ALL, LC_TIME,
// LANG), as ICU understands those names, unless the simulated machine says otherwise. The plain
// locales "C" and "POSIX" are American English. Any thread.
#pragma once

#include <windef.h>

#include <optional>

namespace platform {

struct LocaleChoice {
  LANGID language;         // the user's and the system's default language
  int firstDayFromMonday;  // 0 = Monday ... 6 = Sunday, as LOCALE_IFIRSTDAYOFWEEK counts
};

LANGID CurrentLanguage();
int CurrentFirstDayFromMonday();
void SetLocaleChoice(std::optional<LocaleChoice> choice);

}  // namespace platform
