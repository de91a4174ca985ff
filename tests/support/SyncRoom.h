#pragma once

#include <cstdint>

#include "platform/MemoryGrid.h"
#include "platform/MemoryMenuBar.h"
#include "support/Doubles.h"
#include "support/RecordingLog.h"
#include "support/ReportText.h"
#include "sync/RfpsParser.h"
#include "sync/SyncGrid.h"
#include "sync/SyncModel.h"
#include "sync/Totals.h"

namespace kelvara::test {

/// The sync model with its parser and its grid, wired as in the program.
struct SyncRoom {
  explicit SyncRoom(platform::GridControl& shownGrid)
      : syncGrid(model, shownGrid, options, events, beeper) {}
  SyncRoom() : SyncRoom(grid) {}

  /// Empties model, grid and totals.
  void Clear() {
    syncGrid.Clear();
    model.Clear();
    sync::ShowTotals(model, statusBar);
  }

  void Process(std::string_view report) { parser.ProcessRfpsReport(report); }

  /// Fills the model with the antennas RPN 0 to `count` - 1, FPS 3, FPN 5A.
  void AddAas(int count) {
    for (int rpn = 0; rpn < count; ++rpn) {
      model.FindOrAddAa(static_cast<std::int16_t>(rpn), 3, 0x5A);
    }
  }

  void ShowRpnHex(bool hex) {
    menuBar.SetChecked(platform::MenuEntry::mnuRpnHex, hex);
    menuBar.SetChecked(platform::MenuEntry::mnuRpnDecimal, !hex);
  }
  void ShowFps(bool shown) {
    menuBar.SetChecked(platform::MenuEntry::mnuFpsOn, shown);
    menuBar.SetChecked(platform::MenuEntry::mnuFpsOff, !shown);
  }
  void ShowUnits(sync::PhaseUnits units) {
    menuBar.SetChecked(platform::MenuEntry::mnuDispRFPS, units == sync::PhaseUnits::Rfps);
    menuBar.SetChecked(platform::MenuEntry::mnuDispSync, units == sync::PhaseUnits::AaSync);
    menuBar.SetChecked(platform::MenuEntry::mnuDispMetres, units == sync::PhaseUnits::Metres);
  }

  const std::string& ReportsPanel() { return statusBar.panels[platform::StatusPanel::Reports]; }
  const std::string& AasPanel() { return statusBar.panels[platform::StatusPanel::Aas]; }

  sync::SyncModel model;
  platform::MemoryGrid grid;
  platform::MemoryMenuBar menuBar;
  sync::DisplayOptions options{menuBar};
  RecordingLog log;
  RecordingStatusBar statusBar;
  CountingBeeper beeper;
  ScriptedEventPump events;
  sync::SyncGrid syncGrid;
  sync::RfpsParser parser{model, options, log, statusBar, beeper};
};

}  // namespace kelvara::test
