#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Beeper.h"
#include "platform/StatusBar.h"
#include "sync/DisplayOptions.h"
#include "sync/LogFunnel.h"
#include "sync/RfpsReport.h"
#include "sync/SyncModel.h"

namespace kelvara::sync {

/// Takes whole RFPS reports into the sync model, with one log line per neighbour.
class RfpsParser {
 public:
  RfpsParser(SyncModel& model, DisplayOptions options, LogFunnel& log,
             platform::StatusBar& statusBar, platform::Beeper& beeper)
      : model_(model), options_(options), log_(log), statusBar_(statusBar), beeper_(beeper) {}

  /// Reads one report, line ends included, and adds it to the model. A fault beeps once and
  /// abandons the rest of the report: what was logged and added before stays, the report is not
  /// counted.
  void ProcessRfpsReport(std::string_view report);

  /// How many reports ended in a fault.
  std::int64_t AbandonedCount() const { return abandonedCount_; }

 private:
  void Record(RfpsReport report);
  void Log(const RfpsEntry& entry);

  SyncModel& model_;
  DisplayOptions options_;
  LogFunnel& log_;
  platform::StatusBar& statusBar_;
  platform::Beeper& beeper_;
  std::int64_t abandonedCount_ = 0;
  std::string logLine_;
};

}  // namespace kelvara::sync
