#pragma once

#include <optional>
#include <string>

#include "capture/LastFilenames.h"
#include "platform/Desktop.h"
#include "report/RememberedFields.h"
#include "report/SyncReport.h"
#include "sync/SyncModel.h"

namespace kelvara::report {

/// What the report dialog does, without its window. It must outlive every window that uses it.
class ReportDialog {
 public:
  ReportDialog(const sync::SyncModel& model, SyncReport& syncReport,
               const platform::Desktop& desktop)
      : model_(model),
        syncReport_(syncReport),
        desktop_(desktop),
        lastFilenames_(desktop),
        rememberedFields_(desktop.fileSystem, desktop.programFolder) {}

  /// Whether there is anything to report on; if not, one message box says so and the dialog must
  /// not be shown.
  bool HasPhaseInformation();

  /// The readings are simulated: from now on, empty notes are offered with a line that says so. It
  /// goes into the report, but is never remembered.
  void SetDemo() { isDemo_ = true; }

  /// When the dialog opens: fills in what was remembered and returns the last report file name.
  std::string Form_Load(ReportFields& fields);

  /// Lets the user choose a file to write to; nothing on cancel. Offers a name with today's date if
  /// no report was written before. If the last capture file name has no folder, the chooser is not
  /// shown.
  std::optional<std::string> CommandBrowse_Click();

  /// Asks before a file is replaced, writes the report, remembers the texts and shows the report.
  /// True when the dialog is to close. A fault that the report leaves to its caller is passed on.
  bool CommandGenerate_Click(const std::string& fileName, const ReportFields& fields);

 private:
  bool MayWrite(const std::string& fileName);

  const sync::SyncModel& model_;
  SyncReport& syncReport_;
  const platform::Desktop& desktop_;
  capture::LastFilenames lastFilenames_;
  RememberedFields rememberedFields_;
  bool isDemo_ = false;
};

}  // namespace kelvara::report
