#pragma once

#include <functional>
#include <memory>

#include "platform/Clock.h"
#include "platform/DateFormat.h"
#include "platform/FileSystem.h"
#include "platform/SerialPort.h"
#include "platform/SettingsStore.h"
#include "ports/PortTable.h"

namespace kelvara::cli {

/// What the commands ask of the machine, so that a test can put something else in its place. All of
/// it outlives the command.
struct CommandMachine {
  platform::FileSystem& fileSystem;
  const platform::DateFormat& dateFormat;
  /// The table of ports.
  const platform::SettingsStore& portSettings;
  /// A clock that runs so many times as fast as real time.
  std::function<std::unique_ptr<platform::Clock>(double speed)> makeClock;
  /// A closed port that opens the devices of a table.
  std::function<std::unique_ptr<platform::SerialPort>(const ports::PortTable& table)> makePort;
  /// Calls a function when the user wants the program to end, as long as the result lives.
  std::function<std::shared_ptr<void>(std::function<void()> stop)> atStop;
};

}  // namespace kelvara::cli
