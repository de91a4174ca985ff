#include "app/Session.h"

#include "base/Fault.h"

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
  if (model_.ReportCount() > 0) {
    cleared_ = std::make_unique<sync::SyncModel>(model_);
  }
  model_.Clear();
  if (logBox_ != nullptr) {
    logBox_->Clear();
  }
  TotalsChanged();
}

std::string Session::RestoreClearedResults() {
  return cleared_ == nullptr ? "No results have been cleared" : AddOlderResults(*cleared_);
}

std::string Session::AddOlderResults(const sync::SyncModel& older) {
  try {
    model_.AddOlder(older);
  } catch (const base::Fault& fault) {
    return fault.Kind() == base::FaultKind::Subscript
               ? "Together there would be more than " + std::to_string(sync::kMaxAas) + " antennas"
               : "Together the readings would be too many to be counted";
  }
  cleared_.reset();
  TotalsChanged();
  return {};
}

void Session::ReplaceResults(sync::SyncModel results) {
  model_ = std::move(results);
  cleared_.reset();
  TotalsChanged();
}

void Session::TotalsChanged() {
  if (totalsChanged_) {
    totalsChanged_();
  }
}

}  // namespace kelvara::app
