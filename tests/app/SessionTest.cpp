#include "app/Session.h"

#include <gtest/gtest.h>

#include <limits>

#include "app/SessionRig.h"
#include "base/Fault.h"
#include "support/RecordedReports.h"

namespace kelvara::app {
namespace {

using test::CrLf;
using test::OneNeighbourReport;
using test::ReportOfMany;

class SessionTest : public ::testing::Test, public test::SessionRig {
 protected:
  void Process(const std::string& report) { session.Parser().ProcessRfpsReport(report); }

  void ExpectClearedModel() {
    const sync::SyncModel& model = session.Model();
    EXPECT_EQ(model.AaCount(), 0);
    EXPECT_EQ(model.ReportCount(), 0);
    for (int from = 0; from < 51; ++from) {
      EXPECT_EQ(model.AaRpn(from), 0);
      EXPECT_EQ(model.AaFps(from), 0);
      EXPECT_EQ(model.AaFpn(from), 0);
      for (int to = 0; to < 51; ++to) {
        const sync::PhaseCell& cell = model.Cell(from, to);
        EXPECT_EQ(cell.Sum, 0);
        EXPECT_EQ(cell.Count, 0);
        EXPECT_EQ(cell.Max, -32767);
        EXPECT_EQ(cell.Min, 32767);
      }
    }
  }
};

TEST_F(SessionTest, ClearEmptiesTheModel) {
  Process(OneNeighbourReport(1, 6, 7));
  ASSERT_EQ(session.Model().AaCount(), 2);
  session.ClearSyncResults();
  ExpectClearedModel();
}

TEST_F(SessionTest, ClearReducesTheGridToItsCorner) {
  Process(OneNeighbourReport(1, 6, 7));
  session.Grid().UpdateSyncGrid();
  ASSERT_EQ(grid.Rows(), 3);
  grid.SetText(0, 0, "other");
  grid.SetColumnWidth(0, 1);
  session.ClearSyncResults();
  EXPECT_EQ(grid.Rows(), 1);
  EXPECT_EQ(grid.Columns(), 1);
  EXPECT_EQ(grid.ColumnWidth(0), 550);
  EXPECT_TRUE(grid.At(0, 0).centred);
  EXPECT_EQ(grid.Text(0, 0), "RPN");
}

TEST_F(SessionTest, ClearReportsTotalsOfNoReportsAndNoAas) {
  Process(OneNeighbourReport(1, 6, 7));
  const int changesBefore = totalsChanges;
  session.ClearSyncResults();
  EXPECT_EQ(totalsChanges, changesBefore + 1);
  EXPECT_EQ(session.Model().ReportCount(), 0);
  EXPECT_EQ(session.Model().AaCount(), 0);
}

TEST_F(SessionTest, ClearEmptiesTheLogBox) {
  Process(OneNeighbourReport(1, 6, 7));
  ASSERT_NE(logBox.text, "");
  session.ClearSyncResults();
  EXPECT_EQ(logBox.text, "");
}

TEST_F(SessionTest, ClearResetsTheColours) {
  constexpr sync::Colour kWhite{0xFFFFFF};
  EXPECT_EQ(session.Grid().GetRpsColour(3), kWhite);
  EXPECT_NE(session.Grid().GetRpsColour(4), kWhite);
  session.ClearSyncResults();
  EXPECT_EQ(session.Grid().GetRpsColour(4), kWhite);
}

TEST_F(SessionTest, ClearLeavesACaptureRunning) {
  ASSERT_TRUE(session.Capture().StartLoggingToFile("log.txt"));
  session.ClearSyncResults();
  EXPECT_TRUE(session.Capture().IsLoggingActive());
  EXPECT_EQ(files.openFiles, 1);
  EXPECT_EQ(session.Capture().StatusText(), "Logging...");
  Process(OneNeighbourReport(1, 6, 7));
  EXPECT_NE(files.files["log.txt"].find("01->06=7\r\n"), std::string::npos);
}

TEST_F(SessionTest, ClearRecoversFromTooManyAntennas) {
  const std::string text = test::FiftyTwoAntennas();
  const std::size_t reportSize = text.size();
  std::size_t start = 0;
  for (std::size_t place = 0, lines = 0; place < reportSize; ++place) {
    if (text[place] == '\n' && ++lines % 29 == 0) {
      Process(text.substr(start, place + 1 - start));
      start = place + 1;
    }
  }
  EXPECT_EQ(session.Model().AaCount(), 52);
  EXPECT_EQ(beeper.count, 1);
  EXPECT_THROW(session.Report().GenerateReport("report.html", "", "", ""), base::Fault);
  EXPECT_FALSE(session.Grid().UpdateSyncGrid());
  session.ClearSyncResults();
  ExpectClearedModel();
  EXPECT_TRUE(session.Grid().UpdateSyncGrid());
  EXPECT_TRUE(session.Report().GenerateReport("report.html", "", "", ""));
}

TEST_F(SessionTest, AReportGoesToTheLogTheTotalsTheGridAndTheFiles) {
  ASSERT_TRUE(session.Capture().StartLoggingToFile("log.txt"));
  Process(OneNeighbourReport(1, 10, 7));
  EXPECT_EQ(logBox.text,
            CrLf("second1728043200, Log To File Started") + CrLf("second1728043200, 01->10=7"));
  EXPECT_EQ(files.files["log.txt"], logBox.text);
  EXPECT_TRUE(session.Grid().UpdateSyncGrid());
  EXPECT_EQ(grid.Text(1, 2), "7");
  session.Export().WriteResults("results.csv");
  EXPECT_NE(files.files["results.csv"].find(CrLf("AA.01,,7")), std::string::npos);
  ASSERT_TRUE(session.Report().GenerateReport("report.html", "", "", ""));
  EXPECT_NE(files.files["report.html"].find(CrLf("<td width=40>7</td>")), std::string::npos);
  EXPECT_EQ(beeper.count, 0);
}

TEST_F(SessionTest, DisplayOptionsAreReadWhenTheyAreUsed) {
  Process(OneNeighbourReport(1, 10, 7));
  session.Options().rpnHex = true;
  session.Options().fpsShown = true;
  session.Options().units = sync::PhaseUnits::Metres;
  Process(OneNeighbourReport(1, 10, 7));
  EXPECT_EQ(logBox.text,
            CrLf("second1728043200, 01->10=7") + CrLf("second1728043200, 01[3]->0A[3]=7"));
  session.Grid().UpdateSyncGrid();
  EXPECT_EQ(grid.Text(0, 2), "0A[3]");
  EXPECT_EQ(grid.Text(1, 2), "260");
}

TEST_F(SessionTest, AfterAFailedCaptureStartAReportWithNeighboursIsAbandoned) {
  files.unopenable["locked.txt"] = true;
  ASSERT_FALSE(session.Capture().StartLoggingToFile("locked.txt"));
  Process(OneNeighbourReport(1, 6, 7));
  EXPECT_EQ(beeper.count, 1);
  EXPECT_EQ(session.Parser().AbandonedCount(), 1);
  EXPECT_EQ(session.Model().ReportCount(), 0);
  EXPECT_EQ(session.Model().AaCount(), 0);
  EXPECT_EQ(logBox.text, "");
  EXPECT_EQ(boxes.boxes.size(), 1U);
}

TEST_F(SessionTest, AfterAFailedCaptureStartAReportWithoutALogLineCounts) {
  files.unopenable["locked.txt"] = true;
  ASSERT_FALSE(session.Capture().StartLoggingToFile("locked.txt"));
  Process(test::RecordedReport({test::SyncLine(1)}));
  EXPECT_EQ(beeper.count, 0);
  EXPECT_EQ(session.Model().ReportCount(), 1);
}

TEST_F(SessionTest, AnEntryThatCannotBeWrittenAbandonsTheReportAtThatPoint) {
  files.writesLeft = 2;
  ASSERT_TRUE(session.Capture().StartLoggingToFile("log.txt"));
  Process(test::RecordedReport(
      {test::SyncLine(1), test::NeighbourLine(2, -11), test::NeighbourLine(6, 7)}));
  EXPECT_EQ(beeper.count, 1);
  EXPECT_EQ(session.Model().AaCount(), 2);
  EXPECT_EQ(session.Model().AaRpn(1), 6);
  EXPECT_EQ(session.Model().Cell(0, 1).Count, 1);
  EXPECT_EQ(session.Model().ReportCount(), 0);
  EXPECT_EQ(files.files["log.txt"], logBox.text);
}

TEST(RestoreClearedResults, BringsBackTheLastClearOfAtLeastOneReport) {
  test::SessionRig rig;
  rig.session.Parser().ProcessRfpsReport(OneNeighbourReport(1, 2, -11));
  rig.session.ClearSyncResults();
  rig.session.ClearSyncResults();
  ASSERT_NE(rig.session.ClearedResults(), nullptr);
  EXPECT_EQ(rig.session.ClearedResults()->ReportCount(), 1);
  rig.session.Parser().ProcessRfpsReport(OneNeighbourReport(3, 1, 5));
  const int changes = rig.totalsChanges;
  EXPECT_EQ(rig.session.RestoreClearedResults(), "");
  EXPECT_EQ(rig.totalsChanges, changes + 1);
  const sync::SyncModel& model = rig.session.Model();
  EXPECT_EQ(model.ReportCount(), 2);
  EXPECT_EQ(model.AaRpn(0), 1);
  EXPECT_EQ(model.AaRpn(2), 3);
  EXPECT_EQ(model.Cell(2, 0).Sum, 5);
  EXPECT_EQ(rig.session.ClearedResults(), nullptr);
  EXPECT_EQ(rig.session.RestoreClearedResults(), "No results have been cleared");
  EXPECT_EQ(model.ReportCount(), 2);
}

TEST(RestoreClearedResults, SaysWhyItCannotAndKeepsWhatWasCleared) {
  test::SessionRig rig;
  rig.session.Parser().ProcessRfpsReport(ReportOfMany(0, 1, 9));
  rig.session.ClearSyncResults();
  for (int first = 100; first < 145; first += 9) {
    rig.session.Parser().ProcessRfpsReport(ReportOfMany(99, first, 9));
  }
  EXPECT_EQ(rig.session.RestoreClearedResults(), "Together there would be more than 51 antennas");
  EXPECT_EQ(rig.session.Model().ReportCount(), 5);
  rig.session.Model().Clear();
  rig.session.Model().SetReportCount(std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(rig.session.RestoreClearedResults(),
            "Together the readings would be too many to be counted");
  rig.session.Model().Clear();
  EXPECT_EQ(rig.session.RestoreClearedResults(), "");
  EXPECT_EQ(rig.session.Model().AaCount(), 10);
}

}  // namespace
}  // namespace kelvara::app
