#pragma once

#include <string>

#include "sync/DisplayOptions.h"
#include "sync/SyncModel.h"

namespace kelvara::app {

/// The tool tip of a data cell of the grid: both antennas, and the mean, minimum, maximum and count
/// of the readings in RFPS units. Empty for a cell without an antenna.
std::string CellToolTip(const sync::SyncModel& model, const sync::DisplayOptions& options, int row,
                        int column);

}  // namespace kelvara::app
