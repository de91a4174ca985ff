#include "survey/SurveyChanges.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/SyntheticSite.h"
#include "survey/Survey.h"

namespace kelvara::survey {
namespace {

using test::SyntheticSite;

SurveyResult SurveyOf(std::vector<double> delays, std::vector<int> rpns = {}) {
  SyntheticSite site(std::move(delays), std::move(rpns));
  site.HearAll(3);
  return MakeSurvey(site.Model());
}

TEST(SurveyChanges, TheSameSiteHasNotChanged) {
  const SurveyResult survey = SurveyOf({3.0, 9.0, 14.0, 20.0});
  const std::vector<DelayChange> changes = CompareSurveys(survey, survey);
  ASSERT_EQ(changes.size(), 4U);
  for (const DelayChange& change : changes) {
    EXPECT_FALSE(change.changed);
    EXPECT_NEAR(change.phase, 0.0, 1e-12);
    EXPECT_NEAR(change.t, 0.0, 1e-12);
  }
}

// The antenna that changes is the shortest, so the datum of the second survey is another.
TEST(SurveyChanges, AnAntennaWithAnotherCableIsFoundWhateverTheDatum) {
  const std::vector<DelayChange> changes = CompareSurveys(SurveyOf({3.0, 9.0, 14.0, 20.0, 25.0}),
                                                          SurveyOf({12.0, 9.0, 14.0, 20.0, 25.0}));
  ASSERT_EQ(changes.size(), 5U);
  EXPECT_TRUE(changes[0].changed);
  EXPECT_EQ(changes[0].rpn, 1);
  EXPECT_NEAR(changes[0].phase, 9.0, 1e-9);
  EXPECT_NEAR(changes[0].Metres(), 261.0, 1e-7);
  EXPECT_GT(changes[0].t, 3.3);
  for (std::size_t other = 1; other < 5; ++other) {
    EXPECT_FALSE(changes[other].changed);
    EXPECT_NEAR(changes[other].phase, 0.0, 1e-9);
  }
}

TEST(SurveyChanges, ADifferenceWithinRepeatabilityIsNoChange) {
  const std::vector<DelayChange> changes =
      CompareSurveys(SurveyOf({0.0, 4.0, 8.0, 12.0, 16.0}), SurveyOf({0.0, 4.0, 9.0, 12.0, 16.0}));
  EXPECT_NEAR(changes[2].phase, 0.8, 0.05);
  for (const DelayChange& change : changes) {
    EXPECT_FALSE(change.changed);
  }
}

TEST(SurveyChanges, OnlyAntennasOfBothMainPartsAreCompared) {
  const std::vector<DelayChange> changes =
      CompareSurveys(SurveyOf({3.0, 9.0, 14.0}, {7, 1, 5}), SurveyOf({9.0, 3.0, 20.0}, {1, 7, 9}));
  ASSERT_EQ(changes.size(), 2U);
  EXPECT_EQ(changes[0].rpn, 1);
  EXPECT_EQ(changes[1].rpn, 7);
  EXPECT_TRUE(CompareSurveys(SurveyOf({1.0, 2.0}, {1, 2}), SurveyOf({1.0, 2.0}, {3, 4})).empty());
  EXPECT_TRUE(CompareSurveys(SurveyOf({}), SurveyOf({})).empty());
}

TEST(SurveyChanges, AntennasThatMovedTogetherShowOnlyAgainstAMajority) {
  const std::vector<DelayChange> changes = CompareSurveys(SurveyOf({0.0, 5.0, 10.0, 15.0, 20.0}),
                                                          SurveyOf({0.0, 5.0, 10.0, 22.0, 27.0}));
  EXPECT_FALSE(changes[0].changed);
  EXPECT_NEAR(changes[0].phase, 0.0, 1e-9);
  EXPECT_NEAR(changes[3].phase, 7.0, 1e-9);
  EXPECT_TRUE(changes[3].changed);
  EXPECT_TRUE(changes[4].changed);
}

TEST(SurveyDrift, IsFoundBetweenTheHalvesOfTheReadings) {
  SyntheticSite site({0.0, 6.0, 12.0, 18.0});
  site.Model().KeepReadings();
  site.HearAll(2);
  site.SetDelay(2, 15.0);
  site.HearAll(2);
  const std::vector<DelayChange> drift = FindDrift(site.Model());
  ASSERT_EQ(drift.size(), 1U);
  EXPECT_EQ(drift[0].rpn, 3);
  EXPECT_NEAR(drift[0].phase, 3.0, 1e-9);
}

TEST(SurveyDrift, NeedsMoreThanTwentyReadings) {
  for (const int extra : {0, 1}) {
    SyntheticSite site({0.0, 6.0, 12.0});
    site.Model().KeepReadings();
    site.HearBoth(0, 1, 2);
    site.HearBoth(1, 2, 2);
    site.Hear(0, 2, 2);
    site.SetDelay(0, 20.0);
    site.HearBoth(0, 1, 2);
    site.HearBoth(1, 2, 2);
    site.Hear(0, 2, 2 + extra);
    EXPECT_EQ(FindDrift(site.Model()).size(), static_cast<std::size_t>(extra)) << extra;
  }
}

TEST(SurveyDrift, OnlyReadingsSinceTheLastClearCount) {
  SyntheticSite site({0.0, 6.0, 12.0, 18.0});
  site.Model().KeepReadings();
  site.HearAll(2);
  site.Model().Clear();
  EXPECT_TRUE(site.Model().Readings().empty());
  for (std::int16_t rpn = 1; rpn <= 4; ++rpn) {
    site.Model().FindOrAddAa(rpn, 3, 90);
  }
  site.SetDelay(2, 15.0);
  site.HearAll(2);
  EXPECT_EQ(site.Model().Readings().size(), 24U);
  EXPECT_TRUE(FindDrift(site.Model()).empty());
}

}  // namespace
}  // namespace kelvara::survey
