#include "app/Session.h"

namespace kelvara::app {

Session::Session(const platform::Machine& machine, sync::GridCells& grid, capture::LogBox* logBox)
    : logBox_(logBox),
      syncGrid_(model_, grid, options_, machine),
      capture_(machine, logBox),
      parser_(model_, options_, capture_, machine.beeper, [this] { TotalsChanged(); }),
      resultsExport_(model_, grid, options_, machine),
      syncReport_(model_, options_, machine) {}

void Session::ClearSyncResults() {
  syncGrid_.Clear();
  model_.Clear();
  if (logBox_ != nullptr) {
    logBox_->Clear();
  }
  TotalsChanged();
}

void Session::TotalsChanged() {
  if (totalsChanged_) {
    totalsChanged_();
  }
}

}  // namespace kelvara::app
