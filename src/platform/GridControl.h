#pragma once

#include <string>
#include <string_view>

#include "platform/Colour.h"

namespace kelvara::platform {

/// A grid with a fixed header row (row 0) and header column (column 0). A row or column outside the
/// grid is a subscript fault.
class GridControl {
 public:
  virtual ~GridControl() = default;

  /// Sets the numbers of rows and columns. Cells that stay inside keep what they hold.
  virtual void SetSize(int rows, int columns) = 0;
  virtual int Rows() const = 0;
  virtual int Columns() const = 0;

  /// The width of a column in twips (1/1440 inch).
  virtual void SetColumnWidth(int column, int twips) = 0;

  virtual void SetText(int row, int column, std::string_view text) = 0;
  virtual std::string Text(int row, int column) const = 0;

  /// Centres the cell's text (alignment code 4).
  virtual void SetCentred(int row, int column) = 0;

  virtual void SetBackground(int row, int column, Colour colour) = 0;

  /// Between these two the cells may change without being painted; the end paints once. Pairs may
  /// lie inside each other.
  virtual void BeginRedraw() {}
  virtual void EndRedraw() {}
};

}  // namespace kelvara::platform
