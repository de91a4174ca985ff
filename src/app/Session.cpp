#include "app/Session.h"

#include "sync/Totals.h"

namespace kelvara::app {

using platform::MenuEntry;

Session::Session(const Machine& machine, const Controls& controls)
    : controls_(controls),
      options_(controls.menuBar),
      syncGrid_(model_, controls.grid, options_, machine.events, machine.beeper),
      capture_(machine.clock, machine.dateFormat, machine.fileSystem, controls.logBox,
               controls.statusBar, controls.menuBar, machine.messageBoxes),
      parser_(model_, options_, capture_, controls.statusBar, machine.beeper),
      resultsExport_(model_, controls.grid, options_, machine.clock, machine.dateFormat,
                     machine.fileSystem, machine.beeper),
      syncReport_(model_, options_, machine.clock, machine.dateFormat, machine.fileSystem,
                  machine.messageBoxes) {}

void Session::ClearSyncResults() {
  syncGrid_.Clear();
  controls_.menuBar.SetEnabled(MenuEntry::mnuClearGrid, false);
  controls_.menuBar.SetEnabled(MenuEntry::mnuForceSearch, false);
  model_.Clear();
  controls_.logBox.Clear();
  sync::ShowTotals(model_, controls_.statusBar);
}

}  // namespace kelvara::app
