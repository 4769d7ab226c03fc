// The user's locale, from the environment: language (LC_ALL, LC_MESSAGES, LANG), first day of the
// week and date formats (LC_ALL, LC_TIME, LANG), number formats (LC_ALL, LC_NUMERIC, LANG). ICU
// interprets the names. The locales "C" and "POSIX" are American English. The simulated machine
// replaces all of them. Any thread.
#pragma once

#include <windef.h>

#include <optional>
#include <string>
#include <string_view>

namespace platform {

struct LocaleChoice {
  LANGID language;         // the user's and the system's default language
  int firstDayFromMonday;  // 0 = Monday ... 6 = Sunday, as in LOCALE_IFIRSTDAYOFWEEK
};

LANGID CurrentLanguage();
int CurrentFirstDayFromMonday();
// The language that the calling thread has chosen for its interface, else the user's.
LANGID ThreadLanguage();
// The code of a language by ISO 639, such as "sv"; empty for a language that ICU does not support.
std::string LanguageCode(LANGID language);
// The ICU name of a locale; empty for a locale that ICU does not support. For a default locale,
// `category` is the environment variable to read, such as "LC_NUMERIC".
std::string FormatLocale(LCID locale, const char* category);

// Returns a text as GetLocaleInfoW and the format functions do: copies it to the caller's buffer
// and returns the number of characters with the terminating null, or only that number when
// `characters` is 0. 0 with the last error set: ERROR_INVALID_PARAMETER when there is no text,
// ERROR_INSUFFICIENT_BUFFER when the buffer is too small.
int GiveLocaleText(const std::optional<std::wstring>& text, LPWSTR buffer, int characters);

// Compares case-insensitively in the sort order of the user's locale (LC_COLLATE): negative, zero
// or positive.
int CompareTexts(std::wstring_view left, std::wstring_view right);

// Replaces the environment's locale; nothing: the environment's again.
void SetLocaleChoice(std::optional<LocaleChoice> choice);

}  // namespace platform
