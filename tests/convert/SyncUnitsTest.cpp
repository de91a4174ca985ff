#include "convert/SyncUnits.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/Faults.h"

namespace kelvara::convert {
namespace {

using base::FaultKind;
using test::FaultOf;

TEST(SyncUnits, OnePhaseUnitIs29MetresAndItsDelay) {
  const SyncUnits units = FromRfps(1.0);
  EXPECT_DOUBLE_EQ(units.rfps, 1.0);
  EXPECT_DOUBLE_EQ(units.metres, 29.0);
  EXPECT_EQ(units.aaSync, 0);
  EXPECT_DOUBLE_EQ(units.delay, 0.09645);
  EXPECT_DOUBLE_EQ(units.ohms, 5.7528);
}

TEST(SyncUnits, TheOffsetIsALengthAddedBeforeTheResistance) {
  EXPECT_DOUBLE_EQ(FromRfps(0.0).ohms, 0.3008);
  EXPECT_DOUBLE_EQ(FromMetres(-1.6).ohms, 0.0);
  EXPECT_DOUBLE_EQ(FromMetres(100.0).ohms, 19.1008);
}

TEST(SyncUnits, EveryUnitGivesTheSameCable) {
  const SyncUnits fromRfps = FromRfps(12.5);
  for (const SyncUnits& units :
       {FromMetres(fromRfps.metres), FromOhms(fromRfps.ohms), FromDelay(fromRfps.delay)}) {
    EXPECT_NEAR(units.rfps, 12.5, 1e-12);
    EXPECT_NEAR(units.metres, 362.5, 1e-10);
    EXPECT_NEAR(units.ohms, 68.4508, 1e-11);
    EXPECT_NEAR(units.delay, 1.205625, 1e-13);
    EXPECT_EQ(units.aaSync, 3);
  }
}

TEST(SyncUnits, AaSyncUnitsRoundHalfToEven) {
  EXPECT_EQ(FromMetres(65.0).aaSync, 0);
  EXPECT_EQ(FromMetres(195.0).aaSync, 2);
  EXPECT_EQ(FromMetres(325.0).aaSync, 2);
  EXPECT_EQ(FromMetres(-65.0).aaSync, 0);
  EXPECT_EQ(FromMetres(-195.0).aaSync, -2);
  EXPECT_EQ(FromMetres(65.001).aaSync, 1);
}

TEST(SyncUnits, AaSyncUnitsOutsideSixteenBitsAreAnOverflow) {
  EXPECT_EQ(FromMetres(32767.0 * 130.0).aaSync, 32767);
  EXPECT_EQ(FromMetres(-32768.0 * 130.0).aaSync, -32768);
  EXPECT_EQ(FaultOf([] { return FromMetres(32768.0 * 130.0); }), FaultKind::Overflow);
  EXPECT_EQ(FaultOf([] { return FromRfps(1e6); }), FaultKind::Overflow);
  EXPECT_EQ(FaultOf([] { return FromOhms(-1e7); }), FaultKind::Overflow);
  EXPECT_EQ(FaultOf([] { return FromDelay(1e300); }), FaultKind::Overflow);
  EXPECT_EQ(FaultOf([] { return FromRfps(std::numeric_limits<double>::max()); }),
            FaultKind::Overflow);
}

TEST(SyncUnits, MetresOfAaSyncUnitsAreComputedInSixteenBits) {
  EXPECT_DOUBLE_EQ(FromAaSync(252.0).metres, 32760.0);
  EXPECT_DOUBLE_EQ(FromAaSync(-252.0).metres, -32760.0);
  EXPECT_EQ(FaultOf([] { return FromAaSync(253.0); }), FaultKind::Overflow);
  EXPECT_EQ(FaultOf([] { return FromAaSync(-253.0); }), FaultKind::Overflow);
  EXPECT_EQ(FaultOf([] { return FromAaSync(40000.0); }), FaultKind::Overflow);
}

TEST(SyncUnits, AFractionOfAnAaSyncUnitIsRoundedFirst) {
  EXPECT_DOUBLE_EQ(FromAaSync(2.5).metres, 260.0);
  EXPECT_DOUBLE_EQ(FromAaSync(3.5).metres, 520.0);
  EXPECT_DOUBLE_EQ(FromAaSync(252.5).metres, 32760.0);
  EXPECT_EQ(FaultOf([] { return FromAaSync(252.51); }), FaultKind::Overflow);
  const SyncUnits units = FromAaSync(0.5);
  EXPECT_EQ(units.aaSync, 0);
  EXPECT_DOUBLE_EQ(units.rfps, 0.0);
}

TEST(SyncUnits, PhaseOfAaSyncUnitsIsAFraction) {
  EXPECT_DOUBLE_EQ(FromAaSync(1.0).rfps, 130.0 / 29.0);
  EXPECT_DOUBLE_EQ(FromAaSync(29.0).rfps, 130.0);
}

}  // namespace
}  // namespace kelvara::convert
