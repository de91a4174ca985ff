#include "sync/RfpsParser.h"

#include <gtest/gtest.h>

#include "support/SyncRig.h"

namespace kelvara::sync {
namespace {

using test::ExampleReport;
using test::NeighbourBlock;
using test::Reading;
using test::Report;
using test::SyncBlock;
using Lines = std::vector<std::string>;

class RfpsParserTest : public ::testing::Test {
 protected:
  RfpsParserTest() {
    rig.Clear();
    rig.options.rpnHex = true;
  }

  void ExpectAa(int index, int rpn, int fps, int fpn) {
    EXPECT_EQ(rig.model.AaRpn(index), rpn);
    EXPECT_EQ(rig.model.AaFps(index), fps);
    EXPECT_EQ(rig.model.AaFpn(index), fpn);
  }

  void ExpectCell(int from, int to, int sum, int count, int max, int min) {
    EXPECT_EQ(rig.model.Cell(from, to).Sum, sum);
    EXPECT_EQ(rig.model.Cell(from, to).Count, count);
    EXPECT_EQ(rig.model.Cell(from, to).Max, max);
    EXPECT_EQ(rig.model.Cell(from, to).Min, min);
  }

  void ExpectNothingHappened() {
    EXPECT_EQ(rig.model.AaCount(), 0);
    EXPECT_EQ(rig.model.ReportCount(), 0);
    EXPECT_EQ(rig.log.entries, Lines{});
    EXPECT_EQ(rig.shownReports, 0);
    EXPECT_EQ(rig.shownAas, 0);
  }

  test::SyncRig rig;
};

TEST_F(RfpsParserTest, TheExampleFillsTheModel) {
  rig.Process(ExampleReport());

  EXPECT_EQ(rig.model.AaCount(), 3);
  ExpectAa(0, 1, 3, 90);
  ExpectAa(1, 6, 3, 90);
  ExpectAa(2, 2, 3, 90);
  ExpectCell(0, 1, 7, 1, 7, 7);
  ExpectCell(0, 2, -11, 1, -11, -11);
  int cellsWithData = 0;
  for (int from = 0; from <= 50; ++from) {
    for (int to = 0; to <= 50; ++to) {
      cellsWithData += rig.model.Cell(from, to).Count;
    }
  }
  EXPECT_EQ(cellsWithData, 2);
  EXPECT_EQ(rig.shownReports, 1);
  EXPECT_EQ(rig.shownAas, 3);
  EXPECT_EQ(rig.beeper.count, 0);
  EXPECT_EQ(rig.parser.AbandonedCount(), 0);
}

TEST_F(RfpsParserTest, TheExampleLogsOneLinePerNeighbourInReverseOrder) {
  rig.Process(ExampleReport());
  EXPECT_EQ(rig.log.entries, (Lines{"01[3]->06[3]=7", "01[3]->02[3]=-11"}));
}

TEST_F(RfpsParserTest, LogLinesFollowTheDisplayOptions) {
  const std::string report =
      Report({SyncBlock("100ec5AA0A"), NeighbourBlock("100ec5ACFF", {"-12"})});
  rig.Process(report);
  rig.options.fpsShown = false;
  rig.Process(report);
  rig.options.rpnHex = false;
  rig.Process(report);
  rig.options.fpsShown = true;
  rig.Process(report);
  EXPECT_EQ(rig.log.entries,
            (Lines{"0A[A]->FF[C]=-12", "0A->FF=-12", "10->255=-12", "10[10]->255[12]=-12"}));
}

TEST_F(RfpsParserTest, DecimalRpnsHaveAtLeastTwoDigits) {
  rig.options.rpnHex = false;
  rig.options.fpsShown = false;
  rig.Process(ExampleReport());
  EXPECT_EQ(rig.log.entries, (Lines{"01->06=7", "01->02=-11"}));
}

TEST_F(RfpsParserTest, DisplayOptionsAreReadForEachLine) {
  rig.log.onEntry = [this] { rig.options.fpsShown = false; };
  rig.Process(ExampleReport());
  EXPECT_EQ(rig.log.entries, (Lines{"01[3]->06[3]=7", "01->02=-11"}));
}

TEST_F(RfpsParserTest, PhasesAreLoggedInRfpsUnitsWhateverTheGridShows) {
  rig.options.units = PhaseUnits::Metres;
  rig.Process(ExampleReport());
  EXPECT_EQ(rig.log.entries.front(), "01[3]->06[3]=7");
}

TEST_F(RfpsParserTest, ReportsAccumulate) {
  rig.Process(ExampleReport());
  rig.Process(Report({SyncBlock("100ec5A301"), NeighbourBlock("100ec5A302", {" -3"}),
                      NeighbourBlock("100ec5A309", {"  1"})}));
  EXPECT_EQ(rig.model.AaCount(), 4);
  ExpectAa(3, 9, 3, 90);
  ExpectCell(0, 2, -14, 2, -3, -11);
  ExpectCell(0, 1, 7, 1, 7, 7);
  ExpectCell(0, 3, 1, 1, 1, 1);
  EXPECT_EQ(rig.shownReports, 2);
  EXPECT_EQ(rig.shownAas, 4);
}

TEST_F(RfpsParserTest, PairsAreOrdered) {
  rig.Process(Report({SyncBlock("100ec5A301"), NeighbourBlock("100ec5A302", {" 10"})}));
  rig.Process(Report({SyncBlock("100ec5A302"), NeighbourBlock("100ec5A301", {" -9"})}));
  ExpectCell(0, 1, 10, 1, 10, 10);
  ExpectCell(1, 0, -9, 1, -9, -9);
}

TEST_F(RfpsParserTest, AReportWithoutEntriesIsNotCounted) {
  rig.Process(Report({NeighbourBlock("100ec5A302", {"  ?"}), NeighbourBlock("100ec5A304", {"   "}),
                      "100ec5A305 silent\r\n"}));
  ExpectNothingHappened();
  rig.Process("");
  rig.Process("rfps\r\n");
  ExpectNothingHappened();
  EXPECT_EQ(rig.beeper.count, 0);
  EXPECT_EQ(rig.parser.AbandonedCount(), 0);
}

TEST_F(RfpsParserTest, AReportWithoutEntriesLeavesTheTotalsAsTheyWere) {
  rig.Process(ExampleReport());
  rig.shownReports = -1;
  rig.Process("rfps\r\n");
  EXPECT_EQ(rig.model.ReportCount(), 1);
  EXPECT_EQ(rig.shownReports, -1);
}

TEST_F(RfpsParserTest, ASyncBlockAloneIsListedAndCounted) {
  rig.Process(Report({SyncBlock("100ec5A301")}));
  EXPECT_EQ(rig.model.AaCount(), 1);
  ExpectAa(0, 1, 3, 90);
  EXPECT_EQ(rig.log.entries, Lines{});
  EXPECT_EQ(rig.model.Cell(0, 0).Count, 0);
  EXPECT_EQ(rig.shownReports, 1);
  EXPECT_EQ(rig.shownAas, 1);
}

TEST_F(RfpsParserTest, ANeighbourIsListedWithTheFpnOfTheSynchronisedToAntenna) {
  rig.Process(Report({SyncBlock("100ec11301"), NeighbourBlock("100ec22402", {"  5"})}));
  ExpectAa(0, 1, 3, 0x11);
  ExpectAa(1, 2, 4, 0x11);
}

TEST_F(RfpsParserTest, WithoutASyncBlockTheFirstKeptNeighbourTakesItsPlace) {
  rig.Process(
      Report({NeighbourBlock("100ec5A304", {"  ?"}), NeighbourBlock("100ec5A302", {"  4"}),
              NeighbourBlock("100ec5A303", {"  5"}), NeighbourBlock("100ec5A305", {"  6"})}));
  EXPECT_EQ(rig.log.entries, (Lines{"02[3]->05[3]=6", "02[3]->03[3]=5"}));
  ExpectAa(0, 2, 3, 90);
  ExpectAa(1, 5, 3, 90);
  ExpectAa(2, 3, 3, 90);
  ExpectCell(0, 1, 6, 1, 6, 6);
  EXPECT_EQ(rig.model.Cell(0, 0).Count, 0);
}

TEST_F(RfpsParserTest, AReplacedSyncBlockIsAnOrdinaryEntryWithPhaseZero) {
  rig.Process(Report({"100ec5A302 resYNCed " + Reading("  9"), SyncBlock("100ec5A301")}));
  EXPECT_EQ(rig.log.entries, (Lines{"01[3]->02[3]=0"}));
  ExpectCell(0, 1, 0, 1, 0, 0);
}

TEST_F(RfpsParserTest, TheWordSyncInTheHeaderMakesABogusAntenna) {
  rig.Process("rfps sync\r\n" + SyncBlock("100ec5A301") + NeighbourBlock("100ec5A302", {"  4"}));
  EXPECT_EQ(rig.log.entries, (Lines{"00[0]->02[3]=4", "00[0]->01[3]=0"}));
  EXPECT_EQ(rig.model.AaCount(), 3);
  ExpectAa(0, 0, 0, 0);
  ExpectAa(1, 2, 3, 0);
  ExpectAa(2, 1, 3, 0);
}

TEST_F(RfpsParserTest, WithoutAMarkerTheWordSyncMakesABogusAntenna) {
  rig.Process("abcd1B407 lost SYNC\r\n");
  EXPECT_EQ(rig.model.AaCount(), 1);
  ExpectAa(0, 7, 4, 0x1B);
  EXPECT_EQ(rig.log.entries, Lines{});
  EXPECT_EQ(rig.shownReports, 1);
}

TEST_F(RfpsParserTest, TwoAntennasWithTheSameRpnAreOne) {
  rig.Process(Report({SyncBlock("100ec5A301"), NeighbourBlock("100ec5A302", {"  4"}),
                      NeighbourBlock("100ec77802", {"  6"})}));
  EXPECT_EQ(rig.model.AaCount(), 2);
  ExpectAa(1, 2, 8, 90);
  ExpectCell(0, 1, 10, 2, 6, 4);
  EXPECT_EQ(rig.log.entries, (Lines{"01[3]->02[8]=6", "01[3]->02[3]=4"}));
}

TEST_F(RfpsParserTest, ANeighbourWithTheRpnOfTheSynchronisedToAntennaIsOnlyLogged) {
  rig.Process(Report({SyncBlock("100ec5A301"), NeighbourBlock("100ec66401", {"  4"})}));
  EXPECT_EQ(rig.log.entries, (Lines{"01[3]->01[4]=4"}));
  EXPECT_EQ(rig.model.AaCount(), 1);
  EXPECT_EQ(rig.model.Cell(0, 0).Count, 0);
  EXPECT_EQ(rig.model.Cell(0, 0).Sum, 0);
}

TEST_F(RfpsParserTest, ALogThatIsNotListeningGetsNoLinesAndNothingElseChanges) {
  rig.log.listening = false;
  rig.Process(ExampleReport());
  EXPECT_EQ(rig.log.entries, Lines{});
  EXPECT_EQ(rig.model.AaCount(), 3);
  ExpectCell(0, 1, 7, 1, 7, 7);
  EXPECT_EQ(rig.shownReports, 1);
}

TEST_F(RfpsParserTest, TheGridIsNotRedrawn) {
  rig.Process(ExampleReport());
  EXPECT_EQ(rig.grid.Rows(), 1);
  EXPECT_EQ(rig.events.yields, 0);
}

}  // namespace
}  // namespace kelvara::sync
