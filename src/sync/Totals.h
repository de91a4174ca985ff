#pragma once

#include "platform/StatusBar.h"
#include "sync/SyncModel.h"

namespace kelvara::sync {

/// Shows the numbers of reports and antennas in their panels: "Reports: 12", "AAs: 4".
void ShowTotals(const SyncModel& model, platform::StatusBar& statusBar);

}  // namespace kelvara::sync
