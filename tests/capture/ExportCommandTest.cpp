#include "capture/ExportCommand.h"

#include <gtest/gtest.h>

#include "capture/ExportRig.h"
#include "support/DesktopDoubles.h"

namespace kelvara::capture {
namespace {

class ExportCommandTest : public ::testing::Test, public test::ExportRig {
 protected:
  ExportCommand command{resultsExport, desktop, [this] { Draw(); }};
};

TEST_F(ExportCommandTest, AsksForTheFileInTheFolderOfTheLastCapture) {
  store.SetValue("LastFile", "C:\\logs\\log.txt");
  command.ExportResults();
  ASSERT_EQ(chooser.requests.size(), 1U);
  EXPECT_EQ(chooser.requests[0].kind, platform::FileChooserKind::SaveConfirmed);
  EXPECT_EQ(chooser.requests[0].title, "Select a file to write to");
  EXPECT_EQ(chooser.requests[0].filter, "CSV File (*.csv)|*.csv|");
  EXPECT_EQ(chooser.requests[0].initialFolder, "C:\\logs");
  EXPECT_EQ(chooser.requests[0].initialName, "");
}

TEST_F(ExportCommandTest, LastCaptureWithoutAFolderGivesAnEmptyFolder) {
  for (const char* const name : {"", "log.txt"}) {
    store.SetValue("LastFile", name);
    command.ExportResults();
    EXPECT_EQ(chooser.requests.back().initialFolder, "");
  }
  EXPECT_EQ(chooser.requests.size(), 2U);
}

TEST_F(ExportCommandTest, CancelDoesNothing) {
  command.ExportResults();
  EXPECT_TRUE(files.files.empty());
  EXPECT_EQ(beeper.count, 0);
}

TEST_F(ExportCommandTest, WritesTheChosenFileAndRemembersNoName) {
  store.SetValue("LastFile", "C:\\logs\\log.txt");
  AddAas({1, 6});
  Draw();
  chooser.answer = "results.csv";
  command.ExportResults();
  EXPECT_EQ(Csv(), std::string(test::kCsvFirstLine) +
                       "Units: RFPS\r\nRPN Units: Decimal\r\n\r\n,AA.01,AA.06\r\nAA.01,,\r\n"
                       "AA.06,,\r\n");
  EXPECT_EQ(store.values.size(), 1U);
  EXPECT_EQ(store.Value("LastFile"), "C:\\logs\\log.txt");
}

TEST_F(ExportCommandTest, WritesTheResultsAsTheGridShowsThem) {
  AddAas({1, 6});
  model.AddPhase(0, 1, 10);
  Draw();
  options.units = sync::PhaseUnits::Metres;
  model.AddPhase(0, 1, 20);
  chooser.answer = "results.csv";
  command.ExportResults();
  EXPECT_NE(Csv().find("\r\nAA.01,,10\r\n"), std::string::npos) << Csv();
}

TEST_F(ExportCommandTest, DrawsTheGridFirstIfItLacksAntennas) {
  AddAas({1});
  Draw();
  AddAas({6});
  model.AddPhase(0, 1, 10);
  chooser.answer = "results.csv";
  command.ExportResults();
  EXPECT_EQ(beeper.count, 0);
  EXPECT_NE(Csv().find("\r\nAA.01,,10\r\n"), std::string::npos) << Csv();
}

TEST_F(ExportCommandTest, FileThatCannotBeWrittenBeepsOnce) {
  files.unopenable["results.csv"] = true;
  chooser.answer = "results.csv";
  command.ExportResults();
  EXPECT_EQ(beeper.count, 1);
}

}  // namespace
}  // namespace kelvara::capture
