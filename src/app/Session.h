#pragma once

#include "capture/DataCapture.h"
#include "capture/ResultsExport.h"
#include "platform/Beeper.h"
#include "platform/Clock.h"
#include "platform/DateFormat.h"
#include "platform/EventPump.h"
#include "platform/FileSystem.h"
#include "platform/GridControl.h"
#include "platform/LogBox.h"
#include "platform/MenuBar.h"
#include "platform/MessageBoxes.h"
#include "platform/StatusBar.h"
#include "report/SyncReport.h"
#include "sync/DisplayOptions.h"
#include "sync/RfpsParser.h"
#include "sync/SyncGrid.h"
#include "sync/SyncModel.h"

namespace kelvara::app {

/// What the session asks of the machine.
struct Machine {
  const platform::Clock& clock;
  const platform::DateFormat& dateFormat;
  platform::FileSystem& fileSystem;
  platform::Beeper& beeper;
  platform::MessageBoxes& messageBoxes;
  platform::EventPump& events;
};

/// The controls that the session shows itself in.
struct Controls {
  platform::GridControl& grid;
  platform::StatusBar& statusBar;
  platform::LogBox& logBox;
  platform::MenuBar& menuBar;
};

/// All that lives as long as the program and is not a control, wired once: the sync model and who
/// fills, shows, logs and reports it. It is the same under the windows and under the console.
class Session {
 public:
  Session(const Machine& machine, const Controls& controls);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  /// Empties the model and the grid, the log box and the totals, and takes back the commands that
  /// need a beltpack.
  void ClearSyncResults();

  sync::SyncModel& Model() { return model_; }
  const sync::SyncModel& Model() const { return model_; }
  sync::RfpsParser& Parser() { return parser_; }
  const sync::RfpsParser& Parser() const { return parser_; }
  sync::SyncGrid& Grid() { return syncGrid_; }
  capture::DataCapture& Capture() { return capture_; }
  capture::ResultsExport& Export() { return resultsExport_; }
  report::SyncReport& Report() { return syncReport_; }

 private:
  Controls controls_;
  sync::SyncModel model_;
  sync::DisplayOptions options_;
  sync::SyncGrid syncGrid_;
  capture::DataCapture capture_;
  sync::RfpsParser parser_;
  capture::ResultsExport resultsExport_;
  report::SyncReport syncReport_;
};

}  // namespace kelvara::app
