#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>

#include "capture/ResultsExport.h"
#include "support/DesktopDoubles.h"
#include "sync/GridCells.h"
#include "sync/SyncGrid.h"

namespace kelvara::test {

/// A results export with the model, the grid and the options that it reads.
struct ExportRig : DesktopDoubles<> {
  ExportRig() { clock.wall = 20000.5; }

  void AddAas(std::initializer_list<std::int16_t> rpns) {
    for (const std::int16_t rpn : rpns) {
      model.FindOrAddAa(rpn, 3, 90);
    }
  }
  void Draw() { syncGrid.UpdateSyncGrid(); }
  const std::string& Csv() { return files.files["results.csv"]; }

  sync::GridCells grid;
  sync::SyncModel model;
  sync::DisplayOptions options{.fpsShown = true};
  sync::SyncGrid syncGrid{model, grid, options, machine};
  capture::ResultsExport resultsExport{model, grid, options, machine};
};

/// The first line of a file written at the rig's start time.
inline constexpr const char* kCsvFirstLine =
    "File Created by Kelvara v1.1.0 on second1728043200\r\n";

}  // namespace kelvara::test
