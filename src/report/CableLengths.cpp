#include "report/CableLengths.h"

#include <algorithm>

#include "base/CheckedInteger.h"
#include "base/Fault.h"
#include "base/Rounding.h"
#include "sync/AaSyncUnits.h"

namespace kelvara::report {
namespace {

using base::At;

/// Means "no data" in the working tables.
constexpr std::int16_t kNoData = -32000;

using AaTable = std::array<std::int16_t, sync::kMaxAas>;

/// The largest mean phase of an antenna relative to the others, never below 0.
std::int16_t RowLead(const sync::SyncModel& model, int aa) {
  std::int16_t best = 0;
  bool seen = false;
  for (int other = 0; other < model.AaCount(); ++other) {
    const sync::PhaseCell& cell = model.Cell(aa, other);
    if (cell.Count > 0) {
      seen = true;
      best = std::max(best, MeanPhase(cell));
    }
  }
  return seen ? best : kNoData;
}

/// The negated smallest mean phase of the others relative to an antenna, never below 0.
std::int16_t ColLag(const sync::SyncModel& model, int aa) {
  std::int16_t best = 0;
  bool seen = false;
  for (int other = 0; other < model.AaCount(); ++other) {
    const sync::PhaseCell& cell = model.Cell(other, aa);
    if (cell.Count > 0) {
      seen = true;
      best = std::min(best, MeanPhase(cell));
    }
  }
  return seen ? base::Subtract16(0, best) : kNoData;
}

/// Shifts the values that have data so that none is negative.
void Normalise(AaTable& values, int count) {
  std::int16_t offset = 0;
  for (int aa = 0; aa < count; ++aa) {
    if (At(values, aa) != kNoData) {
      offset = std::min(offset, At(values, aa));
    }
  }
  for (int aa = 0; aa < count; ++aa) {
    if (At(values, aa) != kNoData) {
      At(values, aa) = base::Subtract16(At(values, aa), offset);
    }
  }
}

std::int16_t Combine(std::int16_t rowLead, std::int16_t colLag) {
  if (rowLead == kNoData && colLag == kNoData) {
    return 0;
  }
  if (rowLead == kNoData) {
    return colLag;
  }
  if (colLag == kNoData) {
    return rowLead;
  }
  return base::Round16(base::Add16(colLag, rowLead) / 2.0);
}

}  // namespace

CableLengths::CableLengths(const sync::SyncModel& model) {
  AaTable rowLead{};
  AaTable colLag{};
  const int count = model.AaCount();
  for (int aa = 0; aa < count; ++aa) {
    At(rowLead, aa) = RowLead(model, aa);
  }
  for (int aa = 0; aa < count; ++aa) {
    At(colLag, aa) = ColLag(model, aa);
  }
  Normalise(rowLead, count);
  Normalise(colLag, count);
  for (int aa = 0; aa < count; ++aa) {
    At(AaDelay_, aa) = Combine(At(rowLead, aa), At(colLag, aa));
  }
}

std::int16_t CableLengths::AaDelay(int aa) const { return At(AaDelay_, aa); }

std::int32_t CableLengths::Metres(int aa) const { return sync::ToMetres(AaDelay(aa)); }

std::vector<std::optional<std::int32_t>> ReportedMetres(const sync::SyncModel& model) {
  std::vector<std::optional<std::int32_t>> metres(
      std::min<std::size_t>(static_cast<std::size_t>(model.AaCount()), sync::kMaxAas));
  try {
    const CableLengths lengths(model);
    for (std::size_t aa = 0; aa < metres.size(); ++aa) {
      metres[aa] = lengths.Metres(static_cast<int>(aa));
    }
  } catch (const base::Fault&) {
    // The report has no lengths at all, not only those from here on.
    metres.assign(metres.size(), std::nullopt);
  }
  return metres;
}

std::int16_t MeanPhase(const sync::PhaseCell& cell) { return base::Round16(cell.Mean()); }

}  // namespace kelvara::report
