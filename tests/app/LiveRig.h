#pragma once

#include "app/LiveSession.h"
#include "sim/DemoSerialPort.h"
#include "sim/Site.h"
#include "support/DesktopDoubles.h"
#include "support/Doubles.h"
#include "support/LinkRig.h"
#include "support/VirtualTime.h"

namespace kelvara::test {

/// A whole live session in virtual time, with the built-in beltpack on the line.
struct LiveRig : MachineDoubles<MemoryFileSystem, OpenQuestions> {
  void Start() {
    live.Port().OpenComPort(1);
    live.StartLink();
  }

  VirtualTime time{clock};
  VirtualTime::Timer rfpsTimer{time, link::kRfpsTimerMilliseconds};
  VirtualTime::Timer timerComPort{time, link::kTimerComPortMilliseconds};
  VirtualTime::Timer silenceTimer{time, link::kSilenceMilliseconds};
  VirtualTime::Timer delivery{time, 50};
  sim::Beltpack beltpack{sim::DemoSite()};
  sim::DemoSerialPort port{beltpack, clock, delivery};
  sync::GridCells grid;
  RecordingLogBox logBox;
  ScriptedSettingsStore store;
  app::LiveSession live{
      machine, grid, &logBox, {port, rfpsTimer, timerComPort, silenceTimer}, store};
};

}  // namespace kelvara::test
