#include "survey/NetworkPicture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <vector>

namespace kelvara::survey {
namespace {

/// A survey of so many antennas and these pairs.
SurveyResult SurveyOf(int antennas, std::vector<SurveyPair> pairs) {
  SurveyResult survey;
  survey.antennas.resize(static_cast<std::size_t>(antennas));
  survey.pairs = std::move(pairs);
  return survey;
}

SurveyPair Pair(int a, int b, std::int32_t countAb, std::int32_t countBa) {
  SurveyPair pair;
  pair.a = a;
  pair.b = b;
  pair.countAb = countAb;
  pair.countBa = countBa;
  return pair;
}

TEST(NetworkPicture, AnEmptySurveyIsAnEmptyPicture) {
  const NetworkPicture picture = LayOutNetwork(SurveyResult());
  EXPECT_TRUE(picture.nodes.empty());
  EXPECT_TRUE(picture.lines.empty());
}

TEST(NetworkPicture, AntennasAreOnACircleClockwiseFromTheTop) {
  const NetworkPicture picture = LayOutNetwork(SurveyOf(4, {}));
  ASSERT_EQ(picture.nodes.size(), 4U);
  EXPECT_NEAR(picture.nodes[0].x, 0.0, 1e-12);
  EXPECT_NEAR(picture.nodes[0].y, -1.0, 1e-12);
  EXPECT_NEAR(picture.nodes[1].x, 1.0, 1e-12);
  EXPECT_NEAR(picture.nodes[2].y, 1.0, 1e-12);
  EXPECT_NEAR(picture.nodes[3].x, -1.0, 1e-12);
}

TEST(NetworkPicture, PlacesToStandAndReferencesAreMarked) {
  SurveyResult survey = SurveyOf(3, {});
  survey.next = {{.antenna = 2, .gain = 1.0}};
  survey.summary.references = {1};
  const NetworkPicture picture = LayOutNetwork(survey);
  EXPECT_FALSE(picture.nodes[0].standHere);
  EXPECT_TRUE(picture.nodes[2].standHere);
  EXPECT_TRUE(picture.nodes[1].isReference);
  EXPECT_FALSE(picture.nodes[2].isReference);
}

TEST(NetworkPicture, SuspectsComeLastAndOutweighOtherKinds) {
  SurveyPair rejected = Pair(0, 1, 3, 0);
  rejected.suspect = rejected.rejected = true;
  SurveyPair doubtful = Pair(0, 2, 3, 3);
  doubtful.suspect = doubtful.bridge = true;
  SurveyPair bridge = Pair(1, 2, 3, 0);
  bridge.bridge = true;
  const NetworkPicture picture =
      LayOutNetwork(SurveyOf(4, {rejected, doubtful, bridge, Pair(1, 3, 0, 2), Pair(2, 3, 4, 2)}));
  const std::vector<LineKind> expected = {LineKind::TwoWay, LineKind::OneWay, LineKind::Bridge,
                                          LineKind::Doubtful, LineKind::Rejected};
  ASSERT_EQ(picture.lines.size(), expected.size());
  for (std::size_t line = 0; line < expected.size(); ++line) {
    EXPECT_EQ(picture.lines[line].kind, expected[line]);
    EXPECT_EQ(picture.lines[line].pair, 4 - line);
  }
  EXPECT_GE(picture.lines[4].width, 3.0);
}

TEST(NetworkPicture, LinesWidenWithTheirReadingsUpToFour) {
  const NetworkPicture picture = LayOutNetwork(
      SurveyOf(5, {Pair(0, 1, 1, 0), Pair(0, 2, 5, 0), Pair(0, 3, 60, 0), Pair(0, 4, 9000, 0)}));
  EXPECT_NEAR(picture.lines[0].width, 1.0, 1e-12);
  EXPECT_GT(picture.lines[1].width, 1.5);
  EXPECT_NEAR(picture.lines[2].width, 4.0, 1e-12);
  EXPECT_NEAR(picture.lines[3].width, 4.0, 1e-12);
}

TEST(NetworkPicture, ManyLinesAreThinner) {
  const NetworkPicture picture =
      LayOutNetwork(SurveyOf(51, std::vector<SurveyPair>(400, Pair(0, 1, 1, 0))));
  EXPECT_NEAR(picture.lines[0].width, 0.5, 1e-12);
}

TEST(NetworkPicture, EveryKindOfLineHasAnotherDashPattern) {
  std::set<std::vector<double>> patterns;
  for (const LineKind kind : {LineKind::Rejected, LineKind::Doubtful, LineKind::Bridge,
                              LineKind::OneWay, LineKind::TwoWay}) {
    const std::span<const double> pattern = DashPattern(kind);
    patterns.emplace(pattern.begin(), pattern.end());
  }
  EXPECT_EQ(patterns.size(), 5U);
  EXPECT_TRUE(DashPattern(LineKind::TwoWay).empty());
}

}  // namespace
}  // namespace kelvara::survey
