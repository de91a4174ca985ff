#pragma once

#include <functional>
#include <utility>

#include "app/OptionTable.h"
#include "platform/SettingsStore.h"

namespace kelvara::app {

/// The display options between runs: read from the settings when the link starts, stored when the
/// user chooses an entry.
class DisplaySettings {
 public:
  DisplaySettings(platform::SettingsStore& settings, Options& options)
      : settings_(settings), options_(options) {}

  /// What is told when an option has been set, so that the menus and the log box can follow.
  void SetOptionsChanged(std::function<void()> optionsChanged) {
    optionsChanged_ = std::move(optionsChanged);
  }

  /// Sets the options to the stored ones. Nothing is written.
  void GetDisplaySettings();

  /// What an entry of the option menus does when the user chooses it: sets the option and stores
  /// the choice. A store that cannot be written is a file fault; the option is set all the same.
  void Choose(const OptionEntry& entry);

 private:
  void OptionsChanged();

  platform::SettingsStore& settings_;
  Options& options_;
  std::function<void()> optionsChanged_;
};

}  // namespace kelvara::app
