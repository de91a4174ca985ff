#include "survey/DataSnooping.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/SyntheticSite.h"

namespace kelvara::survey {
namespace {

using test::SyntheticSite;

std::size_t PairIndex(const Network& network, int a, int b) {
  for (std::size_t index = 0; index < network.Pairs().size(); ++index) {
    if (network.Pairs()[index].a == a && network.Pairs()[index].b == b) {
      return index;
    }
  }
  ADD_FAILURE() << "no pair " << a << ", " << b;
  return 0;
}

int Suspects(const CheckedNetwork& checked) {
  int suspects = 0;
  for (std::size_t index = 0; index < checked.checks.size(); ++index) {
    suspects += checked.adjustment.leftOut[index] || checked.IsSuspect(index) ? 1 : 0;
  }
  return suspects;
}

TEST(CriticalValue, IsTheNormalQuantileOfTheRisk) {
  EXPECT_NEAR(CriticalValue(0), 3.290526731491926, 1e-12);
  EXPECT_NEAR(CriticalValue(1), 3.290526731491926, 1e-12);
  EXPECT_NEAR(CriticalValue(50), 3.290526731491926, 1e-12);
  EXPECT_NEAR(CriticalValue(100), 3.480756404, 1e-8);
  EXPECT_NEAR(std::erfc(CriticalValue(1275) / std::sqrt(2.0)), 0.05 / 1275.0, 1e-15);
}

TEST(DataSnooping, ANetworkWithoutErrorsHasNoSuspect) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    SyntheticSite site = SyntheticSite::Random(12, seed);
    site.SetNoise(0.5);
    site.HearAll(3);
    EXPECT_EQ(Suspects(SnoopData(ReadNetwork(site.Model()))), 0) << seed;
  }
}

TEST(DataSnooping, LeavesOutThePairThatContradictsTheOthers) {
  SyntheticSite site = SyntheticSite::Random(7, 3);
  site.SetNoise(0.5);
  for (int a = 0; a < 7; ++a) {
    for (int b = a + 1; b < 7; ++b) {
      const double error = a == 1 && b == 4 ? 9.0 : 0.0;
      site.Hear(a, b, 3, -error);
      site.Hear(b, a, 3, error);
    }
  }
  const Network network = ReadNetwork(site.Model());
  const CheckedNetwork checked = SnoopData(network);
  const std::size_t bad = PairIndex(network, 1, 4);
  EXPECT_TRUE(checked.adjustment.leftOut[bad]);
  EXPECT_EQ(checked.checks[bad].redundancy, 1.0);
  EXPECT_NEAR(checked.checks[bad].residual, 9.0, 1.0);
  EXPECT_GT(*checked.checks[bad].w, checked.critical);
  EXPECT_EQ(Suspects(checked), 1);
}

TEST(DataSnooping, FindsSeveralWrongPairs) {
  SyntheticSite site = SyntheticSite::Random(12, 6);
  site.SetNoise(0.4);
  for (int a = 0; a < 12; ++a) {
    for (int b = a + 1; b < 12; ++b) {
      const double error = b == a + 6 ? 12.0 + a : 0.0;
      site.Hear(a, b, 3, -error);
      site.Hear(b, a, 3, error);
    }
  }
  const Network network = ReadNetwork(site.Model());
  const CheckedNetwork checked = SnoopData(network);
  for (int a = 0; a < 6; ++a) {
    EXPECT_TRUE(checked.adjustment.leftOut[PairIndex(network, a, a + 6)]) << a;
  }
  EXPECT_EQ(Suspects(checked), 6);
}

// An error of one direction halves in the difference, but shows in the sum.
TEST(DataSnooping, TheDirectionTestFindsAnErrorOfOneDirection) {
  SyntheticSite site = SyntheticSite::Random(8, 9);
  site.SetNoise(0.3);
  for (int a = 0; a < 8; ++a) {
    for (int b = a + 1; b < 8; ++b) {
      site.Hear(a, b, 4, a == 2 && b == 6 ? 3.5 : 0.0);
      site.Hear(b, a, 4);
    }
  }
  const Network network = ReadNetwork(site.Model());
  const CheckedNetwork checked = SnoopData(network);
  const std::size_t bad = PairIndex(network, 2, 6);
  EXPECT_LT(*checked.checks[bad].directionT, -checked.critical);
  EXPECT_TRUE(checked.adjustment.leftOut[bad]);
  EXPECT_EQ(Suspects(checked), 1);
}

TEST(DataSnooping, ATriangleThatDoesNotCloseIsInDoubtAsAWhole) {
  SyntheticSite site({0.0, 0.0, 0.0});
  site.HearBoth(0, 1, 5);
  site.HearBoth(1, 2, 5);
  site.Hear(0, 2, 5, -20.0);
  site.Hear(2, 0, 5, 20.0);
  const Network network = ReadNetwork(site.Model());
  const CheckedNetwork checked = SnoopData(network);
  for (std::size_t index = 0; index < 3; ++index) {
    EXPECT_FALSE(checked.adjustment.leftOut[index]);
    EXPECT_TRUE(checked.inDoubt[index]);
    EXPECT_TRUE(checked.IsSuspect(index));
    EXPECT_GT(std::abs(*checked.checks[index].w), checked.critical);
    EXPECT_GT(checked.checks[index].smallestDetectable.value_or(0.0), 0.0);
    EXPECT_GT(checked.adjustment.extraVariance[index], 100.0);
  }
  EXPECT_GT(checked.adjustment.cofactors.VarianceOfDifference(0, 2), 100.0);
}

TEST(DataSnooping, NoBridgeIsLeftOut) {
  SyntheticSite site({0.0, 5.0, 9.0, 3.0, 8.0, 1.0});
  for (const auto& [a, b] : {std::pair(0, 1), {1, 2}, {0, 2}, {3, 4}, {4, 5}, {3, 5}}) {
    site.HearBoth(a, b, 3);
  }
  // A path of ten units in one direction only: the direction test objects to the bridge.
  site.Hear(2, 3, 3, 10.0);
  site.Hear(3, 2, 3);
  const Network network = ReadNetwork(site.Model());
  ASSERT_EQ(network.structure.bridges.size(), 1U);
  const CheckedNetwork checked = SnoopData(network);
  const std::size_t bridge = PairIndex(network, 2, 3);
  EXPECT_FALSE(checked.adjustment.leftOut[bridge]);
  EXPECT_TRUE(checked.inDoubt[bridge]);
  EXPECT_EQ(checked.checks[bridge].w, std::nullopt);
  EXPECT_EQ(checked.checks[bridge].smallestDetectable, std::nullopt);
  EXPECT_NEAR(checked.checks[bridge].redundancy, 0.0, 1e-9);
  EXPECT_NEAR(checked.adjustment.extraVariance[bridge], 25.0, 1e-9);
  EXPECT_EQ(Suspects(checked), 1);
}

TEST(DataSnooping, WhatIsLeftOutAddsNeitherPartsNorBridges) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    SyntheticSite site = SyntheticSite::Random(9, seed);
    std::mt19937 generator(seed);
    for (int a = 0; a < 9; ++a) {
      for (int b = a + 1; b < 9; ++b) {
        if (b == a + 1 || generator() % 3 == 0) {
          const double error = generator() % 3 == 0 ? 15.0 : 0.0;
          site.Hear(a, b, 2, -error);
          site.Hear(b, a, 2, error);
        }
      }
    }
    const Network network = ReadNetwork(site.Model());
    const CheckedNetwork checked = SnoopData(network);
    PairGraph kept(9);
    for (std::size_t index = 0; index < network.Pairs().size(); ++index) {
      if (!checked.adjustment.leftOut[index]) {
        kept.Connect(network.Pairs()[index].a, network.Pairs()[index].b);
      }
    }
    const GraphStructure after = StructureOf(kept);
    ASSERT_EQ(after.parts, network.structure.parts) << seed;
    ASSERT_EQ(after.bridges, network.structure.bridges) << seed;
  }
}

}  // namespace
}  // namespace kelvara::survey
