// The clock of the simulated machine, and whose locale it is: that machine's or the environment's.
#include <windows.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <string>
#include <thread>
#include <tuple>

#include "platform/kernel/locale_source.h"
#include "platform/kit/failing_call.h"
#include "platform/testing/simulated_machine.h"

namespace {

constexpr LCID kEnglish = 0x409;
constexpr LCID kSwedish = 0x41D;

std::wstring Information(LCID locale, LCTYPE type) {
  wchar_t text[80] = L"";
  ::GetLocaleInfoW(locale, type, text, 80);
  return text;
}

TEST(UserLocale, IsWhatTheMachineSays) {
  platform::SimulatedMachine machine;
  machine.SetLocale(kSwedish, 5);
  EXPECT_EQ(::GetSystemDefaultUILanguage(), kSwedish);
  for (const LCID locale : {LOCALE_USER_DEFAULT, LOCALE_SYSTEM_DEFAULT}) {
    EXPECT_EQ(Information(locale, LOCALE_IFIRSTDAYOFWEEK), L"5");
    EXPECT_EQ(Information(locale, LOCALE_SNATIVELANGNAME), L"svenska");
  }
  wchar_t text[40] = L"";
  ::GetNumberFormatW(LOCALE_USER_DEFAULT, 0, L"1.5", nullptr, text, 40);
  EXPECT_STREQ(text, L"1,50");
  ::GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, nullptr, nullptr, text, 40);
  EXPECT_STREQ(text, L"2005-03-14");
  ::GetTimeFormatW(LOCALE_USER_DEFAULT, 0, nullptr, nullptr, text, 40);
  EXPECT_STREQ(text, L"18:05:09");
}

TEST(UserLocale, WithoutASimulatedOneTheEnvironmentDecides) {
  const auto clear = [] {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LC_TIME", "LANG"})
      ::unsetenv(name);
  };
  clear();
  EXPECT_EQ(::GetSystemDefaultUILanguage(), kEnglish);
  const std::tuple<const char*, const char*, LANGID, const wchar_t*> cases[] = {
      // Each case stays in force below the next ones, which go before it.
      {"LANG", "sv_SE.UTF-8", 0x41D, L"0"},
      {"LANG", "sv_FI", 0x81D, L"0"},
      {"LANG", "sv", 0x41D, L"0"},
      {"LANG", "xx_YY", 0x409, nullptr},
      {"LANG", "de_DE@euro", 0x407, L"0"},
      {"LC_TIME", "en_US.UTF-8", 0x407, L"6"},
      {"LC_MESSAGES", "en_GB.UTF-8", 0x809, L"6"},
      {"LC_ALL", "C.UTF-8", 0x409, L"6"},
      {"LC_ALL", "sv_SE", 0x41D, L"0"},
  };
  for (const auto& [name, value, language, firstDay] : cases) {
    ::setenv(name, value, 1);
    EXPECT_EQ(::GetSystemDefaultUILanguage(), language) << value;
    if (firstDay == nullptr) continue;
    EXPECT_EQ(Information(LOCALE_USER_DEFAULT, LOCALE_IFIRSTDAYOFWEEK), firstDay) << value;
  }
  clear();
}

TEST(UserLocale, TheLanguageOfAThreadIsItsOwnUntilItTakesTheUsersAgain) {
  const platform::SimulatedMachine machine;
  std::thread([] {
    EXPECT_EQ(::SetThreadUILanguage(kSwedish), kSwedish);
    EXPECT_EQ(platform::LanguageCode(platform::ThreadLanguage()), "sv");
    std::thread([] { EXPECT_EQ(platform::ThreadLanguage(), kEnglish); }).join();
    EXPECT_EQ(::SetThreadUILanguage(0), kEnglish);
    EXPECT_EQ(platform::LanguageCode(platform::ThreadLanguage()), "en");
  }).join();
}

TEST(UserLocale, UnsupportedFormsAreNotTakenForTheDefault) {
  constexpr SYSTEMTIME kMoment{2005, 3, 0, 4, 18, 5, 9, 0};
  EXPECT_EQ(ErrorOf(::GetDateFormatW(kEnglish, 2, &kMoment, nullptr, nullptr, 0)),
            ERROR_INVALID_FLAGS);
  EXPECT_EQ(ErrorOf(::GetTimeFormatW(kEnglish, 0, &kMoment, L"HH", nullptr, 0)),
            ERROR_INVALID_FLAGS);
  EXPECT_EQ(ErrorOf(::GetLocaleInfoW(kEnglish, 0x0000000Eu, nullptr, 0)), ERROR_INVALID_FLAGS);
}

TEST(Clock, LocalTimeAndTicksAreTheMachines) {
  platform::SimulatedMachine machine;
  machine.Time().SetLocalTime(2024, 2, 29, 23, 59, 58);
  machine.Time().SetTickMilliseconds(0x1'0000'0005);
  EXPECT_EQ(::GetTickCount(), 5u);
  ::Sleep(1'250);
  EXPECT_EQ(::GetTickCount(), 1'255u);
  SYSTEMTIME time{};
  ::GetLocalTime(&time);
  EXPECT_EQ(std::tuple(time.wYear, time.wMonth, time.wDay, time.wDayOfWeek),
            std::tuple(2024, 2, 29, 4));
  EXPECT_EQ(std::tuple(time.wHour, time.wMinute, time.wSecond, time.wMilliseconds),
            std::tuple(23, 59, 59, 250));
  ::setenv("TZ", "EAST-5", 1);  // the machine has moved
  ::GetLocalTime(&time);
  ::setenv("TZ", "UTC", 1);
  EXPECT_EQ(time.wHour, 4);
}

TEST(Clock, TimeOutsRunOnTheMachines) {
  platform::SimulatedMachine machine;
  const HANDLE mutex = ::CreateMutexW(nullptr, TRUE, nullptr);
  std::atomic<DWORD> result = 1;
  std::jthread waiter([&] { result = ::WaitForSingleObject(mutex, 3'600'000); });
  // Whenever the waiter has read the clock, its time is over an hour after that.
  while (result == 1) {
    machine.Time().Advance(std::chrono::hours(1));
    std::this_thread::yield();
  }
  EXPECT_EQ(result, WAIT_TIMEOUT);
  EXPECT_TRUE(::CloseHandle(mutex));
}

}  // namespace
