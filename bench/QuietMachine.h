#pragma once

#include "QuietControls.h"
#include "platform/Machine.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/QtDateFormat.h"
#include "platform/qt/QtFileSystem.h"

namespace kelvara::bench {

/// A machine with the real clock, dates and files, and otherwise with stand-ins that do nothing.
struct QuietMachine {
  qt::QtClock clock;
  qt::QtDateFormat dateFormat;
  qt::QtFileSystem fileSystem;
  QuietBeeper beeper;
  QuietMessageBoxes messageBoxes;
  QuietEventPump events;
  platform::Machine machine{.clock = clock,
                            .dateFormat = dateFormat,
                            .fileSystem = fileSystem,
                            .beeper = beeper,
                            .messageBoxes = messageBoxes,
                            .events = events};
};

}  // namespace kelvara::bench
