#pragma once

#include <string>

#include "app/OptionGroups.h"
#include "app/Session.h"
#include "platform/MemoryGrid.h"
#include "platform/MemoryMenuBar.h"
#include "support/Doubles.h"

namespace kelvara::test {

/// A whole session on a machine that tests move by hand, with files of the kind given.
template <class Files>
struct SessionRigOn {
  SessionRigOn() {
    clock.wall = 20000.5;
    app::CheckOption(menuBar, platform::MenuEntry::mnuFpsOff);
    session.ClearSyncResults();
  }

  std::string Panel(platform::StatusPanel panel) const { return statusBar.panels.at(panel); }

  ManualClock clock;
  PlainDateFormat dateFormat;
  Files files;
  CountingBeeper beeper;
  RecordingMessageBoxes boxes;
  ScriptedEventPump events;
  platform::MemoryGrid grid;
  RecordingStatusBar statusBar;
  RecordingLogBox logBox;
  platform::MemoryMenuBar menuBar;
  app::Session session{{clock, dateFormat, files, beeper, boxes, events},
                       {grid, statusBar, logBox, menuBar}};
};

using SessionRig = SessionRigOn<MemoryFileSystem>;

}  // namespace kelvara::test
