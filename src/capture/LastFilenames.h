#pragma once

#include <string>
#include <string_view>

#include "base/Fault.h"
#include "platform/Desktop.h"

namespace kelvara::capture {

/// The file names that the dialogs remember between runs: of the last capture and of the last
/// report. Each is empty until a name has been saved. A name that cannot be stored is one beep and
/// no fault, as the dialog's work is done by then.
class LastFilenames {
 public:
  explicit LastFilenames(const platform::Desktop& desktop)
      : settings_(desktop.settings), beeper_(desktop.beeper) {}

  /// The last capture file. The file choosers of the report and the export also start in its
  /// folder.
  std::string GetLastFilename() const { return settings_.Read(kLastFileKey, ""); }
  void SaveLastFilename(std::string_view name) { Save(kLastFileKey, name); }

  /// The last report file.
  std::string GetLastReportFilename() const { return settings_.Read(kLastReportFileKey, ""); }
  void SaveLastReportFilename(std::string_view name) { Save(kLastReportFileKey, name); }

 private:
  static constexpr std::string_view kLastFileKey = "LastFile";
  static constexpr std::string_view kLastReportFileKey = "LastReportFile";

  void Save(std::string_view key, std::string_view name) {
    try {
      settings_.Write(key, name);
    } catch (const base::Fault&) {
      beeper_.Beep();
    }
  }

  platform::SettingsStore& settings_;
  platform::Beeper& beeper_;
};

}  // namespace kelvara::capture
