#pragma once

#include <string>

#include "app/OptionGroups.h"
#include "app/Session.h"
#include "platform/MemoryGrid.h"
#include "platform/MemoryMenuBar.h"
#include "qt/QtFileSystem.h"
#include "support/DesktopDoubles.h"
#include "support/Doubles.h"

namespace kelvara::test {

/// A whole session on the machine's own files, with results to write; the rest of the machine is
/// moved by hand.
struct RealFilesRig {
  RealFilesRig() {
    clock.wall = 20000.5;
    app::CheckOption(menuBar, platform::MenuEntry::mnuFpsOff);
    session.ClearSyncResults();
    constexpr std::int16_t kAas = 12;
    for (std::int16_t aa = 0; aa < kAas; ++aa) {
      session.Model().FindOrAddAa(aa, 3, 90);
    }
    for (std::int16_t from = 0; from < kAas; ++from) {
      session.Model().AddPhase(from, static_cast<std::int16_t>((from + 1) % kAas), 7);
    }
    session.Grid().UpdateSyncGrid();
  }

  ManualClock clock;
  PlainDateFormat dateFormat;
  qt::QtFileSystem files;
  CountingBeeper beeper;
  RecordingMessageBoxes boxes;
  ScriptedEventPump events;
  ScriptedFileChooser chooser;
  RecordingDocumentOpener opener;
  ScriptedSettingsStore store;
  platform::MemoryGrid grid;
  RecordingStatusBar statusBar;
  RecordingLogBox logBox;
  platform::MemoryMenuBar menuBar;
  app::Session session{{clock, dateFormat, files, beeper, boxes, events},
                       {grid, statusBar, logBox, menuBar}};
};

}  // namespace kelvara::test
