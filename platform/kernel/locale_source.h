// The user's language (LC_ALL, LC_MESSAGES, LANG), first day of the week (LC_ALL, LC_TIME, LANG)
// and formats (LC_NUMERIC or LC_TIME in its place), as ICU understands those names, unless the
// simulated machine says otherwise. The plain locales "C" and "POSIX" are American English. Any
// thread.
#pragma once

#include <windef.h>

#include <optional>
#include <string>
#include <string_view>

namespace platform {

struct LocaleChoice {
  LANGID language;         // the user's and the system's default language
  int firstDayFromMonday;  // 0 = Monday ... 6 = Sunday, as LOCALE_IFIRSTDAYOFWEEK counts
};

LANGID CurrentLanguage();
int CurrentFirstDayFromMonday();
// ICU's name of the locale whose formats count; empty for a locale that ICU does not know. The
// category is the variable that decides about the user's own, such as "LC_NUMERIC".
std::string FormatLocale(LCID locale, const char* category);

// What a function of the locale family answers: the text goes to the caller's buffer, or its size
// with its end is told when `characters` is 0. Nothing means ERROR_INVALID_PARAMETER.
int GiveLocaleText(const std::optional<std::wstring>& text, LPWSTR buffer, int characters);

// Negative, zero or positive, in the order in which the user's language sorts (LC_COLLATE), without
// regard to case.
int CompareTexts(std::wstring_view left, std::wstring_view right);

void SetLocaleChoice(std::optional<LocaleChoice> choice);

}  // namespace platform
