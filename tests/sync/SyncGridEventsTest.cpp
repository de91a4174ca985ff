#include <gtest/gtest.h>

#include "support/Faults.h"
#include "support/SyncRig.h"
#include "sync/SyncGrid.h"

namespace kelvara::sync {
namespace {

using base::FaultKind;
using test::FaultOf;
using test::NeighbourBlock;
using test::Report;
using test::SyncBlock;

/// Counts how deeply redraws are nested, and how often the grid would have been painted.
class PaintCountingGrid : public sync::GridCells {
 public:
  void BeginRedraw() override { ++depth; }
  void EndRedraw() override {
    --depth;
    paints += depth == 0 ? 1 : 0;
  }

  int depth = 0;
  int paints = 0;
};

/// Lets events run in the middle of a redraw. There are three antennas, RPN 0 to 2: RPN 0 hears the
/// two others at 5 and 6, and RPN 2 hears RPN 1 at 7.
class SyncGridEventsTest : public ::testing::Test {
 protected:
  SyncGridEventsTest() {
    rig.Clear();
    rig.AddAas(3);
    rig.model.AddPhase(0, 1, 5);
    rig.model.AddPhase(0, 2, 6);
    rig.model.AddPhase(2, 1, 7);
  }

  /// Runs `work` once, at the yield with this number, counted from 1.
  void AtYield(int number, const std::function<void()>& work) {
    rig.events.onYield = [this, number, work] {
      if (rig.events.yields == number) {
        work();
      }
    };
  }

  void ExpectCleared() {
    EXPECT_EQ(grid.Rows(), 1);
    EXPECT_EQ(grid.Columns(), 1);
    EXPECT_EQ(grid.Text(0, 0), "RPN");
    EXPECT_EQ(rig.syncGrid.GetRpsColour(14), sync::Colour{0xFFFFFF});
  }

  PaintCountingGrid grid;
  test::SyncRig rig{grid};
};

TEST_F(SyncGridEventsTest, EventsRunBeforeEachDataCellRowByRow) {
  for (int row = 1; row <= 3; ++row) {
    grid.SetSize(4, 4);
    for (int column = 1; column <= 3; ++column) {
      grid.SetText(row, column, "old");
    }
  }
  int checked = 0;
  rig.events.onYield = [&] {
    for (int cell = 0; cell < 9; ++cell) {
      const bool isOld = grid.Text(cell / 3 + 1, cell % 3 + 1) == "old";
      EXPECT_EQ(isOld, cell >= rig.events.yields - 1) << cell << " at " << rig.events.yields;
      ++checked;
    }
  };
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(rig.events.yields, 9);
  EXPECT_EQ(checked, 81);
  EXPECT_EQ(grid.Text(3, 3), "");
}

TEST_F(SyncGridEventsTest, HeadersAndColoursAreDrawnBeforeTheFirstEventRuns) {
  AtYield(1, [this] {
    EXPECT_EQ(grid.Text(0, 3), "02[3]");
    EXPECT_EQ(grid.Text(3, 0), "02[3]");
    EXPECT_EQ(grid.At(3, 3).background, sync::Colour{0xC0C0C0});
    EXPECT_EQ(grid.At(3, 2).background, sync::Colour{0xFFFFFF});
    EXPECT_EQ(grid.Text(1, 2), "");
  });
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
}

TEST_F(SyncGridEventsTest, AReportParsedInTheMiddleShowsInTheRestOfTheRedraw) {
  // At the fifth of nine cells the first row is drawn and the third is not.
  AtYield(5, [this] {
    rig.Process(Report({SyncBlock("100ec5A300"), NeighbourBlock("100ec5A301", {" 15"})}));
    rig.Process(Report({SyncBlock("100ec5A302"), NeighbourBlock("100ec5A301", {" 17"})}));
  });
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(grid.Text(1, 2), "5");
  EXPECT_EQ(grid.Text(3, 2), "12");
  EXPECT_EQ(rig.beeper.count, 0);

  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(grid.Text(1, 2), "10");
}

TEST_F(SyncGridEventsTest, AnEventBeforeACellAffectsThatCell) {
  AtYield(2, [this] { rig.model.AddPhase(0, 1, 7); });
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(grid.Text(1, 2), "6");
}

TEST_F(SyncGridEventsTest, AnAntennaAddedInTheMiddleAppearsAtTheNextRedraw) {
  AtYield(2, [this] {
    rig.Process(Report({SyncBlock("100ec5A300"), NeighbourBlock("100ec5A377", {"  9"})}));
  });
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(rig.model.AaCount(), 4);
  EXPECT_EQ(grid.Rows(), 4);
  EXPECT_EQ(rig.events.yields, 9);

  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(grid.Rows(), 5);
  EXPECT_EQ(grid.Text(1, 4), "9");
}

TEST_F(SyncGridEventsTest, UnitsChosenInTheMiddleShowInTheRestOfTheRedraw) {
  AtYield(3, [this] { rig.options.units = PhaseUnits::Metres; });
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(grid.Text(1, 2), "5");
  EXPECT_EQ(grid.Text(1, 3), "130");
  EXPECT_EQ(grid.Text(3, 2), "260");
}

TEST_F(SyncGridEventsTest, AClearInTheMiddleEndsTheRedrawWithOneBeep) {
  for (const int number : {1, 2, 5, 9}) {
    rig.AddAas(3);
    rig.events.yields = 0;
    rig.beeper.count = 0;
    AtYield(number, [this] { rig.Clear(); });
    EXPECT_FALSE(rig.syncGrid.UpdateSyncGrid());
    EXPECT_EQ(rig.events.yields, number);
    EXPECT_EQ(rig.beeper.count, 1);
    EXPECT_EQ(rig.model.AaCount(), 0);
    ExpectCleared();
    rig.Clear();
  }
}

// The model has antennas again, but the grid has no cells for them yet.
TEST_F(SyncGridEventsTest, AClearAndNewReportsInTheMiddleEndTheRedrawWithOneBeep) {
  AtYield(4, [this] {
    rig.Clear();
    rig.Process(test::ReportOfMany(8, 9, 3));
  });
  EXPECT_FALSE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(rig.events.yields, 4);
  EXPECT_EQ(rig.beeper.count, 1);
  EXPECT_EQ(rig.model.AaCount(), 4);
  ExpectCleared();

  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(grid.Rows(), 5);
  EXPECT_EQ(grid.Text(0, 1), "08[3]");
}

TEST_F(SyncGridEventsTest, ARedrawInTheMiddleOfARedrawLeavesTheWholeGrid) {
  AtYield(4, [this] {
    rig.Process(Report({SyncBlock("100ec5A301"), NeighbourBlock("100ec5A377", {"  9"})}));
    EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  });
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(rig.events.yields, 9 + 16);
  EXPECT_EQ(grid.Rows(), 5);
  EXPECT_EQ(grid.Text(1, 2), "5");
  EXPECT_EQ(grid.Text(2, 4), "9");
  EXPECT_EQ(grid.Text(3, 2), "7");
  EXPECT_EQ(grid.Text(4, 0), "119[3]");
  EXPECT_EQ(rig.beeper.count, 0);
}

TEST_F(SyncGridEventsTest, AClearAndARedrawInTheMiddleOfARedrawLeaveTheNewGridWithOneBeep) {
  AtYield(4, [this] {
    rig.Clear();
    rig.Process(Report({SyncBlock("100ec5A301"), NeighbourBlock("100ec5A302", {"  9"})}));
    EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  });
  EXPECT_FALSE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(rig.events.yields, 4 + 4);
  EXPECT_EQ(grid.Rows(), 3);
  EXPECT_EQ(grid.Text(0, 1), "01[3]");
  EXPECT_EQ(grid.Text(1, 2), "9");
  EXPECT_EQ(grid.Text(2, 1), "");
  EXPECT_EQ(rig.beeper.count, 1);
}

TEST_F(SyncGridEventsTest, The52ndAntennaInTheMiddleFaultsAtTheNextRedraw) {
  for (std::int16_t rpn = 3; rpn < 51; ++rpn) {
    rig.model.FindOrAddAa(rpn, 3, 90);
  }
  AtYield(2, [this] { rig.Process(test::ReportOfMany(0, 99, 1)); });
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(rig.beeper.count, 1);
  EXPECT_EQ(grid.Text(3, 2), "7");

  EXPECT_FALSE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(rig.beeper.count, 2);
}

TEST_F(SyncGridEventsTest, AnEndingProgramAbandonsTheRedrawAtOnce) {
  AtYield(3, [this] {
    rig.model.AddPhase(0, 2, 100);
    rig.events.ending = true;
  });
  EXPECT_FALSE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(rig.events.yields, 3);
  EXPECT_EQ(grid.Text(1, 2), "5");
  EXPECT_EQ(grid.Text(1, 3), "");
  EXPECT_EQ(rig.beeper.count, 0);
}

TEST_F(SyncGridEventsTest, ARedrawPaintsOnceAtItsEnd) {
  rig.events.onYield = [this] { EXPECT_GT(grid.depth, 0); };
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(grid.depth, 0);
  EXPECT_EQ(grid.paints, 1);
}

TEST_F(SyncGridEventsTest, AnAbandonedRedrawPaintsWhatItDrew) {
  AtYield(4, [this] { rig.Clear(); });
  EXPECT_FALSE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(grid.depth, 0);
  EXPECT_EQ(grid.paints, 1);

  rig.AddAas(51);
  ASSERT_EQ(FaultOf([this] { rig.model.FindOrAddAa(99, 3, 90); }), FaultKind::Subscript);
  EXPECT_FALSE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(grid.depth, 0);
  EXPECT_EQ(grid.paints, 2);
}

TEST_F(SyncGridEventsTest, ARedrawInsideARedrawPaintsWithTheOuterOne) {
  AtYield(4, [this] { EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid()); });
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(grid.depth, 0);
  EXPECT_EQ(grid.paints, 1);
}

}  // namespace
}  // namespace kelvara::sync
