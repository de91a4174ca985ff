#pragma once

#include <string>

#include "platform/Clock.h"
#include "platform/DateFormat.h"
#include "platform/FileSystem.h"
#include "platform/MessageBoxes.h"
#include "sync/DisplayOptions.h"
#include "sync/SyncModel.h"

namespace kelvara::report {

/// The HTML report that stays with the site: summary, cable lengths, phase matrix.
class SyncReport {
 public:
  SyncReport(const sync::SyncModel& model, sync::DisplayOptions options,
             const platform::Clock& clock, const platform::DateFormat& dateFormat,
             platform::FileSystem& fileSystem, platform::MessageBoxes& messageBoxes)
      : model_(model),
        options_(options),
        clock_(clock),
        dateFormat_(dateFormat),
        fileSystem_(fileSystem),
        messageBoxes_(messageBoxes) {}

  /// Writes the report, replacing a file that exists; true when the whole file was written. The
  /// texts go in as they stand, notes without blanks at their ends. From the moment the file is
  /// opened any fault is one message box and false, and what was written stays. A model with more
  /// antennas than it can list is a subscript fault before the file is opened.
  bool GenerateReport(const std::string& fileName, const std::string& site,
                      const std::string& tester, const std::string& notes);

 private:
  const sync::SyncModel& model_;
  sync::DisplayOptions options_;
  const platform::Clock& clock_;
  const platform::DateFormat& dateFormat_;
  platform::FileSystem& fileSystem_;
  platform::MessageBoxes& messageBoxes_;
};

}  // namespace kelvara::report
