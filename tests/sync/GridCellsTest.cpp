#include "sync/GridCells.h"

#include <gtest/gtest.h>

#include "support/Faults.h"

namespace kelvara::sync {
namespace {

using base::FaultKind;
using test::FaultOf;

TEST(GridCells, StartsAsOneEmptyCell) {
  const GridCells grid;
  EXPECT_EQ(grid.Rows(), 1);
  EXPECT_EQ(grid.Columns(), 1);
  EXPECT_EQ(grid.Text(0, 0), "");
  EXPECT_FALSE(grid.At(0, 0).centred);
  EXPECT_EQ(grid.At(0, 0).background, std::nullopt);
  EXPECT_EQ(grid.ColumnWidth(0), 0);
}

TEST(GridCells, KeepsWhatIsSetInEachCell) {
  GridCells grid;
  grid.SetSize(2, 3);
  grid.SetText(1, 2, "-11");
  grid.SetCentred(0, 1);
  grid.SetBackground(1, 0, Colour{0xC0C0C0});
  grid.SetColumnWidth(2, 550);

  EXPECT_EQ(grid.Text(1, 2), "-11");
  EXPECT_EQ(grid.Text(0, 2), "");
  EXPECT_TRUE(grid.At(0, 1).centred);
  EXPECT_FALSE(grid.At(1, 1).centred);
  EXPECT_EQ(grid.At(1, 0).background, Colour{0xC0C0C0});
  EXPECT_EQ(grid.At(0, 0).background, std::nullopt);
  EXPECT_EQ(grid.ColumnWidth(2), 550);
  EXPECT_EQ(grid.ColumnWidth(1), 0);
}

TEST(GridCells, CellsThatRemainKeepTheirContents) {
  GridCells grid;
  grid.SetSize(2, 2);
  grid.SetText(0, 0, "RPN");
  grid.SetText(1, 1, "x");
  grid.SetCentred(1, 1);
  grid.SetBackground(1, 1, Colour{0xFFFFFF});
  grid.SetColumnWidth(1, 550);

  grid.SetSize(4, 3);
  EXPECT_EQ(grid.Text(0, 0), "RPN");
  EXPECT_EQ(grid.Text(1, 1), "x");
  EXPECT_TRUE(grid.At(1, 1).centred);
  EXPECT_EQ(grid.At(1, 1).background, Colour{0xFFFFFF});
  EXPECT_EQ(grid.ColumnWidth(1), 550);
  EXPECT_EQ(grid.Text(3, 2), "");
}

TEST(GridCells, CellsThatWereRemovedComeBackEmpty) {
  GridCells grid;
  grid.SetSize(3, 3);
  grid.SetText(0, 2, "a");
  grid.SetText(2, 0, "b");
  grid.SetBackground(2, 2, Colour{0xFFFFFF});
  grid.SetSize(1, 1);
  grid.SetSize(3, 3);
  EXPECT_EQ(grid.Text(0, 2), "");
  EXPECT_EQ(grid.Text(2, 0), "");
  EXPECT_EQ(grid.At(2, 2).background, std::nullopt);
}

TEST(GridCells, ACellOutsideTheGridIsASubscriptFault) {
  GridCells grid;
  grid.SetSize(2, 3);
  EXPECT_EQ(FaultOf([&] { grid.SetText(2, 0, "x"); }), FaultKind::Subscript);
  EXPECT_EQ(FaultOf([&] { grid.SetText(0, 3, "x"); }), FaultKind::Subscript);
  EXPECT_EQ(FaultOf([&] { grid.SetCentred(-1, 0); }), FaultKind::Subscript);
  EXPECT_EQ(FaultOf([&] { grid.SetBackground(0, -1, Colour{}); }), FaultKind::Subscript);
  EXPECT_EQ(FaultOf([&] { grid.SetColumnWidth(3, 550); }), FaultKind::Subscript);
  EXPECT_EQ(FaultOf([&] { return grid.Text(1, 3); }), FaultKind::Subscript);
  EXPECT_EQ(FaultOf([&] { return grid.ColumnWidth(-1); }), FaultKind::Subscript);
}

}  // namespace
}  // namespace kelvara::sync
