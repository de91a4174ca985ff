#include "sync/SyncGrid.h"

#include "base/Fault.h"
#include "base/Rounding.h"
#include "sync/AaSyncUnits.h"

namespace kelvara::sync {
namespace {

constexpr std::string_view kCornerText = "RPN";

/// Keeps the grid from painting until the redraw is over, even if it ends in a fault.
class RedrawScope {
 public:
  explicit RedrawScope(GridCells& grid) : grid_(grid) { grid_.BeginRedraw(); }
  ~RedrawScope() { grid_.EndRedraw(); }
  RedrawScope(const RedrawScope&) = delete;
  RedrawScope& operator=(const RedrawScope&) = delete;

 private:
  GridCells& grid_;
};

}  // namespace

bool SyncGrid::UpdateSyncGrid() {
  const RedrawScope redraw(grid_);
  try {
    const int aaCount = model_.AaCount();
    grid_.SetSize(aaCount + 1, aaCount + 1);
    for (int column = 0; column <= aaCount; ++column) {
      grid_.SetColumnWidth(column, kGridColumnTwips);
    }
    grid_.SetText(0, 0, kCornerText);
    DrawHeaders(aaCount);
    DrawColours(aaCount);
    return DrawPhases(aaCount);
  } catch (const base::Fault&) {
    machine_.beeper.Beep();
    return false;
  }
}

void SyncGrid::Clear() {
  grid_.SetSize(1, 1);
  grid_.SetColumnWidth(0, kGridColumnTwips);
  grid_.SetCentred(0, 0);
  grid_.SetText(0, 0, kCornerText);
  colours_.Clear();
}

void SyncGrid::DrawHeaders(int aaCount) {
  for (int column = 1; column <= aaCount; ++column) {
    DrawHeader(0, column, column - 1);
  }
  for (int row = 1; row <= aaCount; ++row) {
    DrawHeader(row, 0, row - 1);
  }
}

void SyncGrid::DrawHeader(int row, int column, int aa) {
  grid_.SetCentred(row, column);
  grid_.SetText(row, column, options_.AaText(model_.AaRpn(aa), model_.AaFps(aa)));
}

void SyncGrid::DrawColours(int aaCount) {
  for (int from = 0; from < aaCount; ++from) {
    for (int to = 0; to < aaCount; ++to) {
      grid_.SetBackground(from + 1, to + 1,
                          from == to ? kDiagonalColour : GetRpsColour(model_.AaFps(from)));
    }
  }
}

bool SyncGrid::DrawPhases(int aaCount) {
  const std::uint64_t clearCount = model_.ClearCount();
  for (int from = 0; from < aaCount; ++from) {
    for (int to = 0; to < aaCount; ++to) {
      if (!machine_.events.ProcessEvents()) {
        return false;
      }
      if (model_.ClearCount() != clearCount) {
        throw base::Fault(base::FaultKind::Subscript, "the cell is gone: the grid was cleared");
      }
      grid_.SetCentred(from + 1, to + 1);
      grid_.SetText(from + 1, to + 1, PhaseText(from, to));
    }
  }
  return true;
}

std::string SyncGrid::PhaseText(int from, int to) const {
  const PhaseCell& cell = model_.Cell(from, to);
  if (from == to || cell.Count < 1) {
    return {};
  }
  const std::int32_t mean = base::Round32(cell.Mean());
  std::int32_t shown = mean;
  switch (options_.units.value_or(PhaseUnits::Metres)) {
    case PhaseUnits::Rfps:
      break;
    case PhaseUnits::AaSync:
      shown = ToAaSyncUnits(mean);
      break;
    case PhaseUnits::Metres:
      shown = ToMetres(mean);
      break;
  }
  return std::to_string(shown);
}

}  // namespace kelvara::sync
