#pragma once

#include "app/LiveSession.h"
#include "platform/MemoryGrid.h"
#include "platform/MemoryMenuBar.h"
#include "sim/DemoSerialPort.h"
#include "sim/Site.h"
#include "support/DesktopDoubles.h"
#include "support/Doubles.h"
#include "support/LinkRig.h"
#include "support/VirtualTime.h"

namespace kelvara::test {

/// A whole live session in virtual time, with the built-in beltpack on the line.
struct LiveRig {
  void Start() {
    live.Port().OpenComPort(1);
    live.StartLink();
  }

  ManualClock clock;
  VirtualTime time{clock};
  VirtualTime::Timer rfpsTimer{time, link::kRfpsTimerMilliseconds};
  VirtualTime::Timer timerComPort{time, link::kTimerComPortMilliseconds};
  VirtualTime::Timer silenceTimer{time, link::kSilenceMilliseconds};
  VirtualTime::Timer delivery{time, 50};
  sim::Beltpack beltpack{sim::DemoSite()};
  sim::DemoSerialPort port{beltpack, clock, delivery};
  PlainDateFormat dateFormat;
  MemoryFileSystem files;
  CountingBeeper beeper;
  OpenQuestions boxes;
  ScriptedEventPump events;
  platform::MemoryGrid grid;
  RecordingStatusBar statusBar;
  RecordingLogBox logBox;
  platform::MemoryMenuBar menuBar;
  ScriptedSettingsStore store;
  RecordingDebugView debugView;
  app::LiveSession live{{clock, dateFormat, files, beeper, boxes, events},
                        {grid, statusBar, logBox, menuBar},
                        {port, rfpsTimer, timerComPort, silenceTimer, store, debugView}};
};

}  // namespace kelvara::test
