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

/// Reports at the limits of the entry table and of the antenna list.
class RfpsParserLimitsTest : public ::testing::Test {
 protected:
  RfpsParserLimitsTest() {
    rig.Clear();
    rig.options.rpnHex = true;
  }

  /// Adds RPN 0 to 50, by reports of a beltpack that is synchronised to RPN 0.
  void FillAntennaList() {
    for (int firstRpn = 1; firstRpn <= 50; firstRpn += 5) {
      rig.Process(ReportOfMany(0, firstRpn, 5));
    }
    ASSERT_EQ(rig.model.AaCount(), 51);
    ASSERT_EQ(rig.shownReports, 10);
    rig.log.entries.clear();
  }

  /// The index of an antenna in the list.
  int IndexOf(int rpn) {
    int index = 0;
    while (rig.model.AaRpn(index) != rpn) {
      ++index;
    }
    return index;
  }

  test::SyncRig rig;
};

TEST_F(RfpsParserLimitsTest, ElevenEntriesAbandonTheReportBeforeAnythingIsLogged) {
  rig.Process(ReportOfMany(0, 1, 10));
  EXPECT_EQ(rig.beeper.count, 1);
  EXPECT_EQ(rig.parser.AbandonedCount(), 1);
  EXPECT_EQ(rig.log.entries, Lines{});
  EXPECT_EQ(rig.model.AaCount(), 0);
  EXPECT_EQ(rig.model.ReportCount(), 0);
  EXPECT_EQ(rig.shownReports, 0);
}

TEST_F(RfpsParserLimitsTest, TenEntriesAreAllAccepted) {
  rig.Process(ReportOfMany(0, 1, 9));
  EXPECT_EQ(rig.beeper.count, 0);
  EXPECT_EQ(rig.log.entries.size(), 9U);
  EXPECT_EQ(rig.shownAas, 10);
}

TEST_F(RfpsParserLimitsTest, AnEleventhEntryFromBeforeTheFirstMarkerIsAcceptedToo) {
  std::string text = ReportOfMany(0, 1, 9);
  text.replace(0, 4, "abcd1B4F7 sync ");
  rig.Process(text);
  EXPECT_EQ(rig.beeper.count, 0);
  EXPECT_EQ(rig.model.AaCount(), 11);
  EXPECT_EQ(rig.model.AaRpn(0), 0xF7);
  EXPECT_EQ(rig.log.entries.front(), "F7[4]->09[3]=5");
  EXPECT_EQ(rig.log.entries.back(), "F7[4]->00[3]=0");
}

TEST_F(RfpsParserLimitsTest, AnAbandonedReportDoesNotAffectTheNext) {
  rig.Process(ReportOfMany(0, 1, 10));
  rig.Process(ExampleReport());
  EXPECT_EQ(rig.model.AaCount(), 3);
  EXPECT_EQ(rig.shownReports, 1);
  EXPECT_EQ(rig.beeper.count, 1);
  EXPECT_EQ(rig.parser.AbandonedCount(), 1);
}

TEST_F(RfpsParserLimitsTest, AFaultOfTheLogAbandonsTheReportAndKeepsTheWorkDone) {
  rig.log.entriesLeft = 1;
  rig.Process(ExampleReport());
  EXPECT_EQ(rig.beeper.count, 1);
  EXPECT_EQ(rig.parser.AbandonedCount(), 1);
  EXPECT_EQ(rig.log.entries, (Lines{"01[3]->06[3]=7"}));
  EXPECT_EQ(rig.model.AaCount(), 2);
  EXPECT_EQ(rig.model.Cell(0, 1).Sum, 7);
  EXPECT_EQ(rig.model.ReportCount(), 0);
  EXPECT_EQ(rig.shownReports, 0);
  EXPECT_EQ(rig.shownAas, 0);
}

TEST_F(RfpsParserLimitsTest, The52ndAntennaAbandonsItsReportAndKeepsTheWorkDone) {
  FillAntennaList();
  rig.Process(
      Report({SyncBlock("100ec5A300"), NeighbourBlock("100ec5A301", {" 40"}),
              NeighbourBlock("100ec5A380", {" 41"}), NeighbourBlock("100ec5A302", {" 42"})}));
  EXPECT_EQ(rig.beeper.count, 1);
  EXPECT_EQ(rig.parser.AbandonedCount(), 1);
  EXPECT_EQ(rig.model.AaCount(), 52);
  EXPECT_EQ(rig.log.entries, (Lines{"00[3]->02[3]=42", "00[3]->80[3]=41"}));
  EXPECT_EQ(rig.model.Cell(IndexOf(0), IndexOf(2)).Sum, 5 + 42);
  EXPECT_EQ(rig.model.Cell(IndexOf(0), IndexOf(1)).Sum, 5);
  EXPECT_EQ(rig.model.ReportCount(), 10);
  EXPECT_EQ(rig.shownReports, 10);
  EXPECT_EQ(rig.shownAas, 51);
}

TEST_F(RfpsParserLimitsTest, A52ndAntennaThatIsSynchronisedToAddsNothing) {
  FillAntennaList();
  rig.Process(Report({SyncBlock("100ec5A380"), NeighbourBlock("100ec5A301", {" 40"})}));
  EXPECT_EQ(rig.beeper.count, 1);
  EXPECT_EQ(rig.model.AaCount(), 52);
  EXPECT_EQ(rig.log.entries, (Lines{"80[3]->01[3]=40"}));
  EXPECT_EQ(rig.shownReports, 10);
}

TEST_F(RfpsParserLimitsTest, AfterThe52ndKnownAntennasStillAccumulateAndUnknownOnesFault) {
  FillAntennaList();
  rig.Process(ReportOfMany(0, 0x80, 1));
  rig.Process(ReportOfMany(0, 1, 2));
  EXPECT_EQ(rig.beeper.count, 1);
  EXPECT_EQ(rig.model.Cell(IndexOf(0), IndexOf(1)).Count, 2);
  EXPECT_EQ(rig.shownReports, 11);
  EXPECT_EQ(rig.shownAas, 52);

  rig.Process(ReportOfMany(0, 0x80, 1));
  rig.Process(ReportOfMany(0, 0x90, 2));
  EXPECT_EQ(rig.beeper.count, 3);
  EXPECT_EQ(rig.parser.AbandonedCount(), 3);
  EXPECT_EQ(rig.model.AaCount(), 52);
  EXPECT_EQ(rig.model.ReportCount(), 11);
}

TEST_F(RfpsParserLimitsTest, OnlyAClearRecoversFromThe52nd) {
  FillAntennaList();
  rig.Process(ReportOfMany(0, 0x80, 1));
  rig.Clear();
  EXPECT_EQ(rig.shownReports, 0);
  EXPECT_EQ(rig.shownAas, 0);

  rig.Process(ReportOfMany(0, 0x80, 1));
  EXPECT_EQ(rig.beeper.count, 1);
  EXPECT_EQ(rig.shownReports, 1);
  EXPECT_EQ(rig.shownAas, 2);
}

}  // namespace
}  // namespace kelvara::sync
