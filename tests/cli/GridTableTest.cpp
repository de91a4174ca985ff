#include "cli/GridTable.h"

#include <gtest/gtest.h>

#include <sstream>

#include "sync/GridCells.h"

namespace kelvara::cli {
namespace {

std::string Printed(const sync::GridCells& grid) {
  std::ostringstream out;
  PrintGrid(grid, out);
  return out.str();
}

TEST(PrintGrid, RightAlignsColumnsTwoBlanksApart) {
  sync::GridCells grid;
  grid.SetSize(3, 3);
  grid.SetText(0, 0, "RPN");
  grid.SetText(0, 1, "1");
  grid.SetText(0, 2, "63[15]");
  grid.SetText(1, 0, "1");
  grid.SetText(1, 2, "7");
  grid.SetText(2, 0, "63[15]");
  grid.SetText(2, 1, "-390");
  EXPECT_EQ(Printed(grid),
            "   RPN     1  63[15]\n"
            "     1             7\n"
            "63[15]  -390\n");
}

TEST(PrintGrid, PrintsARowOfEmptyCellsAsAnEmptyLine) {
  sync::GridCells grid;
  EXPECT_EQ(Printed(grid), "\n");
  grid.SetSize(2, 2);
  grid.SetText(1, 1, "5");
  EXPECT_EQ(Printed(grid), "\n  5\n");
}

}  // namespace
}  // namespace kelvara::cli
