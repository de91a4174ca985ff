#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/GridControl.h"

namespace kelvara::platform {

/// A grid that only remembers: the grid of a program without a window.
class MemoryGrid : public GridControl {
 public:
  MemoryGrid() { SetSize(1, 1); }

  void SetSize(int rows, int columns) override;
  int Rows() const override { return rows_; }
  int Columns() const override { return columns_; }
  void SetColumnWidth(int column, int twips) override;
  void SetText(int row, int column, std::string_view text) override;
  std::string Text(int row, int column) const override;
  void SetCentred(int row, int column) override;
  void SetBackground(int row, int column, Colour colour) override;

  /// What was set last; 0 for a width and nothing for a colour never set.
  int ColumnWidth(int column) const;
  bool IsCentred(int row, int column) const;
  std::optional<Colour> Background(int row, int column) const;

 private:
  struct Cell {
    std::string text;
    bool centred = false;
    std::optional<Colour> background;
  };

  std::size_t Index(int row, int column) const;

  int rows_ = 0;
  int columns_ = 0;
  std::vector<Cell> cells_;
  std::vector<int> widths_;
};

}  // namespace kelvara::platform
