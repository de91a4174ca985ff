#include "app/CellToolTip.h"

#include <algorithm>

#include "base/Rounding.h"
#include "survey/Figures.h"

namespace kelvara::app {
namespace {

/// The line of a suspect pair; empty for any other.
std::string SuspectLine(const survey::SurveyResult& survey, int from, int to) {
  for (const survey::SurveyPair& pair : survey.pairs) {
    const bool isForward = pair.a == from && pair.b == to;
    if (pair.suspect && (isForward || (pair.a == to && pair.b == from))) {
      const double residual = isForward ? pair.residual : -pair.residual;
      return "\nSuspect: residual " + survey::Decimals(residual, 1) + " RFPS units (" +
             survey::Decimals(residual * survey::kMetresPerRfpsUnit, 0) + " m), " +
             (pair.rejected ? "left out of the survey" : "in doubt");
    }
  }
  return {};
}

}  // namespace

std::string CellToolTip(const sync::SyncModel& model, const sync::DisplayOptions& options,
                        const survey::SurveyResult& survey, int row, int column) {
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
  return text + SuspectLine(survey, from, to);
}

}  // namespace kelvara::app
