#include "app/CellToolTip.h"

#include <gtest/gtest.h>

namespace kelvara::app {
namespace {

class CellToolTipTest : public ::testing::Test {
 protected:
  CellToolTipTest() {
    model.FindOrAddAa(10, 3, 90);
    model.FindOrAddAa(6, 15, 90);
  }

  std::string At(int row, int column) const {
    return CellToolTip(model, options, survey, row, column);
  }

  sync::SyncModel model;
  sync::DisplayOptions options;
  survey::SurveyResult survey;
};

TEST_F(CellToolTipTest, DescribesBothAntennasAndTheReadings) {
  model.AddPhase(0, 1, -12);
  model.AddPhase(0, 1, 7);
  model.AddPhase(0, 1, 9);
  EXPECT_EQ(At(1, 2),
            "Synchronised to AA 10, neighbour AA 06\n"
            "Mean 1, minimum -12, maximum 9 (RFPS units)\n"
            "Readings: 3");
}

TEST_F(CellToolTipTest, GivesTheResidualOfASuspectPairInTheCellsDirection) {
  model.AddPhase(0, 1, 12);
  model.AddPhase(1, 0, -12);
  survey::SurveyPair& pair = survey.pairs.emplace_back();
  pair.b = 1;
  pair.residual = 4.25;
  pair.rejected = true;
  pair.suspect = true;
  const auto lastLine = [](const std::string& text) { return text.substr(text.rfind('\n') + 1); };
  EXPECT_EQ(lastLine(At(1, 2)), "Suspect: residual 4.2 RFPS units (123 m), left out of the survey");
  pair.rejected = false;
  EXPECT_EQ(lastLine(At(2, 1)), "Suspect: residual -4.2 RFPS units (-123 m), in doubt");
  pair.suspect = false;
  EXPECT_EQ(lastLine(At(1, 2)), "Readings: 1");
}

TEST_F(CellToolTipTest, RoundsAMeanHalfwayToTheEvenNumber) {
  model.AddPhase(0, 1, 2);
  model.AddPhase(0, 1, 3);
  EXPECT_NE(At(1, 2).find("Mean 2,"), std::string::npos);
  model.Clear();
  model.FindOrAddAa(10, 3, 90);
  model.FindOrAddAa(6, 15, 90);
  model.AddPhase(0, 1, -11);
  model.AddPhase(0, 1, -12);
  EXPECT_NE(At(1, 2).find("Mean -12,"), std::string::npos);
}

TEST_F(CellToolTipTest, NamesTheAntennasAsTheGridDoes) {
  options.rpnHex = true;
  options.fpsShown = true;
  EXPECT_EQ(At(1, 2).substr(0, At(1, 2).find('\n')),
            "Synchronised to AA 0A[3], neighbour AA 06[F]");
}

TEST_F(CellToolTipTest, SaysWhenThereAreNoReadings) {
  EXPECT_EQ(At(2, 1), "Synchronised to AA 06, neighbour AA 10\nNo readings");
}

TEST_F(CellToolTipTest, OnTheDiagonalNamesOnlyTheAntenna) {
  EXPECT_EQ(At(2, 2), "Synchronised to AA 06");
}

TEST_F(CellToolTipTest, IsEmptyWhereThereIsNoAntenna) {
  for (const auto& [row, column] :
       {std::pair{0, 0}, {0, 1}, {1, 0}, {3, 1}, {1, 3}, {-1, 1}, {1, -1}, {52, 52}}) {
    EXPECT_EQ(At(row, column), "") << row << ", " << column;
  }
}

TEST_F(CellToolTipTest, WithTooManyAntennasStaysInsideTheMatrix) {
  for (std::int16_t rpn = 100; rpn < 149; ++rpn) {
    model.FindOrAddAa(rpn, 0, 90);
  }
  EXPECT_THROW(model.FindOrAddAa(200, 0, 90), std::exception);
  EXPECT_NE(At(51, 50), "");
  EXPECT_EQ(At(52, 1), "");
}

}  // namespace
}  // namespace kelvara::app
