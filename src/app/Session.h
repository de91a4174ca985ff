#pragma once

#include <functional>
#include <memory>
#include <string>
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

  /// Empties the model, the grid and the log box. Results of at least one report are kept, in place
  /// of those kept before, until they are restored.
  void ClearSyncResults();

  /// The results that the last clear of at least one report removed; null if there are none.
  const sync::SyncModel* ClearedResults() const { return cleared_.get(); }

  /// Puts the results that were cleared before those that have come since; the log box is not
  /// restored. Returns why it failed, with nothing changed; empty if it succeeded.
  std::string RestoreClearedResults();

  /// Puts older results before those of the model, and forgets the results that were cleared.
  /// Returns why it failed, with nothing changed; empty if it succeeded.
  std::string AddOlderResults(const sync::SyncModel& older);

  /// Replaces the results by those of a recorded session. There is nothing to restore then.
  void ReplaceResults(sync::SyncModel results);

  /// Sets what is called after a report has been counted or the results have been cleared
  /// or restored.
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
  std::unique_ptr<const sync::SyncModel> cleared_;
  sync::SyncGrid syncGrid_;
  capture::DataCapture capture_;
  sync::RfpsParser parser_;
  capture::ResultsExport resultsExport_;
  report::SyncReport syncReport_;
  std::function<void()> totalsChanged_;
};

}  // namespace kelvara::app
