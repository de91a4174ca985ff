#include "sim/RadioPaths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <vector>

#include "support/Faults.h"

namespace kelvara::sim {
namespace {

/// A grid of antennas, so many metres apart.
Site Square(int side, double spacing) {
  Site site;
  for (int antenna = 0; antenna < side * side; ++antenna) {
    site.antennas.push_back(
        {antenna, 0, 0, 0, Place{.x = antenna % side * spacing, .y = antenna / side * spacing}});
  }
  return site;
}

TEST(RadioPathsTest, WithoutPlacesEveryAntennaIsHeardEverywhereWithoutDelay) {
  const RadioPaths paths(DemoSite(), 1);
  for (std::size_t one = 0; one < 12; ++one) {
    EXPECT_EQ(paths.Heard(one).size(), 11U);
    for (std::size_t other = 0; other < 12; ++other) {
      EXPECT_EQ(paths.Lateness(one, other), 0.0);
      EXPECT_TRUE(paths.AreJoined(one, other));
    }
  }
}

TEST(RadioPathsTest, AnAntennaIsHeardUpTo170MetresAway) {
  const RadioPaths paths(
      Site{
          {{1, 0, 0, 0, Place{0, 0}}, {2, 0, 0, 0, Place{-102, 136}}, {3, 0, 0, 0, Place{171, 0}}}},
      1);
  EXPECT_EQ(paths.Heard(0), std::vector<std::size_t>{1});
  EXPECT_EQ(paths.Heard(1), std::vector<std::size_t>{0});
  EXPECT_TRUE(paths.Heard(2).empty());
  EXPECT_TRUE(paths.AreJoined(0, 1));
  EXPECT_FALSE(paths.AreJoined(0, 2));
}

TEST(RadioPathsTest, AnAntennaWithoutAPlaceIsHeardByAll) {
  const RadioPaths paths(
      Site{{{1, 0, 0, 0, Place{0, 0}}, {2, 0, 0, 0}, {3, 0, 0, 0, Place{500, 0}}}}, 1);
  EXPECT_EQ(paths.Heard(0), std::vector<std::size_t>{1});
  EXPECT_EQ(paths.Heard(1), (std::vector<std::size_t>{0, 2}));
  EXPECT_EQ(paths.Lateness(0, 1), 0.0);
  EXPECT_TRUE(paths.AreJoined(0, 2));
}

TEST(RadioPathsTest, APathIsSevenTenthsToAllOfTheDistanceAndTheSameFromBothEnds) {
  const RadioPaths paths(Square(7, 100.0), 3);
  double least = 1.0;
  double most = 0.0;
  for (std::size_t one = 0; one < 49; ++one) {
    for (const std::size_t other : paths.Heard(one)) {
      const bool isDiagonal = one % 7 != other % 7 && one / 7 != other / 7;
      const double share = paths.Lateness(one, other) * 29.0 / (isDiagonal ? 141.42136 : 100.0);
      EXPECT_EQ(paths.Lateness(one, other), paths.Lateness(other, one));
      EXPECT_GE(share, 0.7 - 1e-6);
      EXPECT_LE(share, 1.0 + 1e-6);
      least = std::min(least, share);
      most = std::max(most, share);
    }
  }
  EXPECT_LT(least, 0.72);
  EXPECT_GT(most, 0.98);
}

TEST(RadioPathsTest, TheSeedDecidesThePaths) {
  const RadioPaths one(Square(3, 100.0), 7);
  EXPECT_EQ(one.Lateness(0, 1), RadioPaths(Square(3, 100.0), 7).Lateness(0, 1));
  EXPECT_NE(one.Lateness(0, 1), RadioPaths(Square(3, 100.0), 8).Lateness(0, 1));
}

TEST(RadioPathsTest, ReflectionsDelayAShareOfTheOrderedPairsExponentially) {
  Site site;
  for (int rpn = 0; rpn < 51; ++rpn) {
    site.antennas.push_back({rpn, 0, 0, 0});
  }
  site.multipath = {.share = 0.25, .meanUnits = 4.0};
  std::vector<double> late;
  int oneWay = 0;
  for (std::uint64_t seed = 1; seed <= 4; ++seed) {
    const RadioPaths paths(site, seed);
    for (std::size_t one = 0; one < 51; ++one) {
      for (const std::size_t other : paths.Heard(one)) {
        if (paths.Lateness(one, other) > 0.0) {
          late.push_back(paths.Lateness(one, other));
          oneWay += paths.Lateness(other, one) == 0.0 ? 1 : 0;
        }
      }
    }
  }
  const auto count = static_cast<double>(late.size());
  EXPECT_NEAR(count / (4 * 51 * 50), 0.25, 0.02);
  EXPECT_NEAR(oneWay / count, 0.75, 0.04) << "each direction is drawn for itself";
  EXPECT_NEAR(std::accumulate(late.begin(), late.end(), 0.0) / count, 4.0, 0.3);
  const auto isBelowMedian = [](double delay) { return delay < 4.0 * 0.6931; };
  EXPECT_NEAR(static_cast<double>(std::count_if(late.begin(), late.end(), isBelowMedian)) / count,
              0.5, 0.04);
}

TEST(RadioPathsTest, AFaultIsOppositeInBothDirectionsAndLeavesOtherPairsAlone) {
  Site site = Square(3, 100.0);
  const RadioPaths before(site, 5);
  site.faults = {{0, 1, 12.0}};
  const RadioPaths after(site, 5);
  EXPECT_DOUBLE_EQ(after.Lateness(0, 1), before.Lateness(0, 1) - 12.0);
  EXPECT_DOUBLE_EQ(after.Lateness(1, 0), before.Lateness(1, 0) + 12.0);
  EXPECT_EQ(after.Lateness(1, 2), before.Lateness(1, 2));
}

TEST(RadioPathsTest, AFaultOfAnUnknownAntennaIsASubscriptFault) {
  Site site = DemoSite();
  site.faults = {{1, 99, 12.0}};
  EXPECT_EQ(test::FaultOf([&] { RadioPaths(site, 1); }), base::FaultKind::Subscript);
}

}  // namespace
}  // namespace kelvara::sim
