#include "sync/MeasuredCells.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace kelvara::sync {

std::optional<std::vector<GridPosition>> MeasuredCells::Take(const SyncModel& model) {
  if (std::exchange(number_, model.LastReportNumber()) == model.LastReportNumber()) {
    return std::nullopt;
  }
  std::vector<GridPosition> measured;
  for (const Reading& reading : model.LastReport()) {
    measured.push_back({reading.from + 1, reading.to + 1});
  }
  std::sort(measured.begin(), measured.end(), [](GridPosition one, GridPosition other) {
    return std::tie(one.row, one.column) < std::tie(other.row, other.column);
  });
  return measured;
}

}  // namespace kelvara::sync
