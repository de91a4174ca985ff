#pragma once

#include <QString>
#include <chrono>
#include <string>
#include <utility>

#include "platform/SettingsStore.h"

namespace kelvara::qt {

/// The settings file of an application, APPLICATION/APPLICATION.ini in the user's configuration
/// folder.
QString UserSettingsFile(std::string_view application);

/// Settings in a file that people can read and edit: a group for each section, a line KEY=VALUE for
/// each value.
///
/// Each read loads the file and each write replaces it in one step, so that it is never half
/// written. Writers wait for each other and keep each other's values. A broken file is set aside as
/// APPLICATION.ini.broken-1, or under the next free number, and the settings start empty.
class QtSettingsStore : public platform::SettingsStore {
 public:
  /// How long to wait for another program that is writing, if no user is kept waiting.
  static constexpr std::chrono::milliseconds kPatience{2000};

  /// One section of a settings file.
  QtSettingsStore(QString file, std::string section, std::chrono::milliseconds patience = kPatience)
      : file_(std::move(file)), section_(std::move(section)), patience_(patience) {}

  /// Never faults; a file that cannot be read counts as empty.
  std::string Read(std::string_view key, std::string_view defaultText) const override;

  /// On return the text is in the file. A file that cannot be written is a file fault and stays as
  /// it was.
  void Write(std::string_view key, std::string_view text) override;

 private:
  QString file_;
  std::string section_;
  std::chrono::milliseconds patience_;
};

}  // namespace kelvara::qt
