#pragma once

#include <string>
#include <string_view>

#include "platform/ProgramSettings.h"

namespace kelvara::platform {

/// The file names that the dialogs remember between runs: of the last capture and of the last
/// report. Each is an empty text until one was saved.
class LastFilenames {
 public:
  explicit LastFilenames(ProgramSettings settings) : settings_(settings) {}

  /// The last capture file. Its folder is also where the report and the export start to look.
  std::string GetLastFilename() const { return settings_.Read(kLastFileKey, ""); }
  void SaveLastFilename(std::string_view name) { settings_.Write(kLastFileKey, name); }

  /// The last report file.
  std::string GetLastReportFilename() const { return settings_.Read(kLastReportFileKey, ""); }
  void SaveLastReportFilename(std::string_view name) { settings_.Write(kLastReportFileKey, name); }

 private:
  static constexpr std::string_view kLastFileKey = "LastFile";
  static constexpr std::string_view kLastReportFileKey = "LastReportFile";

  ProgramSettings settings_;
};

}  // namespace kelvara::platform
