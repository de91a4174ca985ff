#include "capture/ResultsExport.h"

#include <gtest/gtest.h>

#include <functional>

#include "capture/ExportRig.h"
#include "support/Golden.h"

namespace kelvara::capture {
namespace {

using sync::PhaseUnits;
using test::kCsvFirstLine;

class ResultsExportTest : public ::testing::Test, public test::ExportRig {
 protected:
  /// The file's text after its first line.
  std::string Body() {
    const std::string first(kCsvFirstLine);
    EXPECT_EQ(Csv().substr(0, first.size()), first);
    return Csv().substr(first.size());
  }

  void ExpectGolden(const std::string& name) {
    resultsExport.WriteResults("results.csv");
    EXPECT_EQ(beeper.count, 0);
    test::ExpectSameText(Csv(), test::Golden(name, {{"@STAMP@", "second1728043200"}}));
  }
};

TEST_F(ResultsExportTest, AnEmptyModelGivesTheHeaderAndAnEmptyHeadingRow) {
  Draw();
  ExpectGolden("csv-empty-rfps-dec.csv");
  EXPECT_EQ(Body(), "Units: RFPS\r\nRPN Units: Decimal\r\n\r\n\r\n");
}

TEST_F(ResultsExportTest, ThreeAntennasInHexadecimalAndMetres) {
  AddAas({1, 6, 2});
  model.AddPhase(0, 1, 7);
  model.AddPhase(0, 2, -11);
  options.units = PhaseUnits::Metres;
  options.rpnHex = true;
  Draw();
  resultsExport.WriteResults("results.csv");
  EXPECT_EQ(Body(),
            "Units: Metres\r\nRPN Units: Hex\r\n\r\n"
            ",AA.01,AA.06,AA.02\r\n"
            "AA.01,,260,-260\r\n"
            "AA.06,,,\r\n"
            "AA.02,,,\r\n");
}

TEST_F(ResultsExportTest, EveryUnitAndBase) {
  test::FillModel(model, "four-antennas.readings");
  for (const auto& [shown, units] :
       {std::pair(PhaseUnits::Rfps, "rfps"), std::pair(PhaseUnits::AaSync, "aasync"),
        std::pair(PhaseUnits::Metres, "metres")}) {
    for (const auto& [hex, base] : {std::pair(false, "dec"), std::pair(true, "hex")}) {
      const std::string name = std::string("csv-four-antennas-") + units + "-" + base + ".csv";
      SCOPED_TRACE(name);
      options.units = shown;
      options.rpnHex = hex;
      Draw();
      ExpectGolden(name);
    }
  }
}

TEST_F(ResultsExportTest, AFullModel) {
  test::FillModel(model, "fifty-one-antennas.readings");
  ASSERT_EQ(model.AaCount(), 51);
  options.units = PhaseUnits::Metres;
  options.rpnHex = true;
  Draw();
  ExpectGolden("csv-fifty-one-antennas-metres-hex.csv");
}

TEST_F(ResultsExportTest, LabelsHaveNoFpsWhateverTheGridShows) {
  model.FindOrAddAa(7, 12, 0);
  options.fpsShown = true;
  Draw();
  ASSERT_EQ(grid.Text(0, 1), "07[12]");
  resultsExport.WriteResults("results.csv");
  EXPECT_EQ(Body(), "Units: RFPS\r\nRPN Units: Decimal\r\n\r\n,AA.07\r\nAA.07,\r\n");
}

TEST_F(ResultsExportTest, DecimalLabelsHaveAtLeastTwoDigits) {
  AddAas({7, 123, -5});
  Draw();
  resultsExport.WriteResults("results.csv");
  EXPECT_NE(Body().find("\r\n,AA.07,AA.123,AA.-05\r\n"), std::string::npos) << Body();
}

TEST_F(ResultsExportTest, HexadecimalLabelsHaveAtLeastTwoDigits) {
  AddAas({10, 300, -1});
  options.rpnHex = true;
  Draw();
  resultsExport.WriteResults("results.csv");
  EXPECT_NE(Body().find("\r\n,AA.0A,AA.12C,AA.FFFF\r\n"), std::string::npos) << Body();
}

TEST_F(ResultsExportTest, WithoutAUnitTheBaseIsTheSecondLine) {
  options.units.reset();
  resultsExport.WriteResults("results.csv");
  EXPECT_EQ(Body(), "RPN Units: Decimal\r\n\r\n\r\n");
}

TEST_F(ResultsExportTest, ASecondExportReplacesTheFirst) {
  AddAas({1, 2});
  Draw();
  resultsExport.WriteResults("results.csv");
  model.Clear();
  Draw();
  resultsExport.WriteResults("results.csv");
  EXPECT_EQ(Body(), "Units: RFPS\r\nRPN Units: Decimal\r\n\r\n\r\n");
  EXPECT_EQ(files.openFiles, 0);
  EXPECT_EQ(beeper.count, 0);
}

TEST_F(ResultsExportTest, CellTextsAreWrittenAsTheGridShowsThem) {
  model.FindOrAddAa(1, 0, 0);
  model.FindOrAddAa(2, 0, 0);
  model.AddPhase(0, 1, 7);
  grid.SetSize(3, 3);
  grid.SetText(0, 1, "heading");
  grid.SetText(1, 0, "heading");
  grid.SetText(1, 1, "self");
  grid.SetText(1, 2, "a, \"b\"");
  grid.SetText(2, 1, " ");
  resultsExport.WriteResults("results.csv");
  EXPECT_EQ(Body(),
            "Units: RFPS\r\nRPN Units: Decimal\r\n\r\n"
            ",AA.01,AA.02\r\nAA.01,self,a, \"b\"\r\nAA.02, ,\r\n");
}

TEST_F(ResultsExportTest, TheBaseIsReadAgainForEveryRow) {
  AddAas({10, 11, 12});
  Draw();
  int lines = 0;
  files.onWrite = [&] { options.rpnHex = ++lines == 6; };
  resultsExport.WriteResults("results.csv");
  EXPECT_EQ(Body(),
            "Units: RFPS\r\nRPN Units: Decimal\r\n\r\n"
            ",AA.10,AA.11,AA.12\r\nAA.10,,,\r\nAA.0B,,,\r\nAA.12,,,\r\n");
}

}  // namespace
}  // namespace kelvara::capture
