#include "report/CableLengths.h"

#include <gtest/gtest.h>

#include <optional>

#include "base/Fault.h"

namespace kelvara::report {
namespace {

/// Two antennas, and what each hears of the other.
sync::SyncModel Pair(std::optional<std::int16_t> firstHears,
                     std::optional<std::int16_t> secondHears) {
  sync::SyncModel model;
  model.FindOrAddAa(1, 0, 0);
  model.FindOrAddAa(2, 0, 0);
  if (firstHears) {
    model.AddPhase(0, 1, *firstHears);
  }
  if (secondHears) {
    model.AddPhase(1, 0, *secondHears);
  }
  return model;
}

std::int16_t FirstDelay(const sync::SyncModel& model) { return CableLengths(model).AaDelay(0); }

TEST(CableLengthsTest, AnAntennaWithoutReadingsHasNoDelay) {
  const CableLengths lengths(Pair({}, {}));
  EXPECT_EQ(lengths.AaDelay(0), 0);
  EXPECT_EQ(lengths.Metres(0), 0);
}

TEST(CableLengthsTest, WithOnlyALeadTheDelayIsTheLead) {
  const CableLengths lengths(Pair(9, {}));
  EXPECT_EQ(lengths.AaDelay(0), 9);
  EXPECT_EQ(lengths.AaDelay(1), 0);
}

TEST(CableLengthsTest, WithOnlyALagTheDelayIsTheLag) {
  const CableLengths lengths(Pair({}, -9));
  EXPECT_EQ(lengths.AaDelay(0), 9);
  EXPECT_EQ(lengths.AaDelay(1), 0);
}

TEST(CableLengthsTest, ANegativeLeadCountsAsZero) {
  EXPECT_EQ(FirstDelay(Pair(-5, {})), 0);
  EXPECT_EQ(FirstDelay(Pair(-5, -9)), 4);
  EXPECT_EQ(FirstDelay(Pair(-5, -11)), 6);
}

TEST(CableLengthsTest, APositiveLagCountsAsZero) {
  EXPECT_EQ(FirstDelay(Pair({}, 5)), 0);
  EXPECT_EQ(FirstDelay(Pair(10, 5)), 5);
}

TEST(CableLengthsTest, ADelayHalfwayIsRoundedToEven) {
  EXPECT_EQ(FirstDelay(Pair(9, -8)), 8);
  EXPECT_EQ(FirstDelay(Pair(9, -10)), 10);
  EXPECT_EQ(FirstDelay(Pair(1, 0)), 0);
  EXPECT_EQ(FirstDelay(Pair(3, 0)), 2);
}

TEST(CableLengthsTest, MetresAreWholeSyncUnitsTimes130) {
  for (const auto& [delay, metres] :
       {std::pair(0, 0), std::pair(2, 0), std::pair(3, 130), std::pair(8, 260), std::pair(9, 260),
        std::pair(11, 260), std::pair(12, 390), std::pair(32767, 946660)}) {
    EXPECT_EQ(CableLengths(Pair(static_cast<std::int16_t>(delay), {})).Metres(0), metres) << delay;
  }
}

TEST(CableLengthsTest, TheLargestLeadAndTheSmallestLagCount) {
  sync::SyncModel model;
  for (std::int16_t rpn = 1; rpn <= 4; ++rpn) {
    model.FindOrAddAa(rpn, 0, 0);
  }
  model.AddPhase(0, 1, 4);
  model.AddPhase(0, 2, 20);
  model.AddPhase(0, 3, -30);
  model.AddPhase(1, 0, -2);
  model.AddPhase(2, 0, -10);
  model.AddPhase(3, 0, 40);
  EXPECT_EQ(FirstDelay(model), 15);
}

TEST(CableLengthsTest, MeansAreRoundedBeforeTheyAreCompared) {
  sync::SyncModel model = Pair(7, {});
  model.AddPhase(0, 1, 8);
  EXPECT_EQ(FirstDelay(model), 8);
  model = Pair(6, {});
  model.AddPhase(0, 1, 7);
  EXPECT_EQ(FirstDelay(model), 6);
}

TEST(CableLengthsTest, ADelayBeyond16BitsIsAnOverflow) {
  EXPECT_EQ(FirstDelay(Pair(16384, -16383)), 16384);
  EXPECT_THROW(CableLengths(Pair(16384, -16384)), base::Fault);
  EXPECT_THROW(CableLengths(Pair({}, -32768)), base::Fault);
}

TEST(CableLengthsTest, TooManyAntennasAreASubscriptFault) {
  sync::SyncModel model;
  for (std::int16_t rpn = 0; rpn < 51; ++rpn) {
    model.FindOrAddAa(rpn, 0, 0);
  }
  EXPECT_NO_THROW(CableLengths{model});
  EXPECT_THROW(model.FindOrAddAa(51, 0, 0), base::Fault);
  try {
    const CableLengths lengths(model);
    ADD_FAILURE() << "no fault";
  } catch (const base::Fault& fault) {
    EXPECT_EQ(fault.Kind(), base::FaultKind::Subscript);
  }
}

TEST(ReportedMetresTest, ListsEveryLengthOrNoneWhereTheReportFaults) {
  using Metres = std::vector<std::optional<std::int32_t>>;
  EXPECT_EQ(ReportedMetres(sync::SyncModel()), Metres());
  EXPECT_EQ(ReportedMetres(Pair(9, {})), (Metres{260, 0}));
  EXPECT_EQ(ReportedMetres(Pair(16384, -16384)), Metres(2));
  sync::SyncModel full;
  for (std::int16_t rpn = 0; rpn < 51; ++rpn) {
    full.FindOrAddAa(rpn, 0, 0);
  }
  EXPECT_THROW(full.FindOrAddAa(51, 0, 0), base::Fault);
  EXPECT_EQ(ReportedMetres(full), Metres(51));
}

}  // namespace
}  // namespace kelvara::report
