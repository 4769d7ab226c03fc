#include <windows.h>

#include <unicode/ucal.h>
#include <unicode/uloc.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <mutex>
#include <optional>
#include <string>

#include "platform/kernel/api_result.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/locale_source.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

using LocaleName = std::array<char, ULOC_FULLNAME_CAPACITY>;

constexpr LANGID kAmericanEnglish = MAKELANGID(LANG_ENGLISH, SUBLANG_DEFAULT);
constexpr int kSunday = 6;  // counted from Monday

// The value of the first variable that is set, as setlocale documents. Null: the locale "C".
const char* EnvironmentLocale(const char* category) {
  for (const char* name : {"LC_ALL", category, "LANG"}) {
    const char* value = std::getenv(name);
    if (value == nullptr || *value == '\0') continue;
    const std::string_view text = value;
    return text == "C" || text == "POSIX" || text.starts_with("C.") ? nullptr : value;
  }
  return nullptr;
}

// ICU's form of a POSIX name: "sv_SE.UTF-8" becomes "sv_SE". Empty when ICU rejects the name.
std::string IcuName(const char* posixName) {
  LocaleName name{};
  UErrorCode error = U_ZERO_ERROR;
  uloc_canonicalize(posixName, name.data(), static_cast<std::int32_t>(name.size() - 1), &error);
  return U_SUCCESS(error) ? name.data() : "";
}

LANGID LanguageOf(const std::string& posixName) {
  const auto language = static_cast<LANGID>(uloc_getLCID(IcuName(posixName.c_str()).c_str()));
  if (PRIMARYLANGID(language) == LANG_NEUTRAL) return kAmericanEnglish;
  // A language without a country gets that language's first sublanguage.
  const bool bare = (language >> 10) == SUBLANG_NEUTRAL;
  return bare ? MAKELANGID(PRIMARYLANGID(language), SUBLANG_DEFAULT) : language;
}

// Queried with nearly every text, so the last result is cached.
LANGID EnvironmentLanguage() {
  const char* posixName = EnvironmentLocale("LC_MESSAGES");
  if (posixName == nullptr) return kAmericanEnglish;
  static std::mutex mutex;
  static std::string& cachedName = *new std::string;
  static LANGID language = kAmericanEnglish;
  const std::lock_guard lock(mutex);
  if (cachedName != posixName) {
    language = LanguageOf(posixName);
    cachedName = posixName;
  }
  return language;
}

// 0 = Monday ... 6 = Sunday; nothing when ICU fails.
std::optional<int> FirstDayOf(const std::string& icuName) {
  UErrorCode error = U_ZERO_ERROR;
  UCalendar* calendar = ucal_open(u"UTC", 3, icuName.c_str(), UCAL_GREGORIAN, &error);
  if (U_FAILURE(error)) return std::nullopt;
  const int fromSunday = ucal_getAttribute(calendar, UCAL_FIRST_DAY_OF_WEEK) - UCAL_SUNDAY;
  ucal_close(calendar);
  return (fromSunday + 6) % 7;
}

int EnvironmentFirstDay() {
  const char* posixName = EnvironmentLocale("LC_TIME");
  return posixName == nullptr ? kSunday : FirstDayOf(IcuName(posixName)).value_or(kSunday);
}

std::mutex choiceMutex;
std::optional<LocaleChoice> choice;

std::optional<LocaleChoice> ChosenLocale() {
  const std::lock_guard lock(choiceMutex);
  return choice;
}

bool IsDefault(LCID locale) {
  return locale == LOCALE_USER_DEFAULT || locale == LOCALE_SYSTEM_DEFAULT || locale == 0;
}

std::string IcuNameOf(LCID locale) {
  LocaleName name{};
  UErrorCode error = U_ZERO_ERROR;
  uloc_getLocaleForLCID(locale, name.data(), static_cast<std::int32_t>(name.size() - 1), &error);
  return U_SUCCESS(error) ? name.data() : "";
}

std::optional<std::wstring> NativeLanguageName(LCID locale) {
  const std::string name = IcuNameOf(IsDefault(locale) ? LCID{CurrentLanguage()} : locale);
  std::array<char16_t, ULOC_FULLNAME_CAPACITY> text{};
  UErrorCode error = U_ZERO_ERROR;
  const int length = uloc_getDisplayLanguage(name.c_str(), name.c_str(), text.data(),
                                             static_cast<std::int32_t>(text.size()), &error);
  if (name.empty() || U_FAILURE(error) || error == U_USING_DEFAULT_WARNING) return std::nullopt;
  return std::wstring(text.begin(), text.begin() + length);
}

std::optional<std::wstring> FirstDayText(LCID locale) {
  if (IsDefault(locale)) {
    return std::to_wstring(CurrentFirstDayFromMonday());
  }
  const std::string name = IcuNameOf(locale);
  const std::optional<int> day = name.empty() ? std::nullopt : FirstDayOf(name);
  if (!day) return std::nullopt;
  return std::to_wstring(*day);
}

// 0: the thread has chosen none.
thread_local LANGID threadLanguage = 0;

std::string UsersLocale(const char* category) {
  if (const std::optional<LocaleChoice> chosen = ChosenLocale()) {
    return IcuNameOf(chosen->language);
  }
  const char* posixName = EnvironmentLocale(category);
  const std::string name = posixName == nullptr ? "" : IcuName(posixName);
  return name.empty() ? IcuNameOf(kAmericanEnglish) : name;
}

}  // namespace

std::string FormatLocale(LCID locale, const char* category) {
  return IsDefault(locale) ? UsersLocale(category) : IcuNameOf(locale);
}

int GiveLocaleText(const std::optional<std::wstring>& text, LPWSTR buffer, int characters) {
  if (!text) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
  }
  const int needed = static_cast<int>(text->size()) + 1;
  if (characters == 0) return needed;
  if (characters < needed) {
    ::SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return 0;
  }
  std::ranges::copy(*text, buffer);
  buffer[text->size()] = L'\0';
  return needed;
}

LANGID CurrentLanguage() {
  const std::optional<LocaleChoice> chosen = ChosenLocale();
  return chosen ? chosen->language : EnvironmentLanguage();
}

int CurrentFirstDayFromMonday() {
  const std::optional<LocaleChoice> chosen = ChosenLocale();
  return chosen ? chosen->firstDayFromMonday : EnvironmentFirstDay();
}

LANGID ThreadLanguage() {
  return threadLanguage != 0 ? threadLanguage : CurrentLanguage();
}

std::string LanguageCode(LANGID language) {
  std::array<char, ULOC_LANG_CAPACITY> code{};
  UErrorCode error = U_ZERO_ERROR;
  uloc_getLanguage(IcuNameOf(language).c_str(), code.data(),
                   static_cast<std::int32_t>(code.size() - 1), &error);
  return U_SUCCESS(error) ? code.data() : "";
}

void SetLocaleChoice(std::optional<LocaleChoice> newChoice) {
  const std::lock_guard lock(choiceMutex);
  choice = newChoice;
}

}  // namespace platform

extern "C" {

LANGID WINAPI GetSystemDefaultLangID() try { return platform::CurrentLanguage(); } catch (...) {
  return platform::FailedCall(LANGID{0});
}

LANGID WINAPI GetSystemDefaultUILanguage() try { return platform::CurrentLanguage(); } catch (...) {
  return platform::FailedCall(LANGID{0});
}

LANGID WINAPI SetThreadUILanguage(LANGID language) try {
  const bool isUsers = PRIMARYLANGID(language) == LANG_NEUTRAL;
  platform::threadLanguage = isUsers ? LANGID{0} : language;
  return language != 0 ? language : platform::CurrentLanguage();
} catch (...) {
  return platform::FailedCall(LANGID{0});
}

int WINAPI GetLocaleInfoW(LCID locale, LCTYPE type, LPWSTR data, int characters) try {
  if (characters < 0 || (data == nullptr && characters > 0)) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
  }
  if (type != LOCALE_SNATIVELANGNAME && type != LOCALE_IFIRSTDAYOFWEEK) {
    platform::LogLine("GetLocaleInfoW: unsupported information " + std::to_string(type));
    ::SetLastError(ERROR_INVALID_FLAGS);
    return 0;
  }
  const std::optional<std::wstring> text = type == LOCALE_SNATIVELANGNAME
                                               ? platform::NativeLanguageName(locale)
                                               : platform::FirstDayText(locale);
  return platform::GiveLocaleText(text, data, characters);
} catch (...) {
  return platform::FailedCall(0);
}

}  // extern "C"
