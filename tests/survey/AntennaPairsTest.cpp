#include "survey/AntennaPairs.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/SyntheticSite.h"

namespace kelvara::survey {
namespace {

using test::Cell;
using test::SyntheticSite;

double ReadingVariance(const sync::PhaseCell& cell) {
  SyntheticSite site({0.0, 0.0});
  site.Model().SetCell(0, 1, cell);
  return ReadPairs(site.Model()).statistics.readingVariance;
}

/// The variance that a cell of this range and number of readings gives.
double Pooled(double range, double d2, int freedom) {
  return (2.5 + freedom * std::max(range * range / (d2 * d2), 1.0 / 12.0)) / (10.0 + freedom);
}

TEST(AntennaPairs, AnEmptyModelHasNone) {
  const AntennaPairs result = ReadPairs(sync::SyncModel());
  EXPECT_EQ(result.antennas, 0);
  EXPECT_TRUE(result.pairs.empty());
  EXPECT_EQ(result.statistics.readingVariance, 0.25);
  EXPECT_FALSE(result.statistics.pathKnown);
}

TEST(AntennaPairs, TheNoiseComesFromTheRangesByTheControlChartConstants) {
  EXPECT_NEAR(ReadingVariance(Cell(3, 2, 3, 0)), Pooled(3, 1.128, 1), 1e-12);
  EXPECT_NEAR(ReadingVariance(Cell(3, 3, 3, 0)), Pooled(3, 1.693, 2), 1e-12);
  EXPECT_NEAR(ReadingVariance(Cell(3, 10, 4, 0)), Pooled(4, 3.078, 9), 1e-12);
  EXPECT_NEAR(ReadingVariance(Cell(3, 24, 8, 0)), Pooled(8, 3.895, 23), 1e-12);
  EXPECT_NEAR(ReadingVariance(Cell(3, 25, 8, 0)), Pooled(8, 3.931, 24), 1e-12);
}

TEST(AntennaPairs, MoreThan25ReadingsCountAs25) {
  EXPECT_NEAR(ReadingVariance(Cell(3, 2147483647, 8, 0)), Pooled(8, 3.931, 24), 1e-12);
}

TEST(AntennaPairs, SingleReadingsAndWideRangesSayNothingAboutTheNoise) {
  EXPECT_EQ(ReadingVariance(Cell(3, 1, 3, 3)), 0.25);
  EXPECT_EQ(ReadingVariance(Cell(9, 2, 9, 0)), 0.25);
}

TEST(AntennaPairs, EqualReadingsStillHaveTheVarianceOfRounding) {
  EXPECT_NEAR(ReadingVariance(Cell(30, 10, 3, 3)), (2.5 + 9.0 / 12.0) / 19.0, 1e-12);
}

TEST(AntennaPairs, ATwoWayPairIsHalfTheDifferenceOfItsMeans) {
  SyntheticSite site({0.0, 0.0});
  site.Model().SetCell(0, 1, Cell(23, 3, 8, 7));
  site.Model().SetCell(1, 0, Cell(-19, 2, -9, -10));
  const AntennaPairs result = ReadPairs(site.Model());
  ASSERT_EQ(result.pairs.size(), 1U);
  const AntennaPair& pair = result.pairs[0];
  EXPECT_TRUE(pair.IsTwoWay());
  EXPECT_FALSE(pair.IsThin());
  EXPECT_NEAR(pair.difference, (23.0 / 3.0 + 9.5) / 2.0, 1e-12);
  EXPECT_NEAR(pair.variance, result.statistics.readingVariance * (1.0 / 3.0 + 0.5) / 4.0, 1e-12);
  EXPECT_NEAR(pair.Path(), -(23.0 / 3.0 - 9.5) / 2.0, 1e-12);
}

TEST(AntennaPairs, AOneWayPairHasTheSignOfItsDirectionAndTheVarianceOfAnUnknownPath) {
  SyntheticSite site({0.0, 0.0, 0.0});
  site.Model().SetCell(0, 1, Cell(10, 2, 5, 5));
  site.Model().SetCell(2, 1, Cell(7, 1, 7, 7));
  const AntennaPairs result = ReadPairs(site.Model());
  ASSERT_EQ(result.pairs.size(), 2U);
  EXPECT_EQ(result.pairs[0].difference, 5.0);
  EXPECT_TRUE(result.pairs[0].IsThin());
  EXPECT_EQ(result.pairs[1].a, 1);
  EXPECT_EQ(result.pairs[1].difference, -7.0);
  EXPECT_NEAR(result.pairs[1].variance, result.statistics.readingVariance + 4.0, 1e-12);
}

TEST(AntennaPairs, ThreeTwoWayPairsTellTheUsualPath) {
  SyntheticSite site({0.0, 0.0, 0.0, 0.0});
  const auto set = [&](int a, int b, int path) {
    const auto phase = static_cast<std::int16_t>(-path);
    site.Model().SetCell(a, b, Cell(phase, 1, phase, phase));
    site.Model().SetCell(b, a, Cell(phase, 1, phase, phase));
  };
  set(0, 1, 2);
  set(1, 2, 3);
  EXPECT_FALSE(ReadPairs(site.Model()).statistics.pathKnown);
  EXPECT_EQ(ReadPairs(site.Model()).statistics.path, 0.0);
  EXPECT_EQ(ReadPairs(site.Model()).statistics.pathScatter, 2.0);
  set(0, 2, 7);
  site.Model().SetCell(3, 0, Cell(5, 1, 5, 5));
  const AntennaPairs result = ReadPairs(site.Model());
  EXPECT_TRUE(result.statistics.pathKnown);
  EXPECT_EQ(result.statistics.path, 3.0);
  EXPECT_NEAR(result.statistics.pathScatter, std::sqrt(1.4826 * 1.4826 - 0.125), 1e-12);
  EXPECT_EQ(result.pairs[2].a, 0);
  EXPECT_EQ(result.pairs[2].b, 3);
  EXPECT_EQ(result.pairs[2].difference, -8.0);
}

TEST(AntennaPairs, EqualPathsStillScatter) {
  SyntheticSite site({0.0, 10.0, 20.0});
  site.HearAll(3);
  const ReadingStatistics statistics = ReadPairs(site.Model()).statistics;
  EXPECT_NEAR(statistics.pathScatter, 0.15, 1e-12);
}

TEST(AntennaPairs, ACellThatMayBeTruncatedIsLeftOut) {
  for (const int least : {-98, -99, -100, -32768}) {
    SyntheticSite site({0.0, 0.0});
    site.Model().SetCell(0, 1, Cell(-95, 1, -95, static_cast<std::int16_t>(least)));
    site.Model().SetCell(1, 0, Cell(95, 1, 95, 95));
    const AntennaPairs result = ReadPairs(site.Model());
    ASSERT_EQ(result.pairs.size(), 1U);
    EXPECT_EQ(result.pairs[0].countAb, least == -98 ? 1 : 0) << least;
    EXPECT_EQ(result.pairs[0].countBa, 1);
  }
}

TEST(AntennaPairs, TheMedianOfAnEvenNumberIsBetweenTheMiddleTwo) {
  EXPECT_EQ(Median({3.0}), 3.0);
  EXPECT_EQ(Median({4.0, 1.0}), 2.5);
  EXPECT_EQ(Median({9.0, 1.0, 4.0}), 4.0);
  EXPECT_EQ(Median({9.0, 1.0, 4.0, 2.0}), 3.0);
}

}  // namespace
}  // namespace kelvara::survey
