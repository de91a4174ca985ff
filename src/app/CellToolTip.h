#pragma once

#include <string>

#include "sync/DisplayOptions.h"
#include "sync/SyncModel.h"

namespace kelvara::app {

/// What a data cell of the grid stands for, for a tool tip: both antennas, and the mean, minimum,
/// maximum and count of the readings in RFPS units. Empty for a cell that stands for no antenna.
std::string CellToolTip(const sync::SyncModel& model, const sync::DisplayOptions& options, int row,
                        int column);

}  // namespace kelvara::app
