#pragma once

#include <string>
#include <string_view>

#include "base/Fault.h"
#include "platform/Desktop.h"

namespace kelvara::capture {

/// The file names that the dialogs remember between runs: of the last capture and of the last
/// report. Each is an empty text until one was saved. A name that cannot be kept is one beep: the
/// dialog's work, which is done by then, goes on.
class LastFilenames {
 public:
  explicit LastFilenames(const platform::Desktop& desktop)
      : settings_(desktop.settings), beeper_(desktop.beeper) {}

  /// The last capture file. Its folder is also where the report and the export start to look.
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
