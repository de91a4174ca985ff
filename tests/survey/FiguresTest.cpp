#include "survey/Figures.h"

#include <gtest/gtest.h>

namespace kelvara::survey {
namespace {

TEST(Figures, HaveTheDecimalsAskedForAndNoMinusZero) {
  EXPECT_EQ(Decimals(1234.567, 0), "1235");
  EXPECT_EQ(Decimals(-0.26, 1), "-0.3");
  EXPECT_EQ(Decimals(-0.04, 1), "0.0");
  EXPECT_EQ(Decimals(-0.4, 0), "0");
  EXPECT_EQ(Decimals(1e300, 0).size(), 301U);
}

TEST(Figures, HaveTheSignificantDigitsAskedFor) {
  EXPECT_EQ(Significant(0.000123, 2), "0.00012");
  EXPECT_EQ(Significant(12.34, 3), "12.3");
}

TEST(Figures, AnRpnHasTwoDigitsAndARangeItsEnds) {
  EXPECT_EQ(RpnText(5), "05");
  EXPECT_EQ(RpnText(200), "200");
  EXPECT_EQ(RangeText(3, 3), "3");
  EXPECT_EQ(RangeText(-1, 0), "-1 to 0");
}

}  // namespace
}  // namespace kelvara::survey
