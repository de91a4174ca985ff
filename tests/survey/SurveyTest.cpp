#include "survey/Survey.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>

#include "support/SyntheticSite.h"

namespace kelvara::survey {
namespace {

using test::SyntheticSite;

/// A site of nine antennas with a wrong pair, one-way pairs and an antenna on a bridge.
SyntheticSite MixedSite() {
  SyntheticSite site = SyntheticSite::Random(9, 21);
  site.SetNoise(0.5);
  for (int a = 0; a < 8; ++a) {
    for (int b = a + 1; b < 8; ++b) {
      if ((a + b) % 4 == 3) {
        site.Hear(a, b, 2, 1.0);
      } else if ((a * b) % 5 != 4) {
        const double error = a == 2 && b == 4 ? 14.0 : 0.0;
        site.Hear(a, b, 3, 1.0 - error);
        site.Hear(b, a, 2, 1.0 + error);
      }
    }
  }
  site.HearBoth(3, 8, 2, 1.0);
  return site;
}

/// The same readings with the antennas in another order of appearance.
sync::SyncModel Reordered(const sync::SyncModel& model, const std::vector<int>& order) {
  sync::SyncModel result;
  for (const int antenna : order) {
    result.FindOrAddAa(model.AaRpn(antenna), 3, 90);
  }
  for (std::size_t from = 0; from < order.size(); ++from) {
    for (std::size_t to = 0; to < order.size(); ++to) {
      result.SetCell(static_cast<int>(from), static_cast<int>(to),
                     model.Cell(order[from], order[to]));
    }
  }
  return result;
}

const SurveyAntenna& ByRpn(const SurveyResult& result, int rpn) {
  return *std::find_if(result.antennas.begin(), result.antennas.end(),
                       [&](const SurveyAntenna& antenna) { return antenna.rpn == rpn; });
}

TEST(Survey, RecoversLengthsFromReadingsWithoutNoise) {
  SyntheticSite site({12.0, 3.0, 30.0, 21.0, 9.0});
  site.HearAll(3);
  const SurveyResult result = MakeSurvey(site.Model());
  for (int antenna = 0; antenna < 5; ++antenna) {
    EXPECT_NEAR(result.Antenna(antenna).phase, site.Delay(antenna) - 3.0, 1e-9);
    EXPECT_NEAR(result.Antenna(antenna).metres, 29.0 * (site.Delay(antenna) - 3.0), 1e-7);
    EXPECT_EQ(result.Antenna(antenna).aaSync,
              std::lround((site.Delay(antenna) - 3.0) / 4.5 - 1e-6));
    EXPECT_EQ(result.Antenna(antenna).pairs, 4);
    EXPECT_EQ(result.Antenna(antenna).readings, 24);
    EXPECT_TRUE(result.Antenna(antenna).stoodAt);
  }
  EXPECT_EQ(result.summary.references, std::vector<int>{1});
  EXPECT_EQ(result.Antenna(1).standardError, 0.0);
  EXPECT_EQ(result.summary.degreesOfFreedom, 6);
  EXPECT_TRUE(result.Suspects().empty());
}

TEST(Survey, TheOrderOfTheAntennasChangesNothing) {
  SyntheticSite site = MixedSite();
  const SurveyResult expected = MakeSurvey(site.Model());
  ASSERT_EQ(expected.Suspects().size(), 1U);
  std::vector<int> order(9);
  std::iota(order.begin(), order.end(), 0);
  std::mt19937 generator(1);
  for (int round = 0; round < 20; ++round) {
    std::shuffle(order.begin(), order.end(), generator);
    const SurveyResult result = MakeSurvey(Reordered(site.Model(), order));
    EXPECT_NEAR(result.summary.sigmaPair, expected.summary.sigmaPair, 1e-9);
    EXPECT_EQ(result.summary.settled, expected.summary.settled);
    EXPECT_EQ(result.summary.bridges.size(), expected.summary.bridges.size());
    for (const SurveyAntenna& antenna : result.antennas) {
      const SurveyAntenna& same = ByRpn(expected, antenna.rpn);
      EXPECT_NEAR(antenna.phase, same.phase, 1e-9);
      EXPECT_NEAR(antenna.standardError, same.standardError, 1e-9);
      EXPECT_EQ(antenna.status, same.status);
    }
    ASSERT_EQ(result.next.size(), expected.next.size());
    for (std::size_t place = 0; place < result.next.size(); ++place) {
      EXPECT_EQ(result.Antenna(result.next[place].antenna).rpn,
                expected.Antenna(expected.next[place].antenna).rpn);
      EXPECT_NEAR(result.next[place].gain, expected.next[place].gain, 1e-9);
    }
  }
}

TEST(Survey, AReferenceShiftsEveryLengthOfItsPart) {
  SyntheticSite site = MixedSite();
  const SurveyResult free = MakeSurvey(site.Model());
  for (int reference = 0; reference < 9; ++reference) {
    SurveyOptions options;
    options.reference = reference;
    options.referenceMetres = 145.0;
    const SurveyResult result = MakeSurvey(site.Model(), options);
    EXPECT_EQ(result.Antenna(reference).phase, 0.0);
    EXPECT_EQ(result.Antenna(reference).metres, 145.0);
    EXPECT_EQ(result.Antenna(reference).standardError, 0.0);
    for (int antenna = 0; antenna < 9; ++antenna) {
      EXPECT_NEAR(result.Antenna(antenna).phase,
                  free.Antenna(antenna).phase - free.Antenna(reference).phase, 1e-9);
      EXPECT_NEAR(result.Antenna(antenna).metres, 29.0 * result.Antenna(antenna).phase + 145.0,
                  1e-7);
      EXPECT_EQ(result.Antenna(antenna).delay, free.Antenna(antenna).delay);
      EXPECT_EQ(result.Antenna(antenna).aaSync,
                std::lround((result.Antenna(antenna).phase + 5.0) / 4.5));
    }
    for (std::size_t pair = 0; pair < free.pairs.size(); ++pair) {
      EXPECT_EQ(result.pairs[pair].w, free.pairs[pair].w);
    }
  }
}

TEST(Survey, TheMainPartIsTheLargestOrThatOfTheReference) {
  SyntheticSite site({0.0, 5.0, 0.0, 9.0, 18.0});
  site.HearBoth(0, 1, 3);
  site.HearBoth(2, 3, 3);
  site.HearBoth(3, 4, 3);
  site.HearBoth(2, 4, 3);
  const SurveyResult free = MakeSurvey(site.Model());
  EXPECT_EQ(free.summary.parts, 2);
  EXPECT_EQ(free.summary.mainPart, 1);
  EXPECT_EQ(free.summary.references, (std::vector<int>{0, 2}));
  EXPECT_EQ(free.Antenna(0).status, AntennaStatus::Apart);
  EXPECT_NE(free.Antenna(2).status, AntennaStatus::Apart);
  EXPECT_EQ(free.Antenna(1).phase, 5.0);

  SurveyOptions options;
  options.reference = 1;
  options.referenceMetres = 290.0;
  const SurveyResult chosen = MakeSurvey(site.Model(), options);
  EXPECT_EQ(chosen.summary.mainPart, 0);
  EXPECT_EQ(chosen.summary.references, (std::vector<int>{1, 2}));
  EXPECT_NEAR(chosen.Antenna(0).metres, 145.0, 1e-9);
  EXPECT_NEAR(chosen.Antenna(4).metres, 522.0, 1e-9);
  EXPECT_EQ(chosen.Antenna(4).status, AntennaStatus::Apart);
  EXPECT_EQ(chosen.Antenna(0).status, AntennaStatus::Unchecked);
}

TEST(Survey, AnAntennaNearAStepIsNotSettled) {
  // 4.5 RFPS units are one step: 11 is far from the steps at 6.75 and 11.25 only by 0.25.
  SyntheticSite site({0.0, 9.0, 11.0, 18.0, 27.0});
  site.HearAll(2);
  const SurveyResult result = MakeSurvey(site.Model());
  EXPECT_EQ(result.Antenna(1).status, AntennaStatus::Settled);
  EXPECT_EQ(result.Antenna(2).status, AntennaStatus::NearStep);
  EXPECT_EQ(result.Antenna(2).aaSyncLow, 2);
  EXPECT_EQ(result.Antenna(2).aaSyncHigh, 3);
  EXPECT_EQ(result.summary.settled, 4);
}

TEST(Survey, AnAntennaOnABridgeIsUnchecked) {
  SyntheticSite site = MixedSite();
  const SurveyResult result = MakeSurvey(site.Model());
  EXPECT_EQ(result.Antenna(8).status, AntennaStatus::Unchecked);
  ASSERT_EQ(result.summary.bridges.size(), 1U);
  EXPECT_EQ(result.summary.bridges[0], std::pair(3, 8));
  EXPECT_EQ(result.summary.articulation, std::vector<int>{3});
}

TEST(Survey, TwoKeptPairsAreTooFewInALargerNetwork) {
  SyntheticSite site({0.0, 9.0, 18.0, 27.0});
  for (const auto& [a, b] : {std::pair(0, 1), {0, 2}, {1, 2}, {1, 3}, {2, 3}}) {
    site.HearBoth(a, b, 3);
  }
  const SurveyResult result = MakeSurvey(site.Model());
  EXPECT_EQ(result.Antenna(0).status, AntennaStatus::Unchecked);
  EXPECT_EQ(result.Antenna(1).status, AntennaStatus::Settled);
}

TEST(Survey, APairInDoubtMakesItsAntennasSuspect) {
  SyntheticSite site({0.0, 0.0, 0.0});
  site.HearBoth(0, 1, 5);
  site.HearBoth(1, 2, 5);
  site.Hear(0, 2, 5, -20.0);
  site.Hear(2, 0, 5, 20.0);
  const SurveyResult result = MakeSurvey(site.Model());
  for (const SurveyAntenna& antenna : result.antennas) {
    EXPECT_EQ(antenna.status, AntennaStatus::Suspect);
    EXPECT_LT(antenna.aaSyncLow, antenna.aaSyncHigh + (antenna.standardError > 0.0 ? 0 : 1));
  }
  EXPECT_EQ(result.Suspects().size(), 3U);
}

TEST(Survey, TheReportsLengthDiffersOnlyFromASettledOne) {
  SyntheticSite site({0.0, 9.0, 11.0, 18.0, 27.0});
  site.HearAll(2);
  SurveyOptions options;
  options.reportMetres = {0, 260, 130, std::nullopt, 650};
  const SurveyResult result = MakeSurvey(site.Model(), options);
  std::vector<bool> differs;
  for (const SurveyAntenna& antenna : result.antennas) {
    differs.push_back(SurveyResult::ReportDiffers(antenna));
  }
  EXPECT_EQ(differs, (std::vector<bool>{false, false, false, false, true}));
}

TEST(Survey, NamesAntennasByTheirRpn) {
  SyntheticSite site({0.0, 5.0}, {200, 7});
  EXPECT_EQ(AntennaWithRpn(site.Model(), 200), 0);
  EXPECT_EQ(AntennaWithRpn(site.Model(), 7), 1);
  EXPECT_EQ(AntennaWithRpn(site.Model(), 0), std::nullopt);
}

}  // namespace
}  // namespace kelvara::survey
