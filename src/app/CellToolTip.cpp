#include "app/CellToolTip.h"

#include <algorithm>

#include "base/Rounding.h"

namespace kelvara::app {

std::string CellToolTip(const sync::SyncModel& model, const sync::DisplayOptions& options, int row,
                        int column) {
  const int aaCount = std::min<int>(model.AaCount(), sync::kMaxAas);
  const int from = row - 1;
  const int to = column - 1;
  if (from < 0 || to < 0 || from >= aaCount || to >= aaCount) {
    return {};
  }
  std::string text = "Synchronised to AA ";
  text += options.AaText(model.AaRpn(from), model.AaFps(from));
  if (from == to) {
    return text;
  }
  text += ", neighbour AA ";
  text += options.AaText(model.AaRpn(to), model.AaFps(to));
  const sync::PhaseCell& cell = model.Cell(from, to);
  if (cell.Count < 1) {
    return text + "\nNo readings";
  }
  const std::int32_t mean = base::Round32(cell.Mean());
  text += "\nMean " + std::to_string(mean) + ", minimum " + std::to_string(cell.Min) +
          ", maximum " + std::to_string(cell.Max) + " (RFPS units)";
  text += "\nReadings: " + std::to_string(cell.Count);
  return text;
}

}  // namespace kelvara::app
