#include "usage/automation_date.h"

#include <gtest/gtest.h>

#include "platform/testing/simulated_machine.h"

namespace quillgate {
namespace {

TEST(AutomationDate, NowIsTheLocalTimeInWholeSeconds) {
  platform::SimulatedMachine machine;
  machine.Time().Advance(std::chrono::milliseconds(900));
  EXPECT_EQ(FormatTimestamp(LocalNow()), L"2005-03-14 18:05:09");
  machine.Time().SetLocalTime(1999, 12, 31, 23, 59, 59);
  EXPECT_EQ(FormatTimestamp(LocalNow()), L"1999-12-31 23:59:59");
}

TEST(AutomationDate, DaysCountFromTheirEpochAndOnlyValidOnesHaveATextWhichSortsByTime) {
  EXPECT_EQ(DateOf(1899, 12, 30), 0.0);
  EXPECT_EQ(DateOf(1900, 1, 1), 2.0);
  EXPECT_EQ(DateOf(2005, 3, 14), 38425.0);
  EXPECT_EQ(FormatDay(DateOf(2005, 1, 2)), L"2005-01-02");
  EXPECT_EQ(FormatTimestamp(DateOf(2005, 1, 2) + 3.0 / 24 + 4.0 / 1440 + 5.0 / 86400),
            L"2005-01-02 03:04:05");

  EXPECT_EQ(DateOf(2005, 3, 32), kInvalidDate);
  EXPECT_EQ(DateOf(2005, 13, 1), kInvalidDate);
  EXPECT_EQ(FormatTimestamp(kInvalidDate), L"");
  EXPECT_EQ(FormatDay(kInvalidDate), L"");
}

}  // namespace
}  // namespace quillgate
