#include "survey/Adjustment.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/SyntheticSite.h"

namespace kelvara::survey {
namespace {

using test::SyntheticSite;

TEST(Adjustment, RecoversDelaysExactlyWithoutNoise) {
  SyntheticSite site({4.0, 0.0, 17.0, 9.0, 30.0});
  site.HearAll(2);
  const Network network = ReadNetwork(site.Model());
  Adjustment adjustment(network);
  Adjust(network, adjustment);
  for (int antenna = 0; antenna < 5; ++antenna) {
    EXPECT_NEAR(adjustment.delays[static_cast<std::size_t>(antenna)], site.Delay(antenna) - 4.0,
                1e-10);
  }
  EXPECT_NEAR(adjustment.pairVariance, 0.15 * 0.15, 1e-12);
}

/// The weighted sums of the residuals around an antenna, all 0 at the minimum.
TEST(Adjustment, TheResidualsAreOrthogonalToTheNetwork) {
  SyntheticSite site = SyntheticSite::Random(9, 5);
  site.SetNoise(0.8);
  site.HearAll(1);
  const Network network = ReadNetwork(site.Model());
  Adjustment adjustment(network);
  Adjust(network, adjustment);
  std::vector<double> sums(9);
  for (std::size_t index = 0; index < network.Pairs().size(); ++index) {
    const AntennaPair& pair = network.Pairs()[index];
    const double pull = adjustment.Weight(network, index) * adjustment.Residual(pair);
    sums[static_cast<std::size_t>(pair.a)] += pull;
    sums[static_cast<std::size_t>(pair.b)] -= pull;
  }
  for (const double sum : sums) {
    EXPECT_NEAR(sum, 0.0, 1e-10);
  }
}

TEST(Adjustment, TheRedundanciesAddUpToTheDegreesOfFreedom) {
  SyntheticSite site = SyntheticSite::Random(8, 11);
  site.SetNoise(0.6);
  site.HearAll(3);
  const Network network = ReadNetwork(site.Model());
  Adjustment adjustment(network);
  Adjust(network, adjustment);
  double sum = 0.0;
  for (std::size_t index = 0; index < network.Pairs().size(); ++index) {
    const AntennaPair& pair = network.Pairs()[index];
    sum += 1.0 - adjustment.Weight(network, index) *
                     adjustment.cofactors.VarianceOfDifference(pair.a, pair.b);
  }
  EXPECT_NEAR(sum, network.DegreesOfFreedom(), 1e-9);
  EXPECT_EQ(network.DegreesOfFreedom(), 21);
}

// A ring of four with a misclosure of 4 m: every side takes a quarter.
TEST(Adjustment, AMisclosureIsSharedByEqualWeights) {
  SyntheticSite site({0.0, 0.0, 0.0, 0.0});
  site.HearBoth(0, 1, 3);
  site.HearBoth(1, 2, 3);
  site.HearBoth(2, 3, 3);
  for (const auto& [from, to, phase] : {std::tuple(0, 3, 4), std::tuple(3, 0, -4)}) {
    for (int reading = 0; reading < 3; ++reading) {
      site.Model().AddPhase(static_cast<std::int16_t>(from), static_cast<std::int16_t>(to),
                            static_cast<std::int16_t>(phase));
    }
  }
  const Network network = ReadNetwork(site.Model());
  Adjustment adjustment(network);
  SolveWithCovariances(network, adjustment);
  EXPECT_NEAR(adjustment.delays[1], -1.0, 1e-12);
  EXPECT_NEAR(adjustment.delays[2], -2.0, 1e-12);
  EXPECT_NEAR(adjustment.delays[3], -3.0, 1e-12);
  const double variance = adjustment.Variance(network, 0);
  EXPECT_NEAR(adjustment.cofactors.VarianceOfDifference(0, 1), variance * 0.75, 1e-12);
  EXPECT_NEAR(adjustment.cofactors.VarianceOfDifference(0, 2), variance, 1e-12);
}

TEST(Adjustment, AnOutlierGetsHubersWeight) {
  SyntheticSite site = SyntheticSite::Random(8, 2);
  site.SetNoise(0.5);
  site.HearAll(4);
  for (int reading = 0; reading < 40; ++reading) {
    site.Model().AddPhase(2, 5, 60);
    site.Model().AddPhase(5, 2, -60);
  }
  const Network network = ReadNetwork(site.Model());
  Adjustment adjustment(network);
  Adjust(network, adjustment);
  int belowHalf = 0;
  for (std::size_t index = 0; index < network.Pairs().size(); ++index) {
    const double t = adjustment.Residual(network.Pairs()[index]) /
                     std::sqrt(adjustment.Variance(network, index));
    EXPECT_NEAR(adjustment.huberWeights[index], std::min(1.0, 1.5 / std::abs(t)), 1e-3);
    belowHalf += adjustment.huberWeights[index] < 0.5 ? 1 : 0;
  }
  EXPECT_EQ(belowHalf, 1);
}

TEST(Adjustment, ThePairsOwnVarianceIsFoundAndLimited) {
  SyntheticSite noisy = SyntheticSite::Random(30, 8);
  for (int a = 0; a < 30; ++a) {
    for (int b = a + 1; b < 30; ++b) {
      // Each pair is off by two units one way or the other, the same in all its readings.
      const double error = (a * 7 + b * 3) % 2 == 0 ? 2.0 : -2.0;
      noisy.Hear(a, b, 10, error);
      noisy.Hear(b, a, 10, -error);
    }
  }
  const Network network = ReadNetwork(noisy.Model());
  Adjustment adjustment(network);
  Adjust(network, adjustment);
  EXPECT_NEAR(std::sqrt(adjustment.pairVariance), 2.0, 0.5);
}

}  // namespace
}  // namespace kelvara::survey
