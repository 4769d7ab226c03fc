#include <windows.h>

#include <gtest/gtest.h>

#include <oleauto.h>

#include <cmath>
#include <cstdlib>

#include "platform/testing/simulated_machine.h"

namespace {

SYSTEMTIME Day(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  SYSTEMTIME time{};
  time.wYear = static_cast<WORD>(year);
  time.wMonth = static_cast<WORD>(month);
  time.wDay = static_cast<WORD>(day);
  time.wHour = static_cast<WORD>(hour);
  time.wMinute = static_cast<WORD>(minute);
  time.wSecond = static_cast<WORD>(second);
  return time;
}

TEST(Time, LocalTimeAndTicksFollowTheMachinesClock) {
  platform::SimulatedMachine machine;
  machine.Time().SetLocalTime(2024, 2, 29, 23, 59, 58);
  machine.Time().SetTickMilliseconds(0x1'0000'0005);
  EXPECT_EQ(::GetTickCount(), 5u);
  ::Sleep(1'250);
  EXPECT_EQ(::GetTickCount(), 1'255u);
  SYSTEMTIME time{};
  ::GetLocalTime(&time);
  EXPECT_EQ(time.wYear, 2024);
  EXPECT_EQ(time.wMonth, 2);
  EXPECT_EQ(time.wDay, 29);
  EXPECT_EQ(time.wDayOfWeek, 4);
  EXPECT_EQ(time.wHour, 23);
  EXPECT_EQ(time.wMinute, 59);
  EXPECT_EQ(time.wSecond, 59);
  EXPECT_EQ(time.wMilliseconds, 250);
  ::setenv("TZ", "EAST-5", 1);  // the machine has moved
  ::GetLocalTime(&time);
  ::setenv("TZ", "UTC", 1);
  EXPECT_EQ(time.wHour, 4);
}

TEST(VariantTime, KnownDatesConvertBothWays) {
  struct Case {
    SYSTEMTIME time;
    DATE date;
  };
  for (const Case& each :
       {Case{Day(1899, 12, 30), 0.0}, Case{Day(1899, 12, 29, 6), -1.25},
        Case{Day(1899, 12, 30, 18), 0.75}, Case{Day(1900, 1, 1), 2.0},
        Case{Day(2005, 3, 14, 18, 5, 9), 38425.753576388888}, Case{Day(100, 1, 1), -657434.0},
        Case{Day(9999, 12, 31, 23, 59, 59), 2958465.999988426}}) {
    SYSTEMTIME given = each.time;
    DATE date = 0;
    ASSERT_TRUE(::SystemTimeToVariantTime(&given, &date)) << each.date;
    EXPECT_NEAR(date, each.date, 1e-9);
    SYSTEMTIME back{};
    ASSERT_TRUE(::VariantTimeToSystemTime(date, &back));
    EXPECT_EQ(back.wYear, given.wYear);
    EXPECT_EQ(back.wMonth, given.wMonth);
    EXPECT_EQ(back.wDay, given.wDay);
    EXPECT_EQ(back.wHour, given.wHour);
    EXPECT_EQ(back.wMinute, given.wMinute);
    EXPECT_EQ(back.wSecond, given.wSecond);
  }
}

TEST(VariantTime, DaysThatTheMonthDoesNotHaveRollOver) {
  struct Case {
    SYSTEMTIME given;
    SYSTEMTIME meant;
  };
  for (const Case& each :
       {Case{Day(2001, 2, 29), Day(2001, 3, 1)}, Case{Day(2001, 2, 31), Day(2001, 3, 3)},
        Case{Day(2004, 2, 30), Day(2004, 3, 1)}, Case{Day(2001, 4, 31), Day(2001, 5, 1)},
        Case{Day(2001, 2, 0), Day(2001, 1, 31)}}) {
    SYSTEMTIME given = each.given;
    SYSTEMTIME meant = each.meant;
    DATE date = 0;
    DATE expected = 0;
    ASSERT_TRUE(::SystemTimeToVariantTime(&given, &date));
    ASSERT_TRUE(::SystemTimeToVariantTime(&meant, &expected));
    EXPECT_EQ(date, expected);
  }
}

TEST(VariantTime, WhatIsNoDateFails) {
  DATE date = 7;
  for (SYSTEMTIME each :
       {Day(2001, 1, 32), Day(2001, 0, 1), Day(2001, 13, 1), Day(99, 1, 1), Day(10000, 1, 1),
        Day(100, 1, 0), Day(2001, 1, 1, 24), Day(2001, 1, 1, 0, 60), Day(2001, 1, 1, 0, 0, 60)}) {
    EXPECT_FALSE(::SystemTimeToVariantTime(&each, &date));
  }
  EXPECT_EQ(date, 7);
  SYSTEMTIME time{};
  for (const DATE wrong : {-657435.0, 2958466.0, 2958465.9999999, std::nan(""), HUGE_VAL}) {
    EXPECT_FALSE(::VariantTimeToSystemTime(wrong, &time)) << wrong;
  }
}

TEST(VariantTime, AFractionIsRoundedToTheNearestSecondEvenOverMidnight) {
  constexpr double kSecond = 1.0 / 86400;
  SYSTEMTIME time{};
  ASSERT_TRUE(::VariantTimeToSystemTime(10 + 1.4 * kSecond, &time));
  EXPECT_EQ(time.wSecond, 1);
  ASSERT_TRUE(::VariantTimeToSystemTime(11 - 0.4 * kSecond, &time));
  EXPECT_EQ(time.wDay, 10);
  EXPECT_EQ(time.wHour, 0);
  EXPECT_EQ(time.wDayOfWeek, 3);
}

}  // namespace
