#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>

#include "app/OptionGroups.h"
#include "capture/ResultsExport.h"
#include "platform/MemoryGrid.h"
#include "platform/MemoryMenuBar.h"
#include "support/Doubles.h"
#include "sync/SyncGrid.h"

namespace kelvara::test {

/// A results export beside the model, the grid and the option menus that it reads.
struct ExportRig {
  ExportRig() { clock.wall = 20000.5; }

  void Choose(platform::MenuEntry entry) { app::CheckOption(menuBar, entry); }
  void AddAas(std::initializer_list<std::int16_t> rpns) {
    for (const std::int16_t rpn : rpns) {
      model.FindOrAddAa(rpn, 3, 90);
    }
  }
  void Draw() { syncGrid.UpdateSyncGrid(); }
  const std::string& Csv() { return files.files["results.csv"]; }

  ManualClock clock;
  PlainDateFormat dateFormat;
  MemoryFileSystem files;
  CountingBeeper beeper;
  ScriptedEventPump events;
  platform::MemoryMenuBar menuBar;
  platform::MemoryGrid grid;
  sync::SyncModel model;
  sync::SyncGrid syncGrid{model, grid, sync::DisplayOptions(menuBar), events, beeper};
  capture::ResultsExport resultsExport{
      model, grid, sync::DisplayOptions(menuBar), clock, dateFormat, files, beeper};
};

/// The first line of a file written at the rig's first moment.
inline constexpr const char* kCsvFirstLine =
    "File Created by Kelvara v1.1.0 on second1728043200\r\n";

}  // namespace kelvara::test
