#pragma once

#include "platform/Beeper.h"
#include "platform/Clock.h"
#include "platform/DateFormat.h"
#include "platform/EventPump.h"
#include "platform/FileSystem.h"
#include "platform/MessageBoxes.h"

namespace kelvara::platform {

/// The services that the engine needs from any machine. Classes that are given one keep a reference
/// to it.
struct Machine {
  const Clock& clock;
  const DateFormat& dateFormat;
  FileSystem& fileSystem;
  Beeper& beeper;
  MessageBoxes& messageBoxes;
  EventPump& events;
};

}  // namespace kelvara::platform
