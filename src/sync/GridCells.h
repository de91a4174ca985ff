#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sync/Colour.h"

namespace kelvara::sync {

/// The cells of the sync grid, including header row 0 and header column 0, and the widths of its
/// columns. It starts with one cell. A row or column outside the grid is a subscript fault. The
/// window derives from it to learn of changes.
class GridCells {
 public:
  struct Cell {
    std::string text;
    bool centred = false;
    std::optional<Colour> background;
  };

  GridCells() { GridCells::SetSize(1, 1); }
  virtual ~GridCells() = default;
  GridCells(const GridCells&) = delete;
  GridCells& operator=(const GridCells&) = delete;

  /// Cells that remain keep their contents; new cells are empty.
  virtual void SetSize(int rows, int columns);
  virtual void SetColumnWidth(int column, int twips);
  virtual void SetText(int row, int column, std::string_view text);
  virtual void SetCentred(int row, int column);
  virtual void SetBackground(int row, int column, Colour colour);

  /// Between these two calls the cells may change without being painted; `EndRedraw` paints once.
  /// Pairs may be nested.
  virtual void BeginRedraw() {}
  virtual void EndRedraw() {}

  int Rows() const { return rows_; }
  int Columns() const { return columns_; }
  const Cell& At(int row, int column) const { return cells_[Index(row, column)]; }
  const std::string& Text(int row, int column) const { return At(row, column).text; }

  /// In twips; 0 if none was set.
  int ColumnWidth(int column) const;

 private:
  Cell& CellAt(int row, int column) { return cells_[Index(row, column)]; }
  std::size_t Index(int row, int column) const;

  int rows_ = 0;
  int columns_ = 0;
  std::vector<Cell> cells_;
  std::vector<int> widths_;
};

}  // namespace kelvara::sync
