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
  SyncGridTest() { room.Clear(); }

  void AddPhases(std::int16_t from, std::int16_t to, std::initializer_list<std::int16_t> phases) {
    for (const std::int16_t phase : phases) {
      room.model.AddPhase(from, to, phase);
    }
  }

  std::string Text(int row, int column) { return room.grid.Text(row, column); }

  test::SyncRig room;
};

TEST_F(SyncGridTest, AfterAClearIsTheSingleCellRpn) {
  room.AddAas(3);
  ASSERT_TRUE(room.syncGrid.UpdateSyncGrid());
  room.Clear();
  EXPECT_EQ(room.grid.Rows(), 1);
  EXPECT_EQ(room.grid.Columns(), 1);
  EXPECT_EQ(Text(0, 0), "RPN");
  EXPECT_TRUE(room.grid.At(0, 0).centred);
  EXPECT_EQ(room.grid.ColumnWidth(0), 550);
  EXPECT_EQ(room.shownReports, 0);
  EXPECT_EQ(room.shownAas, 0);
}

TEST_F(SyncGridTest, AnEmptyModelIsTheSingleCellRpnToo) {
  room.grid.SetText(0, 0, "overwritten");
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(room.grid.Rows(), 1);
  EXPECT_EQ(room.grid.Columns(), 1);
  EXPECT_EQ(Text(0, 0), "RPN");
  EXPECT_EQ(room.grid.ColumnWidth(0), 550);
}

TEST_F(SyncGridTest, OneAntennaHasAGreyEmptyCellAndTakesNoColour) {
  room.AddAas(1);
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(room.grid.Rows(), 2);
  EXPECT_EQ(room.grid.Columns(), 2);
  EXPECT_EQ(Text(0, 1), "00[3]");
  EXPECT_EQ(Text(1, 0), "00[3]");
  EXPECT_EQ(Text(1, 1), "");
  EXPECT_EQ(room.grid.At(1, 1).background, Colour{0xC0C0C0});
  EXPECT_EQ(room.syncGrid.GetRpsColour(9), Colour{0xFFFFFF});
}

TEST_F(SyncGridTest, EveryCellIsCentredAndEveryColumn550TwipsWide) {
  room.AddAas(4);
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(room.grid.Rows(), 5);
  EXPECT_EQ(room.grid.Columns(), 5);
  for (int row = 0; row <= 4; ++row) {
    EXPECT_EQ(room.grid.ColumnWidth(row), 550) << row;
    for (int column = 0; column <= 4; ++column) {
      EXPECT_TRUE(room.grid.At(row, column).centred) << row << ", " << column;
    }
  }
}

TEST_F(SyncGridTest, HeadersShowRpnAndFpsInTheChosenForm) {
  room.model.FindOrAddAa(1, 3, 90);
  room.model.FindOrAddAa(31, 12, 90);
  room.model.FindOrAddAa(255, 0, 90);
  const auto expectHeaders = [this](std::initializer_list<std::string> headers) {
    EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
    int place = 1;
    for (const std::string& header : headers) {
      EXPECT_EQ(Text(0, place), header);
      EXPECT_EQ(Text(place, 0), header);
      ++place;
    }
  };
  expectHeaders({"01[3]", "31[12]", "255[0]"});
  room.options.fpsShown = false;
  expectHeaders({"01", "31", "255"});
  room.options.rpnHex = true;
  expectHeaders({"01", "1F", "FF"});
  room.options.fpsShown = true;
  expectHeaders({"01[3]", "1F[C]", "FF[0]"});
}

TEST_F(SyncGridTest, RowIsTheSynchronisedToAntennaAndColumnTheNeighbour) {
  room.AddAas(2);
  AddPhases(0, 1, {-11});
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(Text(1, 2), "-11");
  EXPECT_EQ(Text(2, 1), "");
  EXPECT_EQ(Text(1, 1), "");
  EXPECT_EQ(Text(2, 2), "");
}

TEST_F(SyncGridTest, MeansRoundHalfToEven) {
  room.AddAas(5);
  AddPhases(0, 1, {3, 4});
  AddPhases(0, 2, {2, 3});
  AddPhases(0, 3, {-3, -4});
  AddPhases(0, 4, {-2, -3});
  AddPhases(1, 0, {1, 1, 2});
  AddPhases(1, 2, {0});
  AddPhases(1, 3, {-1, 0, 0});
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(Text(1, 2), "4");
  EXPECT_EQ(Text(1, 3), "2");
  EXPECT_EQ(Text(1, 4), "-4");
  EXPECT_EQ(Text(1, 5), "-2");
  EXPECT_EQ(Text(2, 1), "1");
  EXPECT_EQ(Text(2, 3), "0");
  EXPECT_EQ(Text(2, 4), "0");
}

TEST_F(SyncGridTest, ShowsTheChosenUnits) {
  room.AddAas(4);
  AddPhases(0, 1, {9});
  AddPhases(0, 2, {7});
  AddPhases(0, 3, {-20});
  const auto expectRow = [this](PhaseUnits units, std::initializer_list<std::string> texts) {
    room.options.units = units;
    EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
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
  room.AddAas(3);
  AddPhases(0, 1, {2, 3});
  AddPhases(0, 2, {6, 7, 7});
  room.options.units = PhaseUnits::AaSync;
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(Text(1, 2), "0");
  EXPECT_EQ(Text(1, 3), "2");
  room.options.units = PhaseUnits::Metres;
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(Text(1, 2), "0");
  EXPECT_EQ(Text(1, 3), "260");
}

TEST_F(SyncGridTest, AWholeRowTakesTheColourOfItsAntennasFps) {
  room.model.FindOrAddAa(1, 5, 90);
  room.model.FindOrAddAa(2, 3, 90);
  room.model.FindOrAddAa(3, 5, 90);
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  const Colour first{0xFFFFFF};
  const Colour second{0xFFE6E6};
  const Colour grey{0xC0C0C0};
  const std::array<std::array<Colour, 3>, 3> expected{
      {{grey, first, first}, {second, grey, second}, {first, first, grey}}};
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) {
      EXPECT_EQ(room.grid.At(row + 1, column + 1).background,
                expected.at(static_cast<std::size_t>(row)).at(static_cast<std::size_t>(column)))
          << row << ", " << column;
    }
  }
  EXPECT_EQ(room.grid.At(0, 1).background, std::nullopt);
  EXPECT_EQ(room.grid.At(1, 0).background, std::nullopt);
}

TEST_F(SyncGridTest, ColoursAreKeptUntilTheNextClear) {
  room.model.FindOrAddAa(1, 5, 90);
  room.model.FindOrAddAa(2, 3, 90);
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  room.model.FindOrAddAa(3, 0, 90);
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(room.grid.At(1, 2).background, Colour{0xFFFFFF});
  EXPECT_EQ(room.grid.At(2, 1).background, Colour{0xFFE6E6});
  EXPECT_EQ(room.grid.At(3, 1).background, Colour{0xE6FFE6});

  room.Clear();
  room.model.FindOrAddAa(3, 0, 90);
  room.model.FindOrAddAa(1, 5, 90);
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(room.grid.At(1, 2).background, Colour{0xFFFFFF});
  EXPECT_EQ(room.grid.At(2, 1).background, Colour{0xFFE6E6});
}

TEST_F(SyncGridTest, SixteenFpsValuesHaveTheirColours) {
  for (std::int16_t fps = 0; fps < 16; ++fps) {
    room.model.FindOrAddAa(fps, fps, 90);
  }
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(room.grid.At(1, 2).background, Colour{0xFFFFFF});
  EXPECT_EQ(room.grid.At(14, 1).background, Colour{0x9999FF});
  EXPECT_EQ(room.grid.At(15, 1).background, Colour{0xFF99FF});
  EXPECT_EQ(room.grid.At(16, 1).background, Colour{0xFF99FF});
  EXPECT_EQ(room.beeper.count, 0);
}

TEST_F(SyncGridTest, AGridThatShrankHoldsNothingOfTheLargerOne) {
  room.AddAas(5);
  AddPhases(0, 1, {5});
  AddPhases(1, 0, {5});
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  room.Clear();
  room.AddAas(2);
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(room.grid.Rows(), 3);
  EXPECT_EQ(room.grid.Columns(), 3);
  EXPECT_EQ(Text(1, 2), "");
  EXPECT_EQ(Text(2, 1), "");
}

TEST_F(SyncGridTest, FiftyOneAntennasAreDrawnWhole) {
  room.AddAas(51);
  AddPhases(50, 0, {45});
  AddPhases(49, 50, {-45});
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(room.grid.Rows(), 52);
  EXPECT_EQ(Text(0, 51), "50[3]");
  EXPECT_EQ(Text(51, 1), "45");
  EXPECT_EQ(Text(50, 51), "-45");
  EXPECT_EQ(room.events.yields, 51 * 51);
  EXPECT_EQ(room.beeper.count, 0);
}

TEST_F(SyncGridTest, With52AntennasTheHeaderRowIsDrawnUpToColumn51) {
  room.AddAas(51);
  ASSERT_EQ(FaultOf([this] { room.model.FindOrAddAa(99, 3, 90); }), FaultKind::Subscript);
  EXPECT_FALSE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(room.beeper.count, 1);
  EXPECT_EQ(room.grid.Rows(), 53);
  EXPECT_EQ(room.grid.Columns(), 53);
  EXPECT_EQ(room.grid.ColumnWidth(52), 550);
  EXPECT_EQ(Text(0, 0), "RPN");
  EXPECT_EQ(Text(0, 1), "00[3]");
  EXPECT_EQ(Text(0, 51), "50[3]");
  EXPECT_EQ(Text(0, 52), "");
  EXPECT_EQ(Text(1, 0), "");
  EXPECT_EQ(room.grid.At(1, 1).background, std::nullopt);
  EXPECT_EQ(room.events.yields, 0);

  EXPECT_FALSE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(room.beeper.count, 2);

  room.Clear();
  room.AddAas(2);
  EXPECT_TRUE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(room.grid.Rows(), 3);
  EXPECT_EQ(room.beeper.count, 2);
}

TEST_F(SyncGridTest, AnFpsOutsideTheColourTableAbandonsTheRedrawAtItsRow) {
  room.model.FindOrAddAa(1, 3, 90);
  room.model.FindOrAddAa(2, 17, 90);
  AddPhases(0, 1, {5});
  EXPECT_FALSE(room.syncGrid.UpdateSyncGrid());
  EXPECT_EQ(room.beeper.count, 1);
  EXPECT_EQ(Text(2, 0), "02[17]");
  EXPECT_EQ(room.grid.At(1, 2).background, Colour{0xFFFFFF});
  EXPECT_EQ(room.grid.At(2, 1).background, std::nullopt);
  EXPECT_EQ(Text(1, 2), "");
  EXPECT_EQ(room.events.yields, 0);
}

TEST_F(SyncGridTest, GetRpsColourPassesItsFaultToTheCallerWithoutABeep) {
  EXPECT_EQ(FaultOf([this] { return room.syncGrid.GetRpsColour(17); }), FaultKind::Subscript);
  EXPECT_EQ(FaultOf([this] { return room.syncGrid.GetRpsColour(-1); }), FaultKind::Subscript);
  EXPECT_EQ(room.beeper.count, 0);
  EXPECT_EQ(room.syncGrid.GetRpsColour(16), Colour{0xFFFFFF});
}

}  // namespace
}  // namespace kelvara::sync
