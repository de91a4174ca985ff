#include "base/Rounding.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "support/Faults.h"

namespace kelvara::base {
namespace {

using test::FaultOf;

TEST(Rounding, AHalfRoundsToTheEvenNeighbour) {
  EXPECT_EQ(Round16(0.5), 0);
  EXPECT_EQ(Round16(1.5), 2);
  EXPECT_EQ(Round16(2.5), 2);
  EXPECT_EQ(Round16(3.5), 4);
  EXPECT_EQ(Round16(-0.5), 0);
  EXPECT_EQ(Round16(-1.5), -2);
  EXPECT_EQ(Round16(-2.5), -2);
  EXPECT_EQ(Round16(-11.5), -12);
  EXPECT_EQ(Round32(2.5), 2);
  EXPECT_EQ(Round32(3.5), 4);
  EXPECT_EQ(Round32(-3.5), -4);
}

TEST(Rounding, AnythingElseRoundsToTheNearest) {
  EXPECT_EQ(Round16(7.33), 7);
  EXPECT_EQ(Round16(2.5000001), 3);
  EXPECT_EQ(Round16(0.49999999999999994), 0);
  EXPECT_EQ(Round16(-0.49999999999999994), 0);
  EXPECT_EQ(Round16(-7.51), -8);
  EXPECT_EQ(Round32(4.0), 4);
  EXPECT_EQ(Round32(-123456.7), -123457);
}

TEST(Rounding, AResultOutsideSixteenBitsIsAnOverflow) {
  EXPECT_EQ(Round16(32767.0), 32767);
  EXPECT_EQ(Round16(32767.4999), 32767);
  EXPECT_EQ(FaultOf([] { return Round16(32767.5); }), FaultKind::Overflow);
  EXPECT_EQ(FaultOf([] { return Round16(32768.0); }), FaultKind::Overflow);
  EXPECT_EQ(Round16(-32768.0), -32768);
  EXPECT_EQ(Round16(-32768.5), -32768);
  EXPECT_EQ(FaultOf([] { return Round16(-32768.51); }), FaultKind::Overflow);
}

TEST(Rounding, AResultOutsideThirtyTwoBitsIsAnOverflow) {
  EXPECT_EQ(Round32(2147483647.0), 2147483647);
  EXPECT_EQ(Round32(2147483647.25), 2147483647);
  EXPECT_EQ(FaultOf([] { return Round32(2147483647.5); }), FaultKind::Overflow);
  EXPECT_EQ(Round32(-2147483648.5), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(FaultOf([] { return Round32(-2147483649.0); }), FaultKind::Overflow);
}

TEST(Rounding, ANonFiniteOrHugeValueIsAnOverflow) {
  for (const double value :
       {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
        std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::max()}) {
    EXPECT_EQ(FaultOf([=] { return Round16(value); }), FaultKind::Overflow) << value;
    EXPECT_EQ(FaultOf([=] { return Round32(value); }), FaultKind::Overflow) << value;
  }
}

TEST(Rounding, QuartersRoundAsInTheStandardLibrary) {
  for (int quarters = -4 * 32768; quarters <= 4 * 32767; ++quarters) {
    const double value = quarters / 4.0;
    ASSERT_EQ(Round16(value), static_cast<int>(std::nearbyint(value))) << value;
  }
}

TEST(Rounding, AnyDoubleRoundsAsInTheStandardLibrary) {
  std::mt19937 random(20);
  std::uniform_real_distribution<double> values(-2147483648.0, 2147483647.0);
  for (int round = 0; round < 100000; ++round) {
    const double value = values(random);
    ASSERT_EQ(Round32(value), static_cast<std::int32_t>(std::nearbyint(value))) << value;
  }
}

}  // namespace
}  // namespace kelvara::base
