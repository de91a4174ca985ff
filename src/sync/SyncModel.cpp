#include "sync/SyncModel.h"

#include <algorithm>

#include "base/CheckedInteger.h"

namespace kelvara::sync {

using base::At;

void SyncModel::Clear() {
  aaCount_ = 0;
  reportCount_ = 0;
  ++clearCount_;
  aaRpn_.fill(0);
  aaFps_.fill(0);
  aaFpn_.fill(0);
  for (auto& row : cells_) {
    row.fill(PhaseCell());
  }
  readings_.clear();
}

std::int16_t SyncModel::FindOrAddAa(std::int16_t rpn, std::int16_t fps, std::int16_t fpn) {
  const auto listedEnd = aaRpn_.begin() + std::min<std::ptrdiff_t>(aaCount_, kMaxAas);
  const auto found = std::find(aaRpn_.begin(), listedEnd, rpn);
  if (found != listedEnd) {
    return static_cast<std::int16_t>(found - aaRpn_.begin());
  }
  if (aaCount_ > static_cast<std::int16_t>(kMaxAas)) {
    base::ThrowSubscript();
  }
  // The count increases before the index is checked, and does not go back if the table is full.
  const std::int16_t added = aaCount_++;
  At(aaRpn_, added) = rpn;
  At(aaFps_, added) = fps;
  At(aaFpn_, added) = fpn;
  return added;
}

void SyncModel::AddPhase(std::int16_t from, std::int16_t to, std::int16_t phase) {
  PhaseCell& cell = At(At(cells_, from), to);
  cell.Sum = base::Add32(cell.Sum, phase);
  cell.Count = base::Add32(cell.Count, 1);
  cell.Max = std::max(cell.Max, phase);
  cell.Min = std::min(cell.Min, phase);
  if (keepsReadings_) {
    readings_.push_back({from, to, phase});
  }
}

void SyncModel::SetCell(int from, int to, const PhaseCell& cell) {
  At(At(cells_, from), to) = cell;
}

void SyncModel::CountReport() { reportCount_ = base::Add32(reportCount_, 1); }

std::int16_t SyncModel::AaRpn(int index) const { return At(aaRpn_, index); }

std::int16_t SyncModel::AaFps(int index) const { return At(aaFps_, index); }

std::int16_t SyncModel::AaFpn(int index) const { return At(aaFpn_, index); }

const PhaseCell& SyncModel::Cell(int from, int to) const { return At(At(cells_, from), to); }

}  // namespace kelvara::sync
