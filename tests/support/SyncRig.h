#pragma once

#include <cstdint>

#include "support/Doubles.h"
#include "support/RecordingLog.h"
#include "support/ReportText.h"
#include "sync/GridCells.h"
#include "sync/RfpsParser.h"
#include "sync/SyncGrid.h"
#include "sync/SyncModel.h"

namespace kelvara::test {

/// The sync model with its parser and grid, connected as in the program.
struct SyncRig : MachineDoubles<> {
  explicit SyncRig(sync::GridCells& shownGrid) : syncGrid(model, shownGrid, options, machine) {
    options.fpsShown = true;
  }
  SyncRig() : SyncRig(grid) {}

  /// Clears the model, the grid and the totals.
  void Clear() {
    syncGrid.Clear();
    model.Clear();
    ShowTotals();
  }

  void Process(std::string_view report) { parser.ProcessRfpsReport(report); }

  /// Fills the model with the antennas RPN 0 to `count` - 1, FPS 3, FPN 5A.
  void AddAas(int count) {
    for (int rpn = 0; rpn < count; ++rpn) {
      model.FindOrAddAa(static_cast<std::int16_t>(rpn), 3, 0x5A);
    }
  }

  sync::SyncModel model;
  sync::GridCells grid;
  sync::DisplayOptions options;
  RecordingLog log;
  sync::SyncGrid syncGrid;
  /// The totals as last reported.
  int shownReports = 0;
  int shownAas = 0;
  sync::RfpsParser parser{model, options, log, beeper, [this] { ShowTotals(); }};

 private:
  void ShowTotals() {
    shownReports = model.ReportCount();
    shownAas = model.AaCount();
  }
};

}  // namespace kelvara::test
