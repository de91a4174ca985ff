#include "platform/MemoryGrid.h"

#include <algorithm>
#include <utility>

#include "base/CheckedInteger.h"

namespace kelvara::platform {

void MemoryGrid::SetSize(int rows, int columns) {
  if (rows == rows_ && columns == columns_) {
    return;
  }
  std::vector<Cell> cells(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns));
  for (int row = 0; row < std::min(rows, rows_); ++row) {
    for (int column = 0; column < std::min(columns, columns_); ++column) {
      cells[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
            static_cast<std::size_t>(column)] = std::move(cells_[Index(row, column)]);
    }
  }
  cells_ = std::move(cells);
  widths_.resize(static_cast<std::size_t>(columns));
  rows_ = rows;
  columns_ = columns;
}

void MemoryGrid::SetColumnWidth(int column, int twips) { base::At(widths_, column) = twips; }

void MemoryGrid::SetText(int row, int column, std::string_view text) {
  cells_[Index(row, column)].text = text;
}

std::string MemoryGrid::Text(int row, int column) const { return cells_[Index(row, column)].text; }

void MemoryGrid::SetCentred(int row, int column) { cells_[Index(row, column)].centred = true; }

void MemoryGrid::SetBackground(int row, int column, Colour colour) {
  cells_[Index(row, column)].background = colour;
}

int MemoryGrid::ColumnWidth(int column) const { return base::At(widths_, column); }

bool MemoryGrid::IsCentred(int row, int column) const { return cells_[Index(row, column)].centred; }

std::optional<Colour> MemoryGrid::Background(int row, int column) const {
  return cells_[Index(row, column)].background;
}

std::size_t MemoryGrid::Index(int row, int column) const {
  const std::size_t checkedRow = base::CheckedIndex(row, static_cast<std::size_t>(rows_));
  const std::size_t checkedColumn = base::CheckedIndex(column, static_cast<std::size_t>(columns_));
  return checkedRow * static_cast<std::size_t>(columns_) + checkedColumn;
}

}  // namespace kelvara::platform
