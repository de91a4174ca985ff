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

  /// Sets what is called after an option has been set, so that the menus and the log box can
  /// follow.
  /// It is given the entry that the user chose, or null when all options were set.
  void SetOptionsChanged(std::function<void(const OptionEntry* chosen)> optionsChanged) {
    optionsChanged_ = std::move(optionsChanged);
  }

  /// Sets the options to the stored ones. Nothing is written.
  void GetDisplaySettings();

  /// Sets the option of a menu entry that the user has chosen, and stores the choice. A store that
  /// cannot be written is a file fault; the option is set anyway.
  void Choose(const OptionEntry& entry);

 private:
  void OptionsChanged(const OptionEntry* chosen);

  platform::SettingsStore& settings_;
  Options& options_;
  std::function<void(const OptionEntry* chosen)> optionsChanged_;
};

}  // namespace kelvara::app
