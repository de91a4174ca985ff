#include "sync/SyncModel.h"

#include <algorithm>
#include <utility>

#include "base/CheckedInteger.h"

namespace kelvara::sync {

using base::At;

namespace {

void AddCell(PhaseCell& cell, const PhaseCell& added) {
  cell.Sum = base::Add32(cell.Sum, added.Sum);
  cell.Count = base::Add32(cell.Count, added.Count);
  cell.Max = std::max(cell.Max, added.Max);
  cell.Min = std::min(cell.Min, added.Min);
}

}  // namespace

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
  BeginReport();
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

void SyncModel::BeginReport() {
  ++lastReportNumber_;
  lastReport_.clear();
}

void SyncModel::AddPhase(std::int16_t from, std::int16_t to, std::int16_t phase) {
  PhaseCell& cell = At(At(cells_, from), to);
  cell.Sum = base::Add32(cell.Sum, phase);
  cell.Count = base::Add32(cell.Count, 1);
  cell.Max = std::max(cell.Max, phase);
  cell.Min = std::min(cell.Min, phase);
  lastReport_.push_back({from, to, phase});
  if (keepsReadings_) {
    readings_.push_back({from, to, phase});
  }
}

void SyncModel::SetCell(int from, int to, const PhaseCell& cell) {
  At(At(cells_, from), to) = cell;
}

void SyncModel::CountReport() { reportCount_ = base::Add32(reportCount_, 1); }

void SyncModel::AddOlder(const SyncModel& older) {
  SyncModel joined = older;
  joined.AddNewer(*this);
  joined.clearCount_ = clearCount_ + 1;
  joined.lastReportNumber_ = lastReportNumber_;
  joined.BeginReport();
  joined.keepsReadings_ = keepsReadings_;
  *this = std::move(joined);
}

int SyncModel::ListedAas() const { return std::min<int>(aaCount_, kMaxAas); }

void SyncModel::AddNewer(const SyncModel& newer) {
  const AaTable indices = AddAntennasOf(newer);
  for (int from = 0; from < newer.ListedAas(); ++from) {
    for (int to = 0; to < newer.ListedAas(); ++to) {
      AddCell(At(At(cells_, At(indices, from)), At(indices, to)), newer.Cell(from, to));
    }
  }
  for (const Reading& reading : newer.readings_) {
    readings_.push_back({At(indices, reading.from), At(indices, reading.to), reading.phase});
  }
  reportCount_ = base::Add32(reportCount_, newer.reportCount_);
}

SyncModel::AaTable SyncModel::AddAntennasOf(const SyncModel& newer) {
  // A count of 52, which tells that an antenna was refused, is not an antenna to be added.
  const std::int16_t largestCount = std::max(aaCount_, newer.aaCount_);
  aaCount_ = static_cast<std::int16_t>(ListedAas());
  AaTable indices{};
  for (int index = 0; index < newer.ListedAas(); ++index) {
    At(indices, index) = FindOrAddAa(newer.AaRpn(index), newer.AaFps(index), newer.AaFpn(index));
  }
  aaCount_ = std::max(aaCount_, largestCount);
  return indices;
}

std::int16_t SyncModel::AaRpn(int index) const { return At(aaRpn_, index); }

std::int16_t SyncModel::AaFps(int index) const { return At(aaFps_, index); }

std::int16_t SyncModel::AaFpn(int index) const { return At(aaFpn_, index); }

const PhaseCell& SyncModel::Cell(int from, int to) const { return At(At(cells_, from), to); }

}  // namespace kelvara::sync
