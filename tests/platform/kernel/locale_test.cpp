#include <windows.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <tuple>

#include "platform/kit/failing_call.h"

namespace {

constexpr LCID kEnglish = 0x409;
constexpr LCID kSwedish = 0x41D;
constexpr SYSTEMTIME kMoment{2005, 3, 0, 4, 18, 5, 9, 0};

// Asks for the length first, as callers do.
template <class Call>
std::wstring Text(Call call) {
  const int needed = call(nullptr, 0);
  std::wstring text(static_cast<std::size_t>(needed), L'?');
  EXPECT_EQ(call(text.data(), needed), needed);
  return text.c_str();
}

std::wstring Number(LCID locale, const wchar_t* value) {
  return Text(std::bind_front(::GetNumberFormatW, locale, 0, value, nullptr));
}

std::wstring Date(LCID locale, const SYSTEMTIME& date) {
  return Text(std::bind_front(::GetDateFormatW, locale, DATE_SHORTDATE, &date, nullptr));
}

std::wstring Time(LCID locale, const SYSTEMTIME& time, DWORD flags = 0) {
  return Text(std::bind_front(::GetTimeFormatW, locale, flags, &time, nullptr));
}

TEST(Locale, LanguagesHaveTheirOwnNamesAndFirstDays) {
  const std::tuple<LCID, LCTYPE, const wchar_t*> cases[] = {
      {kEnglish, LOCALE_SNATIVELANGNAME, L"English"},
      {kSwedish, LOCALE_SNATIVELANGNAME, L"svenska"},
      {kEnglish, LOCALE_IFIRSTDAYOFWEEK, L"6"},
      {kSwedish, LOCALE_IFIRSTDAYOFWEEK, L"0"},
  };
  for (const auto& [locale, type, text] : cases)
    EXPECT_EQ(Text(std::bind_front(::GetLocaleInfoW, locale, type)), text);
}

TEST(Locale, NumbersAreGroupedAndHaveTwoDecimals) {
  const std::tuple<const wchar_t*, const wchar_t*, const wchar_t*> cases[] = {
      {L"0", L"0.00", L"0,00"},
      {L"999", L"999.00", L"999,00"},
      {L"1234.5", L"1,234.50", L"1\u00A0234,50"},
      {L".5", L"0.50", L"0,50"},
      {L"007", L"7.00", L"7,00"},
      {L"0.125", L"0.13", L"0,13"},
      {L"-1234.565", L"-1,234.57", L"-1\u00A0234,57"},
      {L"18446744073709551615", L"18,446,744,073,709,551,615.00",
       L"18\u00A0446\u00A0744\u00A0073\u00A0709\u00A0551\u00A0615,00"},
  };
  for (const auto& [value, english, swedish] : cases) {
    EXPECT_EQ(Number(kEnglish, value), english);
    EXPECT_EQ(Number(kSwedish, value), swedish);
  }
}

TEST(Locale, ShortDatesHaveFullYearsAndTimesTheirSeconds) {
  EXPECT_EQ(Date(kEnglish, kMoment), L"3/4/2005");
  EXPECT_EQ(Date(0x809, kMoment), L"04/03/2005");
  EXPECT_EQ(Time(kEnglish, kMoment), L"6:05:09 PM");
  EXPECT_EQ(Time(kEnglish, kMoment, TIME_NOSECONDS), L"6:05 PM");
  const SYSTEMTIME timeAlone{0, 0, 0, 0, 7, 8, 9, 0};
  EXPECT_EQ(Time(kSwedish, timeAlone), L"07:08:09");
  const SYSTEMTIME dateAlone{2005, 3, 0, 4, 99, 99, 99, 0};
  EXPECT_EQ(Date(kSwedish, dateAlone), L"2005-03-04");
}

TEST(Locale, InvalidArgumentsFailAndLeaveTheBuffer) {
  wchar_t text[40] = L"abcd";
  const auto number = [&](const wchar_t* value, int size = 40) {
    return ErrorOf(::GetNumberFormatW(kEnglish, 0, value, nullptr, text, size));
  };
  for (const wchar_t* value : {L"", L"-", L".", L"1-", L"1.2.3", L"1,5", L"1e5", L" 1"})
    EXPECT_EQ(number(value), ERROR_INVALID_PARAMETER) << value;
  EXPECT_EQ(number(L"1", 4), ERROR_INSUFFICIENT_BUFFER);
  for (const SYSTEMTIME& date : {SYSTEMTIME{2005, 2, 0, 29, 0, 0, 0, 0},
                                 SYSTEMTIME{2005, 13, 0, 1, 0, 0, 0, 0}, SYSTEMTIME{}}) {
    EXPECT_EQ(ErrorOf(::GetDateFormatW(kEnglish, 0, &date, nullptr, text, 40)),
              ERROR_INVALID_PARAMETER);
  }
  const SYSTEMTIME late{2005, 3, 0, 4, 24, 0, 0, 0};
  EXPECT_EQ(ErrorOf(::GetTimeFormatW(kEnglish, 0, &late, nullptr, text, 40)),
            ERROR_INVALID_PARAMETER);
  const auto name = [](LCID locale, wchar_t* to, int size) {
    return ErrorOf(::GetLocaleInfoW(locale, LOCALE_SNATIVELANGNAME, to, size));
  };
  EXPECT_EQ(name(kEnglish, text, 4), ERROR_INSUFFICIENT_BUFFER);
  EXPECT_EQ(name(0xFFFF, nullptr, 0), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(name(kEnglish, nullptr, 4), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(name(kEnglish, text, -1), ERROR_INVALID_PARAMETER);
  EXPECT_STREQ(text, L"abcd");
}

}  // namespace
