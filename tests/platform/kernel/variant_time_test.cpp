#include <windows.h>

#include <gtest/gtest.h>

#include <oleauto.h>

#include <cmath>
#include <tuple>

namespace {

constexpr SYSTEMTIME Day(WORD year, WORD month, WORD day, WORD hour = 0, WORD minute = 0,
                         WORD second = 0) {
  return {year, month, 0, day, hour, minute, second, 0};
}

auto Fields(const SYSTEMTIME& time) {
  return std::tuple(time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond);
}

TEST(VariantTime, KnownDatesConvertBothWays) {
  const std::pair<SYSTEMTIME, DATE> cases[] = {
      {Day(1899, 12, 30), 0.0},
      {Day(1899, 12, 29, 6), -1.25},
      {Day(1899, 12, 30, 18), 0.75},
      {Day(1900, 1, 1), 2.0},
      {Day(2005, 3, 14, 18, 5, 9), 38425.753576388888},
      {Day(100, 1, 1), -657434.0},
      {Day(9999, 12, 31, 23, 59, 59), 2958465.999988426},
  };
  for (auto [given, expected] : cases) {
    DATE date = 0;
    ASSERT_TRUE(::SystemTimeToVariantTime(&given, &date)) << expected;
    EXPECT_NEAR(date, expected, 1e-9);
    SYSTEMTIME back{};
    ASSERT_TRUE(::VariantTimeToSystemTime(date, &back));
    EXPECT_EQ(Fields(back), Fields(given));
  }
}

TEST(VariantTime, DaysThatTheMonthDoesNotHaveRollOver) {
  const std::pair<SYSTEMTIME, SYSTEMTIME> cases[] = {
      {Day(2001, 2, 29), Day(2001, 3, 1)}, {Day(2001, 2, 31), Day(2001, 3, 3)},
      {Day(2004, 2, 30), Day(2004, 3, 1)}, {Day(2001, 4, 31), Day(2001, 5, 1)},
      {Day(2001, 2, 0), Day(2001, 1, 31)},
  };
  for (auto [given, meant] : cases) {
    DATE date = 0;
    DATE expected = 0;
    ASSERT_TRUE(::SystemTimeToVariantTime(&given, &date));
    ASSERT_TRUE(::SystemTimeToVariantTime(&meant, &expected));
    EXPECT_EQ(date, expected);
  }
}

TEST(VariantTime, DatesOutOfRangeFail) {
  DATE date = 7;
  for (SYSTEMTIME each :
       {Day(2001, 1, 32), Day(2001, 0, 1), Day(2001, 13, 1), Day(99, 1, 1), Day(10000, 1, 1),
        Day(100, 1, 0), Day(2001, 1, 1, 24), Day(2001, 1, 1, 0, 60), Day(2001, 1, 1, 0, 0, 60)}) {
    EXPECT_FALSE(::SystemTimeToVariantTime(&each, &date));
  }
  EXPECT_EQ(date, 7);
  SYSTEMTIME time{};
  for (const DATE wrong : {-657435.0, 2958466.0, 2958465.9999999, std::nan(""), HUGE_VAL})
    EXPECT_FALSE(::VariantTimeToSystemTime(wrong, &time)) << wrong;
}

TEST(VariantTime, AFractionIsRoundedToTheNearestSecondEvenOverMidnight) {
  constexpr double kSecond = 1.0 / 86400;
  SYSTEMTIME time{};
  ASSERT_TRUE(::VariantTimeToSystemTime(10 + 1.4 * kSecond, &time));
  EXPECT_EQ(Fields(time), Fields(Day(1900, 1, 9, 0, 0, 1)));
  ASSERT_TRUE(::VariantTimeToSystemTime(11 - 0.4 * kSecond, &time));
  EXPECT_EQ(Fields(time), Fields(Day(1900, 1, 10)));
  EXPECT_EQ(time.wDayOfWeek, 3);
}

}  // namespace
