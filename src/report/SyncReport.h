#pragma once

#include <string>

#include "platform/DocumentOpener.h"
#include "platform/Machine.h"
#include "sync/DisplayOptions.h"
#include "sync/SyncModel.h"

namespace kelvara::report {

/// The HTML report that is kept for the site: summary, cable lengths, phase matrix.
class SyncReport {
 public:
  SyncReport(const sync::SyncModel& model, const sync::DisplayOptions& options,
             const platform::Machine& machine)
      : model_(model), options_(options), machine_(machine) {}

  /// Writes the report, replacing a file that exists; true when the whole file was written. The
  /// texts are written unchanged, except that blanks at either end of the notes are left out. From
  /// the opening of the file on, a fault shows one message box and returns false, and what was
  /// written stays. A model with more antennas than it can list is a subscript fault before the
  /// file is opened.
  bool GenerateReport(const std::string& fileName, const std::string& site,
                      const std::string& tester, const std::string& notes);

 private:
  const sync::SyncModel& model_;
  const sync::DisplayOptions& options_;
  const platform::Machine& machine_;
};

/// Shows a finished report in the user's web browser; if the desktop cannot, one message box says
/// so.
void OpenReport(const std::string& path, platform::DocumentOpener& documentOpener,
                platform::MessageBoxes& messageBoxes);

}  // namespace kelvara::report
