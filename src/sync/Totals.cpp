#include "sync/Totals.h"

#include <string>

namespace kelvara::sync {

using platform::StatusPanel;

void ShowTotals(const SyncModel& model, platform::StatusBar& statusBar) {
  statusBar.SetPanel(StatusPanel::Reports, "Reports: " + std::to_string(model.ReportCount()));
  statusBar.SetPanel(StatusPanel::Aas, "AAs: " + std::to_string(model.AaCount()));
}

}  // namespace kelvara::sync
