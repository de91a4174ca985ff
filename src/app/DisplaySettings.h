#pragma once

#include "platform/LogBox.h"
#include "platform/MenuBar.h"
#include "platform/ProgramSettings.h"

namespace kelvara::app {

/// The display options between runs: applied to the menus at start-up, stored when the user chooses
/// an entry. At run time they are the menus' check marks and nothing else.
class DisplaySettings {
 public:
  DisplaySettings(platform::ProgramSettings settings, platform::MenuBar& menuBar,
                  platform::LogBox& logBox)
      : settings_(settings), menuBar_(menuBar), logBox_(logBox) {}

  /// Sets the menus and the log box from the stored options. Nothing is written.
  void GetDisplaySettings();

  /// What an entry of the display menus does when the user chooses it: checks it alone of its
  /// group, shows or hides the log box, and stores the choice. A store that cannot be written is a
  /// file fault.
  void Choose(platform::MenuEntry entry);

 private:
  bool ReadBoolean(const char* key) const;
  int ReadInteger(const char* key) const;
  void ShowLog(bool shown);

  platform::ProgramSettings settings_;
  platform::MenuBar& menuBar_;
  platform::LogBox& logBox_;
};

}  // namespace kelvara::app
