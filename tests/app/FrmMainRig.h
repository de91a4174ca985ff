#pragma once

#include <QAction>
#include <QLabel>
#include <QTimer>
#include <string>

#include "app/FrmMain.h"
#include "platform/widgets/QtDesktop.h"
#include "platform/widgets/QtFileChooser.h"
#include "platform/widgets/QtMessageBoxes.h"
#include "support/BoxAnswer.h"
#include "support/ChooserUser.h"
#include "support/DesktopDoubles.h"
#include "support/Doubles.h"
#include "support/ScriptedPort.h"
#include "support/WindowDriver.h"

namespace kelvara::test {

/// The real main window on a scripted port, with a clock that tests move, files in memory, and real
/// boxes and choosers.
class FrmMainRig {
 public:
  FrmMainRig() { clock.wall = 20000.5; }

  /// Opens the window and starts up as the program does.
  void Open() {
    ShowWindow(window);
    window.Form_Load();
  }

  /// Takes a report of three antennas: 1 is synchronised to, 6 and 2 are neighbours.
  void TakeReport() {
    window.ProcessRfpsReport(
        "rfps\r\n"
        "100ec5A301 Sync\r\n"
        "100ec5A302 Neighbour phase =  -11\r\n"
        "100ec5A406 Neighbour phase =    7\r\n");
  }

  /// One tick of a timer of the window.
  void Tick(const char* timer) {
    QMetaObject::invokeMethod(&Find<QTimer>(window, timer), "timeout");
    QCoreApplication::processEvents();
  }

  QAction& Entry(const char* name) { return Find<QAction>(window, name); }
  void Choose(const char* name) { Entry(name).trigger(); }
  std::string Panel(int number) {
    return Find<QLabel>(window, ("Panel" + std::to_string(number)).c_str()).text().toStdString();
  }
  sync::SyncGridView& Grid() { return Find<sync::SyncGridView>(window, "Grid"); }
  app::LogTextBox& TextLog() { return Find<app::LogTextBox>(window, "TextLog"); }
  std::string Cell(int row, int column) {
    return Grid().model()->index(row, column).data().toString().toStdString();
  }

  ManualClock clock;
  PlainDateFormat dateFormat;
  MemoryFileSystem files;
  CountingBeeper beeper;
  widgets::QtMessageBoxes boxes;
  widgets::QtFileChooser chooser;
  RecordingDocumentOpener opener;
  ScriptedSettingsStore store;
  ScriptedPort port;
  widgets::QtEventPump events;
  platform::Desktop desktop{{.clock = clock,
                             .dateFormat = dateFormat,
                             .fileSystem = files,
                             .beeper = beeper,
                             .messageBoxes = boxes,
                             .events = events},
                            chooser,
                            opener,
                            store,
                            "/program"};
  app::FrmMain window{desktop, port, [](int number) {
                        return "/dev/ttyUSB" + std::to_string(number) + ": ready to be opened.";
                      }};
};

}  // namespace kelvara::test
