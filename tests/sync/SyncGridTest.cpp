#include "sync/SyncGrid.h"

#include <gtest/gtest.h>

#include "support/Faults.h"
#include "support/SyncRig.h"

namespace kelvara::sync {
namespace {

using base::FaultKind;
using sync::Colour;
using test::FaultOf;

class SyncGridTest : public ::testing::Test {
 protected:
  SyncGridTest() { rig.Clear(); }

  void AddPhases(std::int16_t from, std::int16_t to, std::initializer_list<std::int16_t> phases) {
    for (const std::int16_t phase : phases) {
      rig.model.AddPhase(from, to, phase);
    }
  }

  std::string Text(int row, int column) { return rig.grid.Text(row, column); }

  test::SyncRig rig;
};

TEST_F(SyncGridTest, AfterAClearIsTheSingleCellRpn) {
  rig.AddAas(3);
  ASSERT_TRUE(rig.syncGrid.UpdateSyncGrid());
  rig.Clear();
  EXPECT_EQ(rig.grid.Rows(), 1);
  EXPECT_EQ(rig.grid.Columns(), 1);
  EXPECT_EQ(Text(0, 0), "RPN");
  EXPECT_TRUE(rig.grid.At(0, 0).centred);
  EXPECT_EQ(rig.grid.ColumnWidth(0), 550);
  EXPECT_EQ(rig.shownReports, 0);
  EXPECT_EQ(rig.shownAas, 0);
}

TEST_F(SyncGridTest, IsTheSingleCellRpnForAnEmptyModelToo) {
  rig.grid.SetText(0, 0, "overwritten");
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(rig.grid.Rows(), 1);
  EXPECT_EQ(rig.grid.Columns(), 1);
  EXPECT_EQ(Text(0, 0), "RPN");
  EXPECT_EQ(rig.grid.ColumnWidth(0), 550);
}

TEST_F(SyncGridTest, OneAntennaHasAGreyEmptyCellAndUsesNoColour) {
  rig.AddAas(1);
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(rig.grid.Rows(), 2);
  EXPECT_EQ(rig.grid.Columns(), 2);
  EXPECT_EQ(Text(0, 1), "00[3]");
  EXPECT_EQ(Text(1, 0), "00[3]");
  EXPECT_EQ(Text(1, 1), "");
  EXPECT_EQ(rig.grid.At(1, 1).background, Colour{0xC0C0C0});
  EXPECT_EQ(rig.syncGrid.GetRpsColour(9), Colour{0xFFFFFF});
}

TEST_F(SyncGridTest, EveryCellIsCentredAndEveryColumn550TwipsWide) {
  rig.AddAas(4);
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(rig.grid.Rows(), 5);
  EXPECT_EQ(rig.grid.Columns(), 5);
  for (int row = 0; row <= 4; ++row) {
    EXPECT_EQ(rig.grid.ColumnWidth(row), 550) << row;
    for (int column = 0; column <= 4; ++column) {
      EXPECT_TRUE(rig.grid.At(row, column).centred) << row << ", " << column;
    }
  }
}

TEST_F(SyncGridTest, HeadersShowRpnAndFpsInTheChosenForm) {
  rig.model.FindOrAddAa(1, 3, 90);
  rig.model.FindOrAddAa(31, 12, 90);
  rig.model.FindOrAddAa(255, 0, 90);
  const auto expectHeaders = [this](std::initializer_list<std::string> headers) {
    EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
    int index = 1;
    for (const std::string& header : headers) {
      EXPECT_EQ(Text(0, index), header);
      EXPECT_EQ(Text(index, 0), header);
      ++index;
    }
  };
  expectHeaders({"01[3]", "31[12]", "255[0]"});
  rig.options.fpsShown = false;
  expectHeaders({"01", "31", "255"});
  rig.options.rpnHex = true;
  expectHeaders({"01", "1F", "FF"});
  rig.options.fpsShown = true;
  expectHeaders({"01[3]", "1F[C]", "FF[0]"});
}

TEST_F(SyncGridTest, RowIsTheSynchronisedToAntennaAndColumnTheNeighbour) {
  rig.AddAas(2);
  AddPhases(0, 1, {-11});
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(Text(1, 2), "-11");
  EXPECT_EQ(Text(2, 1), "");
  EXPECT_EQ(Text(1, 1), "");
  EXPECT_EQ(Text(2, 2), "");
}

TEST_F(SyncGridTest, MeansRoundHalfToEven) {
  rig.AddAas(5);
  AddPhases(0, 1, {3, 4});
  AddPhases(0, 2, {2, 3});
  AddPhases(0, 3, {-3, -4});
  AddPhases(0, 4, {-2, -3});
  AddPhases(1, 0, {1, 1, 2});
  AddPhases(1, 2, {0});
  AddPhases(1, 3, {-1, 0, 0});
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(Text(1, 2), "4");
  EXPECT_EQ(Text(1, 3), "2");
  EXPECT_EQ(Text(1, 4), "-4");
  EXPECT_EQ(Text(1, 5), "-2");
  EXPECT_EQ(Text(2, 1), "1");
  EXPECT_EQ(Text(2, 3), "0");
  EXPECT_EQ(Text(2, 4), "0");
}

TEST_F(SyncGridTest, ShowsTheChosenUnits) {
  rig.AddAas(4);
  AddPhases(0, 1, {9});
  AddPhases(0, 2, {7});
  AddPhases(0, 3, {-20});
  const auto expectRow = [this](PhaseUnits units, std::initializer_list<std::string> texts) {
    rig.options.units = units;
    EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
    int column = 2;
    for (const std::string& text : texts) {
      EXPECT_EQ(Text(1, column), text);
      ++column;
    }
  };
  expectRow(PhaseUnits::Rfps, {"9", "7", "-20"});
  expectRow(PhaseUnits::AaSync, {"2", "2", "-4"});
  expectRow(PhaseUnits::Metres, {"260", "260", "-520"});
}

// The plain quotients, 2.5 / 4.5 and 6.67 / 4.5, would both give 1.
TEST_F(SyncGridTest, TheMeanIsRoundedBeforeItsUnitsAreConverted) {
  rig.AddAas(3);
  AddPhases(0, 1, {2, 3});
  AddPhases(0, 2, {6, 7, 7});
  rig.options.units = PhaseUnits::AaSync;
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(Text(1, 2), "0");
  EXPECT_EQ(Text(1, 3), "2");
  rig.options.units = PhaseUnits::Metres;
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(Text(1, 2), "0");
  EXPECT_EQ(Text(1, 3), "260");
}

TEST_F(SyncGridTest, AWholeRowTakesTheColourOfItsAntennasFps) {
  rig.model.FindOrAddAa(1, 5, 90);
  rig.model.FindOrAddAa(2, 3, 90);
  rig.model.FindOrAddAa(3, 5, 90);
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  const Colour first{0xFFFFFF};
  const Colour second{0xFFE6E6};
  const Colour grey{0xC0C0C0};
  const std::array<std::array<Colour, 3>, 3> expected{
      {{grey, first, first}, {second, grey, second}, {first, first, grey}}};
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) {
      EXPECT_EQ(rig.grid.At(row + 1, column + 1).background,
                expected.at(static_cast<std::size_t>(row)).at(static_cast<std::size_t>(column)))
          << row << ", " << column;
    }
  }
  EXPECT_EQ(rig.grid.At(0, 1).background, std::nullopt);
  EXPECT_EQ(rig.grid.At(1, 0).background, std::nullopt);
}

TEST_F(SyncGridTest, ColoursAreKeptUntilTheNextClear) {
  rig.model.FindOrAddAa(1, 5, 90);
  rig.model.FindOrAddAa(2, 3, 90);
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  rig.model.FindOrAddAa(3, 0, 90);
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(rig.grid.At(1, 2).background, Colour{0xFFFFFF});
  EXPECT_EQ(rig.grid.At(2, 1).background, Colour{0xFFE6E6});
  EXPECT_EQ(rig.grid.At(3, 1).background, Colour{0xE6FFE6});

  rig.Clear();
  rig.model.FindOrAddAa(3, 0, 90);
  rig.model.FindOrAddAa(1, 5, 90);
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(rig.grid.At(1, 2).background, Colour{0xFFFFFF});
  EXPECT_EQ(rig.grid.At(2, 1).background, Colour{0xFFE6E6});
}

TEST_F(SyncGridTest, SixteenFpsValuesHaveTheirColours) {
  for (std::int16_t fps = 0; fps < 16; ++fps) {
    rig.model.FindOrAddAa(fps, fps, 90);
  }
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(rig.grid.At(1, 2).background, Colour{0xFFFFFF});
  EXPECT_EQ(rig.grid.At(14, 1).background, Colour{0x9999FF});
  EXPECT_EQ(rig.grid.At(15, 1).background, Colour{0xFF99FF});
  EXPECT_EQ(rig.grid.At(16, 1).background, Colour{0xFF99FF});
  EXPECT_EQ(rig.beeper.count, 0);
}

TEST_F(SyncGridTest, AGridThatShrankKeepsNothingOfTheLargerOne) {
  rig.AddAas(5);
  AddPhases(0, 1, {5});
  AddPhases(1, 0, {5});
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  rig.Clear();
  rig.AddAas(2);
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(rig.grid.Rows(), 3);
  EXPECT_EQ(rig.grid.Columns(), 3);
  EXPECT_EQ(Text(1, 2), "");
  EXPECT_EQ(Text(2, 1), "");
}

TEST_F(SyncGridTest, FiftyOneAntennasAreAllDrawn) {
  rig.AddAas(51);
  AddPhases(50, 0, {45});
  AddPhases(49, 50, {-45});
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(rig.grid.Rows(), 52);
  EXPECT_EQ(Text(0, 51), "50[3]");
  EXPECT_EQ(Text(51, 1), "45");
  EXPECT_EQ(Text(50, 51), "-45");
  EXPECT_EQ(rig.events.yields, 51 * 51);
  EXPECT_EQ(rig.beeper.count, 0);
}

TEST_F(SyncGridTest, With52AntennasTheHeaderRowIsDrawnUpToColumn51) {
  rig.AddAas(51);
  ASSERT_EQ(FaultOf([this] { rig.model.FindOrAddAa(99, 3, 90); }), FaultKind::Subscript);
  EXPECT_FALSE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(rig.beeper.count, 1);
  EXPECT_EQ(rig.grid.Rows(), 53);
  EXPECT_EQ(rig.grid.Columns(), 53);
  EXPECT_EQ(rig.grid.ColumnWidth(52), 550);
  EXPECT_EQ(Text(0, 0), "RPN");
  EXPECT_EQ(Text(0, 1), "00[3]");
  EXPECT_EQ(Text(0, 51), "50[3]");
  EXPECT_EQ(Text(0, 52), "");
  EXPECT_EQ(Text(1, 0), "");
  EXPECT_EQ(rig.grid.At(1, 1).background, std::nullopt);
  EXPECT_EQ(rig.events.yields, 0);

  EXPECT_FALSE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(rig.beeper.count, 2);

  rig.Clear();
  rig.AddAas(2);
  EXPECT_TRUE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(rig.grid.Rows(), 3);
  EXPECT_EQ(rig.beeper.count, 2);
}

TEST_F(SyncGridTest, AnFpsOutsideTheColourTableAbandonsTheRedrawAtItsRow) {
  rig.model.FindOrAddAa(1, 3, 90);
  rig.model.FindOrAddAa(2, 17, 90);
  AddPhases(0, 1, {5});
  EXPECT_FALSE(rig.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(rig.beeper.count, 1);
  EXPECT_EQ(Text(2, 0), "02[17]");
  EXPECT_EQ(rig.grid.At(1, 2).background, Colour{0xFFFFFF});
  EXPECT_EQ(rig.grid.At(2, 1).background, std::nullopt);
  EXPECT_EQ(Text(1, 2), "");
  EXPECT_EQ(rig.events.yields, 0);
}

TEST_F(SyncGridTest, GetRpsColourPassesItsFaultToTheCallerWithoutABeep) {
  EXPECT_EQ(FaultOf([this] { return rig.syncGrid.GetRpsColour(17); }), FaultKind::Subscript);
  EXPECT_EQ(FaultOf([this] { return rig.syncGrid.GetRpsColour(-1); }), FaultKind::Subscript);
  EXPECT_EQ(rig.beeper.count, 0);
  EXPECT_EQ(rig.syncGrid.GetRpsColour(16), Colour{0xFFFFFF});
}

}  // namespace
}  // namespace kelvara::sync
