#pragma once

#include <functional>
#include <string>

#include "platform/Desktop.h"
#include "report/SyncReport.h"
#include "sync/SyncModel.h"

namespace kelvara::report {

/// A report of fixed data, which shows without a beltpack that reports can be written and opened.
class TestReport {
 public:
  TestReport(sync::SyncModel& model, SyncReport& syncReport, const platform::Desktop& desktop)
      : model_(model), syncReport_(syncReport), desktop_(desktop) {}

  /// Clears the results by the operation given, fills in the fixed data, writes "test.html" into
  /// the program's folder and opens it. True when the whole report was written.
  bool Run(const std::function<void()>& clearSyncResults);

 private:
  void FillModel();

  sync::SyncModel& model_;
  SyncReport& syncReport_;
  const platform::Desktop& desktop_;
};

}  // namespace kelvara::report
