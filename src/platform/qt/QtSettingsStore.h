#pragma once

#include <QString>
#include <chrono>
#include <string>
#include <utility>

#include "platform/SettingsStore.h"

namespace kelvara::qt {

/// The settings file of an application, APPLICATION/APPLICATION.ini in the user's configuration
/// folder: XDG_CONFIG_HOME, else .config in the home folder; on Windows the roaming application
/// data.
QString UserSettingsFile(std::string_view application);

/// The settings in a file that a person can read and edit: a group for each section, a line
/// KEY=VALUE for each value.
///
/// Every reading reads the file, every writing replaces it in one step, so that it is never half
/// written, whatever happens; writers wait for each other and keep what the others wrote. A file
/// that is broken is set aside, as APPLICATION.ini.broken-1 or the next number that is free, and
/// the settings start anew.
class QtSettingsStore : public platform::SettingsStore {
 public:
  /// How long to wait for another program that is writing, where nobody waits for this one.
  static constexpr std::chrono::milliseconds kPatience{2000};

  /// One section of a settings file.
  QtSettingsStore(QString file, std::string section, std::chrono::milliseconds patience = kPatience)
      : file_(std::move(file)), section_(std::move(section)), patience_(patience) {}

  /// Never faults: a file that cannot be read holds nothing.
  std::string Read(std::string_view key, std::string_view defaultText) const override;

  /// The text is in the file when this returns. A file that cannot be written is a file fault, and
  /// stays as it was.
  void Write(std::string_view key, std::string_view text) override;

 private:
  QString file_;
  std::string section_;
  std::chrono::milliseconds patience_;
};

}  // namespace kelvara::qt
