#pragma once

#include <QString>
#include <chrono>
#include <string>
#include <utility>

#include "platform/SettingsStore.h"

namespace kelvara::qt {

/// The settings in a file that a person can read and edit: APPLICATION/APPLICATION.ini in the
/// user's configuration folder, a group for each section, a line KEY=VALUE for each value.
///
/// Every reading reads the file, every writing replaces it in one step, so that it is never half
/// written, whatever happens; writers wait for each other and keep what the others wrote. A file
/// that is broken is set aside, as APPLICATION.ini.broken-1 or the next number that is free, and
/// the settings start anew.
class QtSettingsStore : public platform::SettingsStore {
 public:
  /// How long to wait for another program that is writing, where nobody waits for this one.
  static constexpr std::chrono::milliseconds kPatience{2000};

  /// Over the user's configuration folder: XDG_CONFIG_HOME, else .config in the home folder; on
  /// Windows the roaming application data.
  explicit QtSettingsStore(std::chrono::milliseconds patience = kPatience);

  /// Over another configuration folder.
  explicit QtSettingsStore(QString configFolder, std::chrono::milliseconds patience = kPatience)
      : configFolder_(std::move(configFolder)), patience_(patience) {}

  /// Never faults: a file that cannot be read holds nothing.
  std::string Read(std::string_view application, std::string_view section, std::string_view key,
                   std::string_view defaultText) const override;

  /// The text is in the file when this returns. A file that cannot be written is a file fault, and
  /// stays as it was.
  void Write(std::string_view application, std::string_view section, std::string_view key,
             std::string_view text) override;

  /// Where an application's settings are.
  QString FileOf(std::string_view application) const;

 private:
  QString configFolder_;
  std::chrono::milliseconds patience_;
};

}  // namespace kelvara::qt
