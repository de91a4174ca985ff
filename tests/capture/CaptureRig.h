#pragma once

#include <string>

#include "capture/DataCapture.h"
#include "platform/MemoryMenuBar.h"
#include "support/Doubles.h"

namespace kelvara::test {

/// A data capture on a machine that tests move by hand.
struct CaptureRig {
  CaptureRig() { clock.wall = 20000.5; }

  std::string Panel() const {
    const auto found = statusBar.panels.find(platform::StatusPanel::Capture);
    return found == statusBar.panels.end() ? std::string() : found->second;
  }

  bool IsVisible(platform::MenuEntry entry) const { return menuBar.IsVisible(entry); }
  bool IsEnabled(platform::MenuEntry entry) const { return menuBar.IsEnabled(entry); }

  ManualClock clock;
  PlainDateFormat dateFormat;
  MemoryFileSystem files;
  RecordingLogBox logBox;
  RecordingStatusBar statusBar;
  platform::MemoryMenuBar menuBar;
  RecordingMessageBoxes boxes;
  capture::DataCapture capture{clock, dateFormat, files, logBox, statusBar, menuBar, boxes};
};

/// The line that an entry makes at the rig's first moment.
inline std::string EntryLine(const std::string& entry) {
  return "second1728043200, " + entry + "\r\n";
}

}  // namespace kelvara::test
