#include "survey/SurveyWords.h"

#include <gtest/gtest.h>

#include "support/SyntheticSite.h"
#include "survey/Survey.h"

namespace kelvara::survey {
namespace {

const sync::DisplayOptions kDecimal;

SurveyResult SurveyOf(test::SyntheticSite site) { return MakeSurvey(site.Model()); }

test::SyntheticSite Triangle() {
  test::SyntheticSite site({0.0, 9.0, 18.0}, {10, 11, 12});
  site.HearAll(4);
  return site;
}

TEST(SurveyWordsTest, AnEmptySurveySaysHowToBegin) {
  const SurveyResult survey;
  EXPECT_EQ(SummaryWords(survey, false, kDecimal),
            "No antennas yet. The survey follows the reports as they arrive.");
  EXPECT_EQ(NextWords(survey, kDecimal),
            "Stand at any antenna with the beltpack: the survey begins with the first reports.");
  EXPECT_EQ(NetworkWords(survey, kDecimal), "No antennas.");
}

TEST(SurveyWordsTest, TheSummarySaysWhatLengthsCountFrom) {
  const SurveyResult survey = SurveyOf(Triangle());
  EXPECT_EQ(SummaryWords(survey, false, kDecimal),
            "3 antennas, 3 settled; 3 of 3 pairs, 0 one-way, 0 thin, 0 suspect. Only differences "
            "can be observed: lengths are above that of 10.");
  sync::DisplayOptions hex;
  hex.rpnHex = true;
  EXPECT_NE(SummaryWords(survey, true, hex).find("the length given for 0A:"), std::string::npos);
}

TEST(SurveyWordsTest, TheNextPlaceNamesItsUncertainNeighbours) {
  SurveyResult survey = SurveyOf(Triangle());
  for (SurveyAntenna& antenna : survey.antennas) {
    antenna.stoodAt = true;
  }
  survey.next = {{.antenna = 1, .gain = 2.0}, {.antenna = 0, .gain = 1.0}};
  EXPECT_EQ(NextWords(survey, kDecimal),
            "Stand next at 11 (after that, at 10) for three reports: more readings there lower the "
            "remaining errors most.");
  survey.antennas[2].aaSyncHigh = survey.antennas[2].aaSyncLow + 1;
  EXPECT_EQ(NextWords(survey, kDecimal),
            "Stand next at 11 (after that, at 10) for three reports: the AA Sync units of its "
            "neighbour 12 are uncertain.");
  survey.antennas[1].stoodAt = false;
  survey.antennas[1].aaSyncHigh = survey.antennas[1].aaSyncLow + 1;
  EXPECT_EQ(NextWords(survey, kDecimal),
            "Stand next at 11 (after that, at 10) for three reports: no beltpack has stood there "
            "yet, and its own AA Sync units and those of its neighbour 12 are uncertain.");
}

TEST(SurveyWordsTest, ChangesNameTheChangedAntennas) {
  std::vector<DelayChange> changes = {{.rpn = 7, .phase = 0.1, .t = 0.2, .changed = false},
                                      {.rpn = 8, .phase = 0.0, .t = 0.0, .changed = false}};
  EXPECT_EQ(ChangeWords(changes, "a.txt", kDecimal),
            "Since a.txt: none of the 2 antennas in both has changed.");
  changes.push_back({.rpn = 9, .phase = -2.0, .t = -5.0, .changed = true});
  EXPECT_EQ(ChangeWords(changes, "a.txt", kDecimal),
            "Since a.txt: 09 is 58 m shorter, of 3 antennas in both.");
  EXPECT_EQ(ChangeWords({}, "a.txt", kDecimal), "Since a.txt: no antenna is in both.");
}

TEST(SurveyWordsTest, LongListsEndInANumber) {
  std::vector<DelayChange> changes;
  for (std::int16_t rpn = 1; rpn <= 9; ++rpn) {
    changes.push_back({.rpn = rpn, .phase = 10.0, .t = 9.0, .changed = true});
  }
  EXPECT_NE(ChangeWords(changes, "a.txt", kDecimal).find("04 is 290 m longer and 5 more"),
            std::string::npos);
}

TEST(SurveyWordsTest, ThePictureIsDescribed) {
  test::SyntheticSite site({0.0, 9.0, 18.0, 4.0});
  site.HearBoth(0, 1, 4);
  site.HearBoth(1, 2, 4);
  site.HearBoth(0, 2, 4);
  site.Hear(2, 3, 4);
  const std::string words = NetworkWords(SurveyOf(site), kDecimal);
  EXPECT_EQ(words.find("4 antennas on a circle, 4 pairs as lines, 1 part."), 0U) << words;
  EXPECT_NE(words.find("Bridges: 03 with 04."), std::string::npos) << words;
  EXPECT_NE(words.find("One way: 03 with 04."), std::string::npos) << words;
  EXPECT_NE(words.find("Stand next at: "), std::string::npos) << words;
}

TEST(SurveyWordsTest, APairsMarksAreJoined) {
  SurveyPair pair;
  pair.countAb = 2;
  pair.countBa = 2;
  EXPECT_EQ(PairMarks(pair), "");
  pair.suspect = true;
  EXPECT_EQ(PairMarks(pair), "in doubt");
  pair.rejected = true;
  pair.countBa = 0;
  pair.thin = true;
  EXPECT_EQ(PairMarks(pair), "left out, one way, thin");
}

}  // namespace
}  // namespace kelvara::survey
