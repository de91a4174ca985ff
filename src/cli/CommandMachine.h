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

/// What the commands need from the machine. A test can replace each part. Everything in it must
/// exist until the command has ended.
struct CommandMachine {
  platform::FileSystem& fileSystem;
  const platform::DateFormat& dateFormat;
  /// The table of ports.
  const platform::SettingsStore& portSettings;
  /// Makes a clock that runs `speed` times as fast as real time.
  std::function<std::unique_ptr<platform::Clock>(double speed)> makeClock;
  /// Makes a closed port that opens the devices in `table`.
  std::function<std::unique_ptr<platform::SerialPort>(const ports::PortTable& table)> makePort;
  /// What to call the adapter behind a device; empty if it has no known name.
  std::function<std::string(const std::string& device)> adapterName;
  /// Calls `stop` when the user wants the program to end, for as long as the result exists.
  std::function<std::shared_ptr<void>(std::function<void()> stop)> atStop;
};

}  // namespace kelvara::cli
