#include "sync/MeasuredCells.h"

#include <algorithm>

namespace kelvara::sync {
namespace {

/// A report holds ten antennas at most.
constexpr std::size_t kMostOfOneReport = 90;

}  // namespace

std::vector<GridPosition> MeasuredCells::Take(const SyncModel& model) {
  if (model.ClearCount() != clearCount_) {
    counts_ = {};
    clearCount_ = model.ClearCount();
  }
  std::vector<GridPosition> measured;
  const int aaCount = std::min<int>(model.AaCount(), kMaxAas);
  for (int from = 0; from < aaCount; ++from) {
    for (int to = 0; to < aaCount; ++to) {
      const std::int32_t count = model.Cell(from, to).Count;
      std::int32_t& before = counts_[std::size_t(from)][std::size_t(to)];
      if (count > before && from != to) {
        measured.push_back({from + 1, to + 1});
      }
      before = count;
    }
  }
  if (measured.size() > kMostOfOneReport) {
    measured.clear();
  }
  return measured;
}

}  // namespace kelvara::sync
