// Numbers and durations in English and Swedish.
#include "text/locale_format.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/testing/simulated_machine.h"

namespace quillgate {
namespace {

constexpr LANGID kSwedish = 0x41D;

class LocaleFormatTest : public testing::Test {
 protected:
  platform::SimulatedMachine machine_;
};

TEST_F(LocaleFormatTest, IntegersLoseTheirDecimalsAndOtherNumbersHaveTwo) {
  EXPECT_EQ(FormatInteger(0), L"0");
  EXPECT_EQ(FormatInteger(std::numeric_limits<std::uint64_t>::max()),
            L"18,446,744,073,709,551,615");
  EXPECT_EQ(FormatDecimal(1.0), L"1.00");
  EXPECT_EQ(FormatDecimal(0.006), L"0.01");
  EXPECT_EQ(FormatDecimal(1234567.891), L"1,234,567.89");
  machine_.SetLocale(kSwedish, 0);
  EXPECT_EQ(FormatInteger(1048576), L"1\u00A0048\u00A0576");
  EXPECT_EQ(FormatDecimal(1234.5), L"1\u00A0234,50");
}

TEST_F(LocaleFormatTest, NumbersTooLongForTheirRoomAndInfinityAreEmpty) {
  EXPECT_EQ(FormatDecimal(1e44).size(), 62u);
  EXPECT_EQ(FormatDecimal(2e45), L"");
  EXPECT_EQ(FormatDecimal(std::numeric_limits<double>::infinity()), L"");
  EXPECT_EQ(FormatDecimal(std::numeric_limits<double>::max()), L"");
}

TEST_F(LocaleFormatTest, DurationsHaveTwoDigitsOrMore) {
  EXPECT_EQ(FormatDuration(0), L"00:00:00");
  EXPECT_EQ(FormatDuration(3725), L"01:02:05");
  EXPECT_EQ(FormatDuration(360000), L"100:00:00");
  EXPECT_EQ(FormatDuration(359999), L"99:59:59");
  EXPECT_EQ(FormatDuration(std::numeric_limits<std::uint64_t>::max()), L"5124095576030431:00:15");
}

TEST_F(LocaleFormatTest, DatesAndTimesAreTheLocales) {
  const SYSTEMTIME moment{2005, 3, 0, 4, 18, 5, 9, 0};
  EXPECT_EQ(FormatDate(moment), L"3/4/2005");
  EXPECT_EQ(FormatTime(moment), L"6:05 PM");
  machine_.SetLocale(kSwedish, 0);
  EXPECT_EQ(FormatDate(moment), L"2005-03-04");
  EXPECT_EQ(FormatTime(moment), L"18:05");
  EXPECT_EQ(FormatDate({}), L"");
}

}  // namespace
}  // namespace quillgate
