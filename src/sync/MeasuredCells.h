#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "sync/SyncModel.h"

namespace kelvara::sync {

/// A data cell of the grid by its row and column; row 0 and column 0 are the headers.
struct GridPosition {
  int row = 0;
  int column = 0;

  friend bool operator==(const GridPosition&, const GridPosition&) = default;
};

/// Finds the cells that the last report measured.
class MeasuredCells {
 public:
  /// The cells that the last report measured, by rows; nothing if it is the one of the last call.
  std::optional<std::vector<GridPosition>> Take(const SyncModel& model);

 private:
  std::uint64_t number_ = 0;
};

}  // namespace kelvara::sync
