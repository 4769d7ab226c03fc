#include <windows.h>

#include <gtest/gtest.h>

#include <climits>

namespace {

TEST(MulDiv, HalvesGoAwayFromZeroAndAnOverflowIsMinusOne) {
  struct Case {
    int number, numerator, denominator, quotient;
  };
  for (const Case& each :
       {Case{8, 96, 72, 11}, Case{7, 1, 2, 4}, Case{-7, 1, 2, -4}, Case{7, -1, 2, -4},
        Case{-7, -1, -2, -4}, Case{7, 1, -2, -4}, Case{4, 1, 3, 1}, Case{5, 1, 3, 2},
        Case{0, 5, -3, 0}, Case{INT_MAX, INT_MAX, INT_MAX, INT_MAX}, Case{INT_MIN, 1, 1, INT_MIN},
        Case{INT_MAX, 3, 3, INT_MAX}, Case{1, 1, 0, -1}, Case{INT_MAX, 2, 1, -1},
        Case{INT_MIN, -1, 1, -1}}) {
    EXPECT_EQ(::MulDiv(each.number, each.numerator, each.denominator), each.quotient)
        << each.number << " * " << each.numerator << " / " << each.denominator;
  }
}

}  // namespace
