#pragma once

#include "platform/Beeper.h"
#include "platform/Clock.h"
#include "platform/DateFormat.h"
#include "platform/EventPump.h"
#include "platform/FileSystem.h"
#include "platform/MessageBoxes.h"

namespace kelvara::platform {

/// What the engine asks of any machine. Those who are given one keep a reference to it.
struct Machine {
  const Clock& clock;
  const DateFormat& dateFormat;
  FileSystem& fileSystem;
  Beeper& beeper;
  MessageBoxes& messageBoxes;
  EventPump& events;
};

}  // namespace kelvara::platform
