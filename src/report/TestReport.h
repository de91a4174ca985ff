#pragma once

#include <functional>
#include <string>

#include "platform/DocumentOpener.h"
#include "platform/MessageBoxes.h"
#include "report/SyncReport.h"
#include "sync/SyncModel.h"

namespace kelvara::report {

/// A report of fixed data, to see without a beltpack that reports can be written and opened.
class TestReport {
 public:
  TestReport(sync::SyncModel& model, SyncReport& syncReport,
             platform::DocumentOpener& documentOpener, platform::MessageBoxes& messageBoxes)
      : model_(model),
        syncReport_(syncReport),
        documentOpener_(documentOpener),
        messageBoxes_(messageBoxes) {}

  /// Clears the results, by the operation given, and puts the fixed data in their place; writes
  /// "test.html" into the program's folder and opens it. True when the whole report was written.
  bool Run(const std::function<void()>& clearSyncResults, const std::string& programFolder);

 private:
  void FillModel();

  sync::SyncModel& model_;
  SyncReport& syncReport_;
  platform::DocumentOpener& documentOpener_;
  platform::MessageBoxes& messageBoxes_;
};

}  // namespace kelvara::report
