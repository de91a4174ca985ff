#pragma once

#include "app/Session.h"
#include "cli/ConsoleControls.h"
#include "platform/MemoryGrid.h"
#include "platform/MemoryMenuBar.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/QtDateFormat.h"
#include "platform/qt/QtFileSystem.h"

namespace kelvara::cli {

/// The machine and the controls of a program without a window: the grid is kept in memory, beeps
/// are counted.
class ConsoleMachine {
 public:
  /// `speed` is how many times as fast as real time the clock runs.
  explicit ConsoleMachine(double speed = 1.0) : clock_(speed) {}

  app::Machine Machine();
  app::Controls Controls();

  const platform::Clock& Clock() const { return clock_; }
  platform::FileSystem& FileSystem() { return fileSystem_; }
  const platform::MemoryGrid& Grid() const { return grid_; }
  platform::MenuBar& MenuBar() { return menuBar_; }
  const ConsoleStatusBar& StatusBar() const { return statusBar_; }
  int BeepCount() const { return beeper_.Count(); }

 private:
  qt::QtClock clock_;
  qt::QtDateFormat dateFormat_;
  qt::QtFileSystem fileSystem_;
  ConsoleBeeper beeper_;
  ConsoleMessageBoxes messageBoxes_;
  ConsoleEventPump events_;
  ConsoleStatusBar statusBar_;
  ConsoleLogBox logBox_;
  platform::MemoryGrid grid_;
  platform::MemoryMenuBar menuBar_;
};

}  // namespace kelvara::cli
