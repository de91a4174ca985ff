#include <gtest/gtest.h>

#include <vector>

#include "base/Fault.h"
#include "capture/ExportRig.h"
#include "capture/ResultsExport.h"
#include "support/Golden.h"

namespace kelvara::capture {
namespace {

using test::kCsvFirstLine;

class ResultsExportFaultsTest : public ::testing::Test, public test::ExportRig {
 protected:
  ResultsExportFaultsTest() {
    test::FillModel(model, "four-antennas.readings");
    Draw();
  }

  std::vector<std::string> LinesOfAnExport() {
    resultsExport.WriteResults("whole.csv");
    const std::string text = files.files["whole.csv"];
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < text.size();) {
      const std::size_t end = text.find('\n', start) + 1;
      lines.push_back(text.substr(start, end - start));
      start = end;
    }
    return lines;
  }
};

TEST_F(ResultsExportFaultsTest, AFileThatCannotBeCreatedBeepsOnce) {
  files.unopenable["results.csv"] = true;
  resultsExport.WriteResults("results.csv");
  EXPECT_EQ(beeper.count, 1);
  EXPECT_EQ(files.files.count("results.csv"), 0U);
  EXPECT_EQ(files.openFiles, 0);
}

TEST_F(ResultsExportFaultsTest, AFileThatCannotBeCreatedDoesNotAffectTheNextExport) {
  files.unopenable["locked.csv"] = true;
  resultsExport.WriteResults("locked.csv");
  resultsExport.WriteResults("results.csv");
  EXPECT_EQ(beeper.count, 1);
  EXPECT_NE(Csv(), "");
}

TEST_F(ResultsExportFaultsTest, AFailedWriteBeepsOnceAndKeepsTheLinesBefore) {
  const std::vector<std::string> lines = LinesOfAnExport();
  ASSERT_EQ(lines.size(), 9U);
  std::string before;
  for (std::size_t written = 0; written < lines.size(); ++written) {
    SCOPED_TRACE(written);
    ResultsExport fresh(model, grid, options, machine);
    files.writesLeft = static_cast<int>(written);
    beeper.count = 0;
    fresh.WriteResults("results.csv");
    EXPECT_EQ(beeper.count, 1);
    EXPECT_EQ(Csv(), before);
    before += lines[written];
  }
}

TEST_F(ResultsExportFaultsTest, AfterAFaultTheFileStaysOpenAndEveryExportBeeps) {
  files.writesLeft = 2;
  resultsExport.WriteResults("results.csv");
  ASSERT_EQ(beeper.count, 1);
  EXPECT_EQ(files.openFiles, 1);
  files.writesLeft.reset();
  const std::string left = Csv();
  files.files["other.csv"] = "untouched";
  resultsExport.WriteResults("other.csv");
  EXPECT_EQ(beeper.count, 2);
  resultsExport.WriteResults("results.csv");
  EXPECT_EQ(beeper.count, 3);
  EXPECT_EQ(files.files["other.csv"], "untouched");
  EXPECT_EQ(Csv(), left);
  EXPECT_EQ(files.openFiles, 1);
}

TEST_F(ResultsExportFaultsTest, TooManyAntennasEndTheFileAfterItsHeader) {
  for (std::int16_t rpn = 200; model.AaCount() < 51; ++rpn) {
    model.FindOrAddAa(rpn, 0, 0);
  }
  EXPECT_THROW(model.FindOrAddAa(199, 0, 0), base::Fault);
  ASSERT_EQ(model.AaCount(), 52);
  Draw();
  beeper.count = 0;
  resultsExport.WriteResults("results.csv");
  EXPECT_EQ(beeper.count, 1);
  std::string header = kCsvFirstLine;
  header += "Units: RFPS\r\nRPN Units: Decimal\r\n\r\n";
  EXPECT_EQ(Csv(), header);
  EXPECT_EQ(files.openFiles, 1);
}

TEST_F(ResultsExportFaultsTest, AGridSmallerThanTheModelEndsTheFileWithABeep) {
  grid.SetSize(3, 3);
  resultsExport.WriteResults("results.csv");
  EXPECT_EQ(beeper.count, 1);
  EXPECT_EQ(Csv().substr(Csv().rfind("\r\n,") + 2), ",AA.01,AA.06,AA.02,AA.100\r\n");
}

}  // namespace
}  // namespace kelvara::capture
