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

/// Counts how deep the grid is inside redraws, and how often it would have been painted.
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

/// What happens when events run in the middle of a redraw. Three antennas, RPN 0 to 2; RPN 0 hears
/// the two others at 5 and 6, RPN 2 hears RPN 1 at 7.
class SyncGridEventsTest : public ::testing::Test {
 protected:
  SyncGridEventsTest() {
    room.Clear();
    room.AddAas(3);
    room.model.AddPhase(0, 1, 5);
    room.model.AddPhase(0, 2, 6);
    room.model.AddPhase(2, 1, 7);
  }

  /// Runs `work` once, at the yield with this number, counted from 1.
  void AtYield(int number, const std::function<void()>& work) {
    room.events.onYield = [this, number, work] {
      if (room.events.yields == number) {
        work();
      }
    };
  }

  void ExpectCleared() {
    EXPECT_EQ(grid.Rows(), 1);
    EXPECT_EQ(grid.Columns(), 1);
    EXPECT_EQ(grid.Text(0, 0), "RPN");
    EXPECT_EQ(room.syncGrid.GetRpsColour(14), sync::Colour{0xFFFFFF});
  }

  PaintCountingGrid grid;
  test::SyncRig room{grid};
};

TEST_F(SyncGridEventsTest, EventsRunBeforeEachDataCellRowByRow) {
  for (int row = 1; row <= 3; ++row) {
    grid.SetSize(4, 4);
    for (int column = 1; column <= 3; ++column) {
      grid.SetText(row, column, "old");
    }
  }
  int checked = 0;
  room.events.onYield = [&] {
    for (int cell = 0; cell < 9; ++cell) {
      const bool isOld = grid.Text(cell / 3 + 1, cell % 3 + 1) == "old";
      EXPECT_EQ(isOld, cell >= room.events.yields - 1) << cell << " at " << room.events.yields;
      ++checked;
    }
  };
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(room.events.yields, 9);
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
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
}

TEST_F(SyncGridEventsTest, AReportParsedInTheMiddleShowsInTheRestOfTheRedraw) {
  // At the fifth of nine cells the first row is drawn and the third is not.
  AtYield(5, [this] {
    room.Process(Report({SyncBlock("100ec5A300"), NeighbourBlock("100ec5A301", {" 15"})}));
    room.Process(Report({SyncBlock("100ec5A302"), NeighbourBlock("100ec5A301", {" 17"})}));
  });
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(grid.Text(1, 2), "5");
  EXPECT_EQ(grid.Text(3, 2), "12");
  EXPECT_EQ(room.beeper.count, 0);

  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(grid.Text(1, 2), "10");
}

TEST_F(SyncGridEventsTest, AnEventBeforeACellCountsForThatCell) {
  AtYield(2, [this] { room.model.AddPhase(0, 1, 7); });
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(grid.Text(1, 2), "6");
}

TEST_F(SyncGridEventsTest, AnAntennaAddedInTheMiddleJoinsAtTheNextRedraw) {
  AtYield(2, [this] {
    room.Process(Report({SyncBlock("100ec5A300"), NeighbourBlock("100ec5A377", {"  9"})}));
  });
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(room.model.AaCount(), 4);
  EXPECT_EQ(grid.Rows(), 4);
  EXPECT_EQ(room.events.yields, 9);

  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(grid.Rows(), 5);
  EXPECT_EQ(grid.Text(1, 4), "9");
}

TEST_F(SyncGridEventsTest, UnitsChosenInTheMiddleShowInTheRestOfTheRedraw) {
  AtYield(3, [this] { room.options.units = PhaseUnits::Metres; });
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(grid.Text(1, 2), "5");
  EXPECT_EQ(grid.Text(1, 3), "130");
  EXPECT_EQ(grid.Text(3, 2), "260");
}

TEST_F(SyncGridEventsTest, AClearInTheMiddleEndsTheRedrawWithOneBeep) {
  for (const int number : {1, 2, 5, 9}) {
    room.AddAas(3);
    room.events.yields = 0;
    room.beeper.count = 0;
    AtYield(number, [this] { room.Clear(); });
    EXPECT_FALSE(room.syncGrid.UpdateSyncGrid());
    EXPECT_EQ(room.events.yields, number);
    EXPECT_EQ(room.beeper.count, 1);
    EXPECT_EQ(room.model.AaCount(), 0);
    ExpectCleared();
    room.Clear();
  }
}

// The model has as many antennas as before, but the grid has no cells for them yet.
TEST_F(SyncGridEventsTest, AClearAndNewReportsInTheMiddleEndTheRedrawWithOneBeep) {
  AtYield(4, [this] {
    room.Clear();
    room.Process(test::ReportOfMany(8, 9, 3));
  });
  EXPECT_FALSE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(room.events.yields, 4);
  EXPECT_EQ(room.beeper.count, 1);
  EXPECT_EQ(room.model.AaCount(), 4);
  ExpectCleared();

  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(grid.Rows(), 5);
  EXPECT_EQ(grid.Text(0, 1), "08[3]");
}

TEST_F(SyncGridEventsTest, ARedrawInTheMiddleOfARedrawLeavesTheWholeGrid) {
  AtYield(4, [this] {
    room.Process(Report({SyncBlock("100ec5A301"), NeighbourBlock("100ec5A377", {"  9"})}));
    EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  });
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(room.events.yields, 9 + 16);
  EXPECT_EQ(grid.Rows(), 5);
  EXPECT_EQ(grid.Text(1, 2), "5");
  EXPECT_EQ(grid.Text(2, 4), "9");
  EXPECT_EQ(grid.Text(3, 2), "7");
  EXPECT_EQ(grid.Text(4, 0), "119[3]");
  EXPECT_EQ(room.beeper.count, 0);
}

TEST_F(SyncGridEventsTest, AClearAndARedrawInTheMiddleOfARedrawLeaveTheNewGridWithOneBeep) {
  AtYield(4, [this] {
    room.Clear();
    room.Process(Report({SyncBlock("100ec5A301"), NeighbourBlock("100ec5A302", {"  9"})}));
    EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  });
  EXPECT_FALSE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(room.events.yields, 4 + 4);
  EXPECT_EQ(grid.Rows(), 3);
  EXPECT_EQ(grid.Text(0, 1), "01[3]");
  EXPECT_EQ(grid.Text(1, 2), "9");
  EXPECT_EQ(grid.Text(2, 1), "");
  EXPECT_EQ(room.beeper.count, 1);
}

TEST_F(SyncGridEventsTest, The52ndAntennaInTheMiddleFaultsAtTheNextRedraw) {
  for (std::int16_t rpn = 3; rpn < 51; ++rpn) {
    room.model.FindOrAddAa(rpn, 3, 90);
  }
  AtYield(2, [this] { room.Process(test::ReportOfMany(0, 99, 1)); });
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(room.beeper.count, 1);
  EXPECT_EQ(grid.Text(3, 2), "7");

  EXPECT_FALSE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(room.beeper.count, 2);
}

TEST_F(SyncGridEventsTest, AnEndingProgramLeavesTheRedrawAtOnce) {
  AtYield(3, [this] {
    room.model.AddPhase(0, 2, 100);
    room.events.ending = true;
  });
  EXPECT_FALSE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(room.events.yields, 3);
  EXPECT_EQ(grid.Text(1, 2), "5");
  EXPECT_EQ(grid.Text(1, 3), "");
  EXPECT_EQ(room.beeper.count, 0);
}

TEST_F(SyncGridEventsTest, ARedrawPaintsOnceAtItsEnd) {
  room.events.onYield = [this] { EXPECT_GT(grid.depth, 0); };
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(grid.depth, 0);
  EXPECT_EQ(grid.paints, 1);
}

TEST_F(SyncGridEventsTest, ARedrawThatIsCutOffPaintsWhatItDrew) {
  AtYield(4, [this] { room.Clear(); });
  EXPECT_FALSE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(grid.depth, 0);
  EXPECT_EQ(grid.paints, 1);

  room.AddAas(51);
  ASSERT_EQ(FaultOf([this] { room.model.FindOrAddAa(99, 3, 90); }), FaultKind::Subscript);
  EXPECT_FALSE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(grid.depth, 0);
  EXPECT_EQ(grid.paints, 2);
}

TEST_F(SyncGridEventsTest, ARedrawInsideARedrawPaintsWithTheOuterOne) {
  AtYield(4, [this] { EXPECT_TRUE(room.syncGrid.UpdateSyncGrid()); });
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(grid.depth, 0);
  EXPECT_EQ(grid.paints, 1);
}

}  // namespace
}  // namespace kelvara::sync
