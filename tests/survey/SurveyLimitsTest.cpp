#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <random>

#include "support/SyntheticSite.h"
#include "survey/Survey.h"

namespace kelvara::survey {
namespace {

using test::Cell;
using test::SyntheticSite;

void ExpectFinite(const SurveyResult& result) {
  const auto expectFinite = [](std::initializer_list<double> values) {
    for (const double value : values) {
      ASSERT_TRUE(std::isfinite(value));
    }
  };
  const SurveySummary& summary = result.summary;
  expectFinite({summary.sigmaReading, summary.sigmaPair, summary.pathExcess.value_or(0.0),
                summary.pathScatter.value_or(0.0), summary.critical});
  for (const SurveyAntenna& antenna : result.antennas) {
    expectFinite({antenna.phase, antenna.standardError, antenna.metres, antenna.metresStandardError,
                  antenna.delay, antenna.delayStandardError});
    ASSERT_LE(antenna.aaSyncLow, antenna.aaSync);
    ASSERT_LE(antenna.aaSync, antenna.aaSyncHigh);
  }
  for (const SurveyPair& pair : result.pairs) {
    expectFinite({pair.difference, pair.residual, pair.redundancy, pair.w.value_or(0.0),
                  pair.smallestDetectable.value_or(0.0), pair.pathExcess.value_or(0.0),
                  pair.directionT.value_or(0.0)});
    ASSERT_GE(pair.redundancy, 0.0);
    ASSERT_LE(pair.redundancy, 1.0);
  }
  for (const SurveyPlace& place : result.next) {
    ASSERT_TRUE(std::isfinite(place.gain));
    ASSERT_GT(place.gain, 0.0);
  }
}

TEST(SurveyLimits, NoAntennaIsAResult) {
  const SurveyResult result = MakeSurvey(sync::SyncModel());
  EXPECT_TRUE(result.antennas.empty());
  EXPECT_TRUE(result.pairs.empty());
  EXPECT_TRUE(result.next.empty());
  EXPECT_EQ(result.summary.parts, 0);
  EXPECT_EQ(result.summary.degreesOfFreedom, 0);
  ExpectFinite(result);
}

TEST(SurveyLimits, OneAntennaIsAResult) {
  SyntheticSite site({0.0});
  const SurveyResult result = MakeSurvey(site.Model());
  ASSERT_EQ(result.antennas.size(), 1U);
  EXPECT_EQ(result.Antenna(0).status, AntennaStatus::Unchecked);
  EXPECT_EQ(result.Antenna(0).phase, 0.0);
  EXPECT_FALSE(result.Antenna(0).stoodAt);
  EXPECT_EQ(result.summary.parts, 1);
  EXPECT_TRUE(result.next.empty());
  ExpectFinite(result);
}

TEST(SurveyLimits, TwoAntennasCannotBeChecked) {
  SyntheticSite site({0.0, 9.0});
  site.Hear(0, 1, 1);
  const SurveyResult result = MakeSurvey(site.Model());
  EXPECT_EQ(result.Antenna(0).status, AntennaStatus::Unchecked);
  EXPECT_EQ(result.Antenna(1).status, AntennaStatus::Unchecked);
  EXPECT_NEAR(result.Antenna(1).phase, 9.0, 1e-12);
  ASSERT_EQ(result.pairs.size(), 1U);
  EXPECT_TRUE(result.pairs[0].bridge);
  EXPECT_TRUE(result.pairs[0].thin);
  EXPECT_EQ(result.pairs[0].w, std::nullopt);
  EXPECT_EQ(result.pairs[0].smallestDetectable, std::nullopt);
  EXPECT_EQ(result.pairs[0].pathExcess, std::nullopt);
  EXPECT_EQ(result.pairs[0].directionT, std::nullopt);
  EXPECT_EQ(result.summary.pathExcess, std::nullopt);
  EXPECT_EQ(result.summary.oneWay, 1);
  EXPECT_TRUE(result.Antenna(0).stoodAt);
  EXPECT_FALSE(result.Antenna(1).stoodAt);
  ASSERT_EQ(result.next.size(), 2U);
  EXPECT_EQ(result.next[0].antenna, 1);
  ExpectFinite(result);
}

TEST(SurveyLimits, AntennasWithoutReadingsAreParts) {
  SyntheticSite site({0.0, 9.0, 4.0, 7.0});
  site.HearBoth(1, 2, 3);
  const SurveyResult result = MakeSurvey(site.Model());
  EXPECT_EQ(result.summary.parts, 3);
  EXPECT_EQ(result.summary.mainPart, 1);
  EXPECT_EQ(result.Antenna(0).status, AntennaStatus::Apart);
  EXPECT_EQ(result.Antenna(3).status, AntennaStatus::Apart);
  EXPECT_EQ(result.summary.degreesOfFreedom, 0);
  ExpectFinite(result);
}

TEST(SurveyLimits, AChainOfBridgesAddsUpItsVariances) {
  SyntheticSite site({0.0, 3.0, 6.0, 9.0, 12.0});
  for (int antenna = 0; antenna < 4; ++antenna) {
    site.HearBoth(antenna, antenna + 1, 1);
  }
  const SurveyResult result = MakeSurvey(site.Model());
  EXPECT_EQ(result.summary.bridges.size(), 4U);
  EXPECT_EQ(result.summary.degreesOfFreedom, 0);
  const double one = result.Antenna(1).standardError;
  EXPECT_NEAR(result.Antenna(4).standardError, 2.0 * one, 1e-12);
  for (const SurveyPair& pair : result.pairs) {
    EXPECT_EQ(pair.w, std::nullopt);
    EXPECT_NEAR(pair.redundancy, 0.0, 1e-9);
  }
  for (const SurveyAntenna& antenna : result.antennas) {
    EXPECT_EQ(antenna.status, AntennaStatus::Unchecked);
  }
}

TEST(SurveyLimits, AnAntennaRefusedByAFullModelIsNotCounted) {
  SyntheticSite site = SyntheticSite::Random(51, 1);
  site.HearAll(1);
  EXPECT_ANY_THROW(site.Model().FindOrAddAa(200, 1, 1));
  ASSERT_EQ(site.Model().AaCount(), 52);
  const SurveyResult result = MakeSurvey(site.Model());
  EXPECT_EQ(result.antennas.size(), 51U);
  EXPECT_EQ(result.pairs.size(), 1275U);
  EXPECT_EQ(result.summary.pairsPossible, 1275);
  EXPECT_EQ(result.summary.degreesOfFreedom, 1225);
  EXPECT_EQ(result.next.size(), 3U);
  ExpectFinite(result);
}

TEST(SurveyLimits, CellsOfExtremeValuesGiveFiniteNumbers) {
  SyntheticSite site({0.0, 0.0, 0.0, 0.0, 0.0});
  sync::SyncModel& model = site.Model();
  model.SetCell(0, 1, Cell(2147483647, 65538, 32767, 1));
  model.SetCell(1, 0, Cell(-98, 1, -98, -98));
  model.SetCell(0, 2, Cell(32767, 1, 32767, 32767));
  model.SetCell(1, 2, Cell(-98, 1, -98, -98));
  model.SetCell(2, 1, Cell(0, 2147483647, 0, 0));
  model.SetCell(3, 4, Cell(32767, 1, 32767, 32767));
  model.SetCell(4, 3, Cell(32767, 1, 32767, 32767));
  model.SetCell(3, 0, Cell(-2147483647 - 1, 65536, -32767, -32768));
  ExpectFinite(MakeSurvey(model));
  SurveyOptions options;
  options.reference = 4;
  options.referenceMetres = 1e6;
  ExpectFinite(MakeSurvey(model, options));
}

TEST(SurveyLimits, RandomExtremesGiveFiniteNumbers) {
  std::mt19937 generator(17);
  for (int round = 0; round < 200; ++round) {
    const int antennas = 2 + static_cast<int>(generator() % 12);
    SyntheticSite site = SyntheticSite::Random(antennas, static_cast<unsigned>(round));
    for (int from = 0; from < antennas; ++from) {
      for (int to = 0; to < antennas; ++to) {
        if (from != to && generator() % 3 != 0) {
          const auto range = generator() % 4 == 0 ? 32768U : 60U;
          const auto value = static_cast<std::int16_t>(static_cast<int>(generator() % range) - 30);
          const std::int32_t count = generator() % 5 == 0 ? 60000 : 1;
          site.Model().SetCell(from, to, Cell(count * value, count, value, value));
        }
      }
    }
    ExpectFinite(MakeSurvey(site.Model()));
  }
}

}  // namespace
}  // namespace kelvara::survey
