#include "survey/Guidance.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/SyntheticSite.h"

namespace kelvara::survey {
namespace {

using test::SyntheticSite;

/// The mean benefit-weighted variance of all antennas, inverted afresh, with some extra weight on
/// one pair.
double MeanVariance(const Network& network, const Adjustment& adjustment,
                    const GuidanceBasis& basis, int a, int b, double extra) {
  GroundedLaplacian equations(network.Antennas());
  for (int antenna = 0; antenna < network.Antennas(); ++antenna) {
    equations.Ground(antenna, 1e-4);
  }
  for (std::size_t index = 0; index < network.Pairs().size(); ++index) {
    equations.Connect(network.Pairs()[index].a, network.Pairs()[index].b,
                      1.0 / adjustment.Variance(network, index));
  }
  if (extra > 0.0) {
    equations.Connect(a, b, extra);
  }
  equations.Factor();
  SymmetricMatrix inverse(network.Antennas());
  equations.Invert(inverse);
  double sum = 0.0;
  for (int antenna = 0; antenna < network.Antennas(); ++antenna) {
    sum += basis.benefit[static_cast<std::size_t>(antenna)] *
           inverse.VarianceOfDifference(antenna, basis.reference);
  }
  return sum / network.Antennas();
}

TEST(Guidance, TheGainOfAPairIsWhatAdjustingWithItsWeightRaisedGives) {
  SyntheticSite site = SyntheticSite::Random(10, 4);
  site.SetNoise(0.4);
  for (int antenna = 0; antenna < 9; ++antenna) {
    site.HearBoth(antenna, antenna + 1, 1);
  }
  site.HearBoth(0, 5, 2);
  site.Hear(3, 8, 1);
  const Network network = ReadNetwork(site.Model());
  Adjustment adjustment(network);
  Adjust(network, adjustment);
  const GuidanceBasis basis = MakeGuidanceBasis(network, adjustment, adjustment.delays, 0);
  for (int a = 0; a < 10; ++a) {
    for (int b = 0; b < 10; ++b) {
      if (a != b) {
        const double before = MeanVariance(network, adjustment, basis, a, b, 0.0);
        const double after = MeanVariance(network, adjustment, basis, a, b, 3.7);
        EXPECT_NEAR(PairGain(basis, a, b, 3.7), before - after, 1e-6) << a << ", " << b;
      }
    }
  }
}

std::vector<StandingGain> GainsOf(SyntheticSite& site) {
  const Network network = ReadNetwork(site.Model());
  Adjustment adjustment(network);
  Adjust(network, adjustment);
  const GuidanceBasis basis = MakeGuidanceBasis(network, adjustment, adjustment.delays, 0);
  return StandingGains(network, adjustment, basis);
}

TEST(Guidance, StandingAddsReadingsOfKnownNeighboursToTheGain) {
  SyntheticSite site({0.0, 4.0, 9.0});
  site.HearBoth(0, 1, 2);
  site.Hear(1, 2, 1);
  site.Hear(2, 1, 1);
  const Network network = ReadNetwork(site.Model());
  Adjustment adjustment(network);
  Adjust(network, adjustment);
  const GuidanceBasis basis = MakeGuidanceBasis(network, adjustment, adjustment.delays, 0);
  const std::vector<StandingGain> gains = StandingGains(network, adjustment, basis);
  const double variance = network.readings.statistics.readingVariance;
  const double own = adjustment.pairVariance;
  const double before = 1.0 / (variance * 2.0 / 4.0 + own);
  const double after = 1.0 / (variance * (1.0 / 4.0 + 1.0) / 4.0 + own);
  EXPECT_NEAR(gains[2].gain, PairGain(basis, 2, 1, after - before), 1e-12);
}

TEST(Guidance, ManyNeighboursShareTheReadingsOfAReport) {
  SyntheticSite site = SyntheticSite::Random(16, 12);
  site.HearAll(2);
  const Network network = ReadNetwork(site.Model());
  Adjustment adjustment(network);
  Adjust(network, adjustment);
  const GuidanceBasis basis = MakeGuidanceBasis(network, adjustment, adjustment.delays, 0);
  const double variance = network.readings.statistics.readingVariance;
  const double own = adjustment.pairVariance;
  const double before = 1.0 / (variance * 1.0 / 4.0 + own);
  const double after = 1.0 / (variance * (1.0 / 3.5 + 0.5) / 4.0 + own);
  double expected = 0.0;
  for (int other = 0; other < 16; ++other) {
    expected += other == 7 ? 0.0 : PairGain(basis, 7, other, after - before);
  }
  EXPECT_NEAR(StandingGains(network, adjustment, basis)[7].gain, expected, 1e-12);
}

TEST(Guidance, WhereNobodyStoodEveryAntennaMayBeHeard) {
  SyntheticSite site({0.0, 4.0, 9.0, 2.0});
  site.HearBoth(0, 1, 3);
  site.Hear(0, 2, 3);
  // Nobody stood at 2 and 3, so standing there also connects antenna 3.
  const std::vector<StandingGain> gains = GainsOf(site);
  EXPECT_GT(gains[2].gain, 100.0 * gains[1].gain);
  EXPECT_GT(gains[3].gain, 100.0 * gains[1].gain);
}

TEST(Guidance, OffersTheThreeLargestGains) {
  const std::vector<StandingGain> best =
      BestToStandAt({{0, 1.0}, {1, 0.0}, {2, 5.0}, {3, 0.5}, {4, 2.0}});
  ASSERT_EQ(best.size(), 3U);
  EXPECT_EQ(best[0].antenna, 2);
  EXPECT_EQ(best[1].antenna, 4);
  EXPECT_EQ(best[2].antenna, 0);
  EXPECT_TRUE(BestToStandAt({{0, 0.0}}).empty());
}

}  // namespace
}  // namespace kelvara::survey
