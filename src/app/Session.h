#pragma once

#include <functional>
#include <utility>

#include "app/OptionTable.h"
#include "capture/DataCapture.h"
#include "capture/ResultsExport.h"
#include "platform/Machine.h"
#include "report/SyncReport.h"
#include "sync/GridCells.h"
#include "sync/RfpsParser.h"
#include "sync/SyncGrid.h"
#include "sync/SyncModel.h"

namespace kelvara::app {

/// The sync model with everything that fills, shows, logs and reports it, connected once for the
/// windows and the console.
class Session {
 public:
  /// `logBox` is null if there is none.
  Session(const platform::Machine& machine, sync::GridCells& grid, capture::LogBox* logBox);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  /// Empties the model, the grid and the log box.
  void ClearSyncResults();

  /// Sets what is called after a report has been counted or the results have been cleared.
  void SetTotalsChanged(std::function<void()> totalsChanged) {
    totalsChanged_ = std::move(totalsChanged);
  }

  app::Options& Options() { return options_; }
  sync::SyncModel& Model() { return model_; }
  const sync::SyncModel& Model() const { return model_; }
  sync::RfpsParser& Parser() { return parser_; }
  const sync::RfpsParser& Parser() const { return parser_; }
  sync::SyncGrid& Grid() { return syncGrid_; }
  capture::DataCapture& Capture() { return capture_; }
  const capture::DataCapture& Capture() const { return capture_; }
  capture::ResultsExport& Export() { return resultsExport_; }
  report::SyncReport& Report() { return syncReport_; }

 private:
  void TotalsChanged();

  capture::LogBox* logBox_;
  app::Options options_ = FirstOptions();
  sync::SyncModel model_;
  sync::SyncGrid syncGrid_;
  capture::DataCapture capture_;
  sync::RfpsParser parser_;
  capture::ResultsExport resultsExport_;
  report::SyncReport syncReport_;
  std::function<void()> totalsChanged_;
};

}  // namespace kelvara::app
