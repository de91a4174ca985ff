#include <gtest/gtest.h>

#include "support/SyncRig.h"
#include "sync/RfpsParser.h"

namespace kelvara::sync {
namespace {

using test::ExampleReport;
using test::NeighbourBlock;
using test::Report;
using test::ReportOfMany;
using test::SyncBlock;
using Lines = std::vector<std::string>;

/// Reports that the parser has to abandon.
class RfpsParserLimitsTest : public ::testing::Test {
 protected:
  RfpsParserLimitsTest() {
    room.Clear();
    room.options.rpnHex = true;
  }

  /// RPN 0 to 50, by reports that RPN 0 is synchronised to.
  void FillAntennaList() {
    for (int firstRpn = 1; firstRpn <= 50; firstRpn += 5) {
      room.Process(ReportOfMany(0, firstRpn, 5));
    }
    ASSERT_EQ(room.model.AaCount(), 51);
    ASSERT_EQ(room.shownReports, 10);
    room.log.entries.clear();
  }

  /// The place of an antenna in the list.
  int IndexOf(int rpn) {
    int index = 0;
    while (room.model.AaRpn(index) != rpn) {
      ++index;
    }
    return index;
  }

  test::SyncRig room;
};

TEST_F(RfpsParserLimitsTest, ElevenEntriesAbandonTheReportBeforeAnythingIsLogged) {
  room.Process(ReportOfMany(0, 1, 10));
  EXPECT_EQ(room.beeper.count, 1);
  EXPECT_EQ(room.parser.AbandonedCount(), 1);
  EXPECT_EQ(room.log.entries, Lines{});
  EXPECT_EQ(room.model.AaCount(), 0);
  EXPECT_EQ(room.model.ReportCount(), 0);
  EXPECT_EQ(room.shownReports, 0);
}

TEST_F(RfpsParserLimitsTest, TenEntriesAreTakenWhole) {
  room.Process(ReportOfMany(0, 1, 9));
  EXPECT_EQ(room.beeper.count, 0);
  EXPECT_EQ(room.log.entries.size(), 9U);
  EXPECT_EQ(room.shownAas, 10);
}

TEST_F(RfpsParserLimitsTest, AnEleventhEntryOfTheFinalRoundIsTakenToo) {
  std::string text = ReportOfMany(0, 1, 9);
  text.replace(0, 4, "abcd1B4F7 sync ");
  room.Process(text);
  EXPECT_EQ(room.beeper.count, 0);
  EXPECT_EQ(room.model.AaCount(), 11);
  EXPECT_EQ(room.model.AaRpn(0), 0xF7);
  EXPECT_EQ(room.log.entries.front(), "F7[4]->09[3]=5");
  EXPECT_EQ(room.log.entries.back(), "F7[4]->00[3]=0");
}

TEST_F(RfpsParserLimitsTest, AnAbandonedReportDoesNotDisturbTheNext) {
  room.Process(ReportOfMany(0, 1, 10));
  room.Process(ExampleReport());
  EXPECT_EQ(room.model.AaCount(), 3);
  EXPECT_EQ(room.shownReports, 1);
  EXPECT_EQ(room.beeper.count, 1);
  EXPECT_EQ(room.parser.AbandonedCount(), 1);
}

TEST_F(RfpsParserLimitsTest, ALogThatFaultsAbandonsTheReportAndKeepsTheWorkDone) {
  room.log.entriesLeft = 1;
  room.Process(ExampleReport());
  EXPECT_EQ(room.beeper.count, 1);
  EXPECT_EQ(room.parser.AbandonedCount(), 1);
  EXPECT_EQ(room.log.entries, (Lines{"01[3]->06[3]=7"}));
  EXPECT_EQ(room.model.AaCount(), 2);
  EXPECT_EQ(room.model.Cell(0, 1).Sum, 7);
  EXPECT_EQ(room.model.ReportCount(), 0);
  EXPECT_EQ(room.shownReports, 0);
  EXPECT_EQ(room.shownAas, 0);
}

TEST_F(RfpsParserLimitsTest, The52ndAntennaAbandonsItsReportAndKeepsTheWorkDone) {
  FillAntennaList();
  room.Process(
      Report({SyncBlock("100ec5A300"), NeighbourBlock("100ec5A301", {" 40"}),
              NeighbourBlock("100ec5A380", {" 41"}), NeighbourBlock("100ec5A302", {" 42"})}));
  EXPECT_EQ(room.beeper.count, 1);
  EXPECT_EQ(room.parser.AbandonedCount(), 1);
  EXPECT_EQ(room.model.AaCount(), 52);
  EXPECT_EQ(room.log.entries, (Lines{"00[3]->02[3]=42", "00[3]->80[3]=41"}));
  EXPECT_EQ(room.model.Cell(IndexOf(0), IndexOf(2)).Sum, 5 + 42);
  EXPECT_EQ(room.model.Cell(IndexOf(0), IndexOf(1)).Sum, 5);
  EXPECT_EQ(room.model.ReportCount(), 10);
  EXPECT_EQ(room.shownReports, 10);
  EXPECT_EQ(room.shownAas, 51);
}

TEST_F(RfpsParserLimitsTest, AsTheSynchronisedToAntennaThe52ndAddsNothing) {
  FillAntennaList();
  room.Process(Report({SyncBlock("100ec5A380"), NeighbourBlock("100ec5A301", {" 40"})}));
  EXPECT_EQ(room.beeper.count, 1);
  EXPECT_EQ(room.model.AaCount(), 52);
  EXPECT_EQ(room.log.entries, (Lines{"80[3]->01[3]=40"}));
  EXPECT_EQ(room.shownReports, 10);
}

TEST_F(RfpsParserLimitsTest, BehindThe52ndKnownAntennasStillAccumulateAndUnknownOnesFault) {
  FillAntennaList();
  room.Process(ReportOfMany(0, 0x80, 1));
  room.Process(ReportOfMany(0, 1, 2));
  EXPECT_EQ(room.beeper.count, 1);
  EXPECT_EQ(room.model.Cell(IndexOf(0), IndexOf(1)).Count, 2);
  EXPECT_EQ(room.shownReports, 11);
  EXPECT_EQ(room.shownAas, 52);

  room.Process(ReportOfMany(0, 0x80, 1));
  room.Process(ReportOfMany(0, 0x90, 2));
  EXPECT_EQ(room.beeper.count, 3);
  EXPECT_EQ(room.parser.AbandonedCount(), 3);
  EXPECT_EQ(room.model.AaCount(), 52);
  EXPECT_EQ(room.model.ReportCount(), 11);
}

TEST_F(RfpsParserLimitsTest, OnlyAClearRecoversFromThe52nd) {
  FillAntennaList();
  room.Process(ReportOfMany(0, 0x80, 1));
  room.Clear();
  EXPECT_EQ(room.shownReports, 0);
  EXPECT_EQ(room.shownAas, 0);

  room.Process(ReportOfMany(0, 0x80, 1));
  EXPECT_EQ(room.beeper.count, 1);
  EXPECT_EQ(room.shownReports, 1);
  EXPECT_EQ(room.shownAas, 2);
}

}  // namespace
}  // namespace kelvara::sync
