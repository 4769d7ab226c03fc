#include <windows.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

#include "platform/testing/simulated_machine.h"

namespace {

std::wstring Information(LCID locale, LCTYPE type) {
  const int needed = ::GetLocaleInfoW(locale, type, nullptr, 0);
  if (needed == 0) return L"";
  std::wstring text(static_cast<std::size_t>(needed), L'?');
  EXPECT_EQ(::GetLocaleInfoW(locale, type, text.data(), needed), needed);
  EXPECT_EQ(text.back(), L'\0');
  text.pop_back();
  return text;
}

// The variables that say what the user's language is, put back at the end.
class Environment {
 public:
  Environment() {
    for (std::size_t i = 0; i < kCount; ++i) {
      const char* value = std::getenv(kNames[i]);
      if (value != nullptr) old_[i] = value;
      ::unsetenv(kNames[i]);
    }
  }
  ~Environment() {
    for (std::size_t i = 0; i < kCount; ++i) {
      ::unsetenv(kNames[i]);
      if (old_[i]) ::setenv(kNames[i], old_[i]->c_str(), 1);
    }
  }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

 private:
  static constexpr std::size_t kCount = 4;
  static constexpr const char* kNames[kCount] = {"LC_ALL", "LC_MESSAGES", "LC_TIME", "LANG"};
  std::optional<std::string> old_[kCount];
};

TEST(Locale, LanguagesHaveTheirOwnNamesAndFirstDays) {
  EXPECT_EQ(Information(0x409, LOCALE_SNATIVELANGNAME), L"English");
  EXPECT_EQ(Information(0x41D, LOCALE_SNATIVELANGNAME), L"svenska");
  EXPECT_EQ(Information(0x409, LOCALE_IFIRSTDAYOFWEEK), L"6");
  EXPECT_EQ(Information(0x41D, LOCALE_IFIRSTDAYOFWEEK), L"0");
}

TEST(Locale, TheUsersIsWhatTheMachineSays) {
  platform::SimulatedMachine machine;
  machine.SetLocale(0x41D, 5);
  EXPECT_EQ(::GetSystemDefaultLangID(), 0x41D);
  EXPECT_EQ(::GetSystemDefaultUILanguage(), 0x41D);
  for (const LCID locale : {LOCALE_USER_DEFAULT, LOCALE_SYSTEM_DEFAULT}) {
    EXPECT_EQ(Information(locale, LOCALE_IFIRSTDAYOFWEEK), L"5");
    EXPECT_EQ(Information(locale, LOCALE_SNATIVELANGNAME), L"svenska");
  }
}

TEST(Locale, WithoutASimulatedOneTheEnvironmentDecides) {
  struct Case {
    const char* name;
    const char* value;
    LANGID language;
    const wchar_t* firstDay;
  };
  const Environment environment;
  EXPECT_EQ(::GetSystemDefaultLangID(), 0x409);
  // Each case stays in force below the next ones, which go before it.
  for (const Case& each :
       {Case{"LANG", "sv_SE.UTF-8", 0x41D, L"0"}, Case{"LANG", "sv_FI", 0x81D, L"0"},
        Case{"LANG", "sv", 0x41D, L"0"}, Case{"LANG", "xx_YY", 0x409, L"0"},
        Case{"LANG", "de_DE@euro", 0x407, L"0"}, Case{"LC_TIME", "en_US.UTF-8", 0x407, L"6"},
        Case{"LC_MESSAGES", "en_GB.UTF-8", 0x809, L"6"}, Case{"LC_ALL", "C.UTF-8", 0x409, L"6"},
        Case{"LC_ALL", "sv_SE", 0x41D, L"0"}}) {
    ::setenv(each.name, each.value, 1);
    EXPECT_EQ(::GetSystemDefaultLangID(), each.language) << each.value;
    if (std::string_view(each.value) == "xx_YY") continue;
    EXPECT_EQ(Information(LOCALE_USER_DEFAULT, LOCALE_IFIRSTDAYOFWEEK), each.firstDay)
        << each.value;
  }
}

TEST(Locale, WrongArgumentsGetTheDocumentedErrors) {
  wchar_t text[4];
  const auto check = [](int result, DWORD error) {
    EXPECT_EQ(result, 0);
    EXPECT_EQ(::GetLastError(), error);
    ::SetLastError(NO_ERROR);
  };
  check(::GetLocaleInfoW(0x409, LOCALE_SNATIVELANGNAME, text, 4), ERROR_INSUFFICIENT_BUFFER);
  check(::GetLocaleInfoW(0x409, 0x0000000Eu, text, 4), ERROR_INVALID_FLAGS);
  check(::GetLocaleInfoW(0xFFFF, LOCALE_SNATIVELANGNAME, nullptr, 0), ERROR_INVALID_PARAMETER);
  check(::GetLocaleInfoW(0x409, LOCALE_SNATIVELANGNAME, nullptr, 4), ERROR_INVALID_PARAMETER);
  check(::GetLocaleInfoW(0x409, LOCALE_SNATIVELANGNAME, text, -1), ERROR_INVALID_PARAMETER);
}

}  // namespace
