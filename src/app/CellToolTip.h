#pragma once

#include <string>

#include "survey/SurveyResult.h"
#include "sync/DisplayOptions.h"
#include "sync/SyncModel.h"

namespace kelvara::app {

/// The tool tip of a data cell of the grid: both antennas, and the mean, minimum, maximum and count
/// of the readings in RFPS units, and the residual of a pair that the survey suspects. Empty for a
/// cell without an antenna.
std::string CellToolTip(const sync::SyncModel& model, const sync::DisplayOptions& options,
                        const survey::SurveyResult& survey, int row, int column);

}  // namespace kelvara::app
