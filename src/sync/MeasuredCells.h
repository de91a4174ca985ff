#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "sync/SyncModel.h"

namespace kelvara::sync {

/// A data cell of the grid by its row and column; row 0 and column 0 are the headers.
struct GridPosition {
  int row = 0;
  int column = 0;

  friend bool operator==(const GridPosition&, const GridPosition&) = default;
};

/// Finds the cells that were measured between two looks at the model.
class MeasuredCells {
 public:
  /// The cells that have got readings since the last call, by rows. None if they are more than one
  /// report can measure: then results were restored, not measured.
  std::vector<GridPosition> Take(const SyncModel& model);

 private:
  std::array<std::array<std::int32_t, kMaxAas>, kMaxAas> counts_{};
  std::uint64_t clearCount_ = 0;
};

}  // namespace kelvara::sync
