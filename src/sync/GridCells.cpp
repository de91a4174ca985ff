#include "sync/GridCells.h"

#include <algorithm>
#include <utility>

#include "base/CheckedInteger.h"

namespace kelvara::sync {

void GridCells::SetSize(int rows, int columns) {
  if (rows == rows_ && columns == columns_) {
    return;
  }
  std::vector<Cell> cells(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns));
  for (int row = 0; row < std::min(rows, rows_); ++row) {
    for (int column = 0; column < std::min(columns, columns_); ++column) {
      cells[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
            static_cast<std::size_t>(column)] = std::move(CellAt(row, column));
    }
  }
  cells_ = std::move(cells);
  widths_.resize(static_cast<std::size_t>(columns));
  rows_ = rows;
  columns_ = columns;
}

void GridCells::SetColumnWidth(int column, int twips) { base::At(widths_, column) = twips; }

void GridCells::SetText(int row, int column, std::string_view text) {
  CellAt(row, column).text = text;
}

void GridCells::SetCentred(int row, int column) { CellAt(row, column).centred = true; }

void GridCells::SetBackground(int row, int column, Colour colour) {
  CellAt(row, column).background = colour;
}

int GridCells::ColumnWidth(int column) const { return base::At(widths_, column); }

std::size_t GridCells::Index(int row, int column) const {
  const std::size_t checkedRow = base::CheckedIndex(row, static_cast<std::size_t>(rows_));
  const std::size_t checkedColumn = base::CheckedIndex(column, static_cast<std::size_t>(columns_));
  return checkedRow * static_cast<std::size_t>(columns_) + checkedColumn;
}

}  // namespace kelvara::sync
