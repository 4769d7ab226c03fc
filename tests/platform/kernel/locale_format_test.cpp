#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "platform/testing/simulated_machine.h"

namespace {

constexpr LCID kEnglish = 0x409;
constexpr LCID kSwedish = 0x41D;
constexpr SYSTEMTIME kMoment{2005, 3, 0, 4, 18, 5, 9, 0};

// Asks for the length first, as callers do.
std::wstring Number(LCID locale, const wchar_t* value) {
  const int needed = ::GetNumberFormatW(locale, 0, value, nullptr, nullptr, 0);
  std::wstring text(static_cast<std::size_t>(needed), L'?');
  EXPECT_EQ(::GetNumberFormatW(locale, 0, value, nullptr, text.data(), needed), needed);
  return text.c_str();
}

std::wstring Date(LCID locale, const SYSTEMTIME* date) {
  wchar_t text[40] = L"";
  ::GetDateFormatW(locale, DATE_SHORTDATE, date, nullptr, text, 40);
  return text;
}

std::wstring Time(LCID locale, const SYSTEMTIME* time, DWORD flags = 0) {
  wchar_t text[40] = L"";
  ::GetTimeFormatW(locale, flags, time, nullptr, text, 40);
  return text;
}

TEST(LocaleFormat, NumbersAreGroupedAndHaveTwoDecimals) {
  struct Case {
    const wchar_t* value;
    const wchar_t* english;
    const wchar_t* swedish;
  };
  for (const Case& each :
       {Case{L"0", L"0.00", L"0,00"}, Case{L"999", L"999.00", L"999,00"},
        Case{L"1234.5", L"1,234.50", L"1\u00A0234,50"}, Case{L".5", L"0.50", L"0,50"},
        Case{L"007", L"7.00", L"7,00"}, Case{L"0.125", L"0.13", L"0,13"},
        Case{L"-1234.565", L"-1,234.57", L"-1\u00A0234,57"},
        Case{L"18446744073709551615", L"18,446,744,073,709,551,615.00",
             L"18\u00A0446\u00A0744\u00A0073\u00A0709\u00A0551\u00A0615,00"}}) {
    EXPECT_EQ(Number(kEnglish, each.value), each.english);
    EXPECT_EQ(Number(kSwedish, each.value), each.swedish);
  }
}

TEST(LocaleFormat, ShortDatesHaveFullYearsAndTimesTheirSeconds) {
  EXPECT_EQ(Date(kEnglish, &kMoment), L"3/4/2005");
  EXPECT_EQ(Date(0x809, &kMoment), L"04/03/2005");
  EXPECT_EQ(Date(kSwedish, &kMoment), L"2005-03-04");
  EXPECT_EQ(Time(kEnglish, &kMoment), L"6:05:09 PM");
  EXPECT_EQ(Time(kSwedish, &kMoment), L"18:05:09");
  EXPECT_EQ(Time(kEnglish, &kMoment, TIME_NOSECONDS), L"6:05 PM");
}

TEST(LocaleFormat, TheUsersLocaleAndThePresentAreTheMachines) {
  platform::SimulatedMachine machine;
  machine.SetLocale(kSwedish, 0);
  EXPECT_EQ(Number(LOCALE_USER_DEFAULT, L"1.5"), L"1,50");
  EXPECT_EQ(Date(LOCALE_USER_DEFAULT, nullptr), L"2005-03-14");
  EXPECT_EQ(Time(LOCALE_USER_DEFAULT, nullptr), L"18:05:09");
}

TEST(LocaleFormat, ATimeNeedsNoDayAndADateNoTime) {
  const SYSTEMTIME timeAlone{0, 0, 0, 0, 7, 8, 9, 0};
  const SYSTEMTIME dateAlone{2005, 3, 0, 4, 99, 99, 99, 0};
  EXPECT_EQ(Time(kSwedish, &timeAlone), L"07:08:09");
  EXPECT_EQ(Date(kSwedish, &dateAlone), L"2005-03-04");
}

TEST(LocaleFormat, WhatIsNoNumberDateOrTimeIsRefused) {
  wchar_t text[40];
  for (const wchar_t* value : {L"", L"-", L".", L"1-", L"1.2.3", L"1,5", L"1e5", L" 1"}) {
    ::SetLastError(NO_ERROR);
    EXPECT_EQ(::GetNumberFormatW(kEnglish, 0, value, nullptr, text, 40), 0) << value;
    EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
  }
  for (const SYSTEMTIME& date : {SYSTEMTIME{2005, 2, 0, 29, 0, 0, 0, 0},
                                 SYSTEMTIME{2005, 13, 0, 1, 0, 0, 0, 0}, SYSTEMTIME{}}) {
    ::SetLastError(NO_ERROR);
    EXPECT_EQ(::GetDateFormatW(kEnglish, 0, &date, nullptr, text, 40), 0);
    EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
  }
  const SYSTEMTIME late{2005, 3, 0, 4, 24, 0, 0, 0};
  EXPECT_EQ(::GetTimeFormatW(kEnglish, 0, &late, nullptr, text, 40), 0);
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST(LocaleFormat, AShortBufferIsNotWritten) {
  wchar_t text[] = L"abcd";
  EXPECT_EQ(::GetNumberFormatW(kEnglish, 0, L"1", nullptr, text, 4), 0);
  EXPECT_EQ(::GetLastError(), ERROR_INSUFFICIENT_BUFFER);
  EXPECT_STREQ(text, L"abcd");
}

TEST(LocaleFormat, AnUnsupportedFormIsNotTakenForTheDefault) {
  wchar_t text[40];
  EXPECT_EQ(::GetDateFormatW(kEnglish, 2, &kMoment, nullptr, text, 40), 0);
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_FLAGS);
  ::SetLastError(NO_ERROR);
  EXPECT_EQ(::GetTimeFormatW(kEnglish, 0, &kMoment, L"HH", text, 40), 0);
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_FLAGS);
}

}  // namespace
