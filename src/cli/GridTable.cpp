#include "cli/GridTable.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

namespace kelvara::cli {
namespace {

constexpr std::size_t kGap = 2;

}  // namespace

void PrintGrid(const sync::GridCells& grid, std::ostream& out) {
  std::vector<std::size_t> widths(static_cast<std::size_t>(grid.Columns()));
  for (int row = 0; row < grid.Rows(); ++row) {
    for (int column = 0; column < grid.Columns(); ++column) {
      std::size_t& width = widths[static_cast<std::size_t>(column)];
      width = std::max(width, grid.Text(row, column).size());
    }
  }
  for (int row = 0; row < grid.Rows(); ++row) {
    std::string line;
    for (int column = 0; column < grid.Columns(); ++column) {
      const std::string text = grid.Text(row, column);
      const std::size_t gap = column == 0 ? 0 : kGap;
      line.append(gap + widths[static_cast<std::size_t>(column)] - text.size(), ' ');
      line += text;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    out << line << '\n';
  }
}

}  // namespace kelvara::cli
