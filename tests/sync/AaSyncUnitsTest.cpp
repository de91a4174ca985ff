#include "sync/AaSyncUnits.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/Faults.h"

namespace kelvara::sync {
namespace {

using base::FaultKind;
using test::FaultOf;

constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();

TEST(AaSyncUnits, FourAndAHalfPhaseUnitsAreOne) {
  EXPECT_EQ(ToAaSyncUnits(9), 2);
  EXPECT_EQ(ToAaSyncUnits(7), 2);
  EXPECT_EQ(ToAaSyncUnits(0), 0);
  EXPECT_EQ(ToAaSyncUnits(2), 0);
  EXPECT_EQ(ToAaSyncUnits(3), 1);
  EXPECT_EQ(ToAaSyncUnits(-7), -2);
  EXPECT_EQ(ToAaSyncUnits(-2), 0);
}

TEST(AaSyncUnits, OneIs130MetresSoEveryLengthIsAMultipleOfThat) {
  EXPECT_EQ(ToMetres(9), 260);
  EXPECT_EQ(ToMetres(7), 260);
  EXPECT_EQ(ToMetres(2), 0);
  EXPECT_EQ(ToMetres(-7), -260);
}

TEST(AaSyncUnits, RoundToTheNearestOverTheWholeRangeOfReadings) {
  for (std::int32_t phase = -40000; phase <= 40000; ++phase) {
    const std::int32_t nearest = (4 * phase + 9 + 18 * 100000) / 18 - 100000;
    ASSERT_EQ(ToAaSyncUnits(phase), nearest) << phase;
    ASSERT_EQ(ToMetres(phase), nearest * 130) << phase;
  }
}

TEST(AaSyncUnits, AreRightAtTheLimitsOfThirtyTwoBits) {
  EXPECT_EQ(ToAaSyncUnits(kHighest), 477218588);
  EXPECT_EQ(ToAaSyncUnits(kLowest), -477218588);
}

TEST(AaSyncUnits, MetresOutsideThirtyTwoBitsAreAnOverflow) {
  EXPECT_EQ(ToMetres(74335968), 2147483520);
  EXPECT_EQ(FaultOf([] { return ToMetres(74335971); }), FaultKind::Overflow);
  EXPECT_EQ(FaultOf([] { return ToMetres(kHighest); }), FaultKind::Overflow);
  EXPECT_EQ(FaultOf([] { return ToMetres(kLowest); }), FaultKind::Overflow);
}

}  // namespace
}  // namespace kelvara::sync
