#include "cli/SystemMachine.h"

#include <iostream>
#include <utility>

#include "platform/posix/StopSignal.h"
#include "platform/qt/QtClock.h"
#include "ports/AdapterName.h"
#include "ports/QtSerialPort.h"

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace kelvara::cli {
namespace {

bool IsErrorTerminal() {
#ifdef _WIN32
  return _isatty(2) != 0;
#else
  return isatty(STDERR_FILENO) != 0;
#endif
}

}  // namespace

CommandMachine SystemMachine::Machine() {
  return {.fileSystem = fileSystem_,
          .dateFormat = dateFormat_,
          .portSettings = portSettings_,
          .makeClock = [](double speed) { return std::make_unique<qt::QtClock>(speed); },
          .makePort =
              [](const ports::PortTable& table) {
                return std::make_unique<ports::QtSerialPort>(table);
              },
          .adapterName = ports::AdapterName,
          .atStop =
              [](std::function<void()> stop) {
                return std::make_shared<posix::StopSignal>(std::move(stop));
              }};
}

Streams StandardStreams() { return {std::cin, std::cout, std::cerr, IsErrorTerminal()}; }

}  // namespace kelvara::cli
