#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/Beeper.h"
#include "sync/DisplayOptions.h"
#include "sync/LogFunnel.h"
#include "sync/RfpsReport.h"
#include "sync/SyncModel.h"

namespace kelvara::sync {

/// Adds complete RFPS reports to the sync model and logs one line per neighbour.
class RfpsParser {
 public:
  /// `reportCounted` is called after each report that was counted. It may be empty.
  RfpsParser(SyncModel& model, const DisplayOptions& options, LogFunnel& log,
             platform::Beeper& beeper, std::function<void()> reportCounted = {})
      : model_(model),
        options_(options),
        log_(log),
        beeper_(beeper),
        reportCounted_(std::move(reportCounted)) {}

  /// Reads one report, including its line ends, and adds it to the model. A fault beeps once and
  /// abandons the rest of the report: what was already logged and added stays, but the report is
  /// not counted.
  void ProcessRfpsReport(std::string_view report);

  /// How many reports ended in a fault.
  std::int64_t AbandonedCount() const { return abandonedCount_; }

 private:
  void Record(RfpsReport report);
  void Log(const RfpsEntry& entry);

  SyncModel& model_;
  const DisplayOptions& options_;
  LogFunnel& log_;
  platform::Beeper& beeper_;
  std::function<void()> reportCounted_;
  std::int64_t abandonedCount_ = 0;
  std::string logLine_;
};

}  // namespace kelvara::sync
