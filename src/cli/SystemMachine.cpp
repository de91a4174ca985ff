#include "cli/SystemMachine.h"

#include <iostream>

#include "platform/qt/Console.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/StopSignal.h"
#include "ports/AdapterName.h"
#include "ports/QtSerialPort.h"

namespace kelvara::cli {

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
          .atStop = qt::AtStopSignal};
}

Streams StandardStreams() { return {std::cin, std::cout, std::cerr, qt::IsErrorTerminal()}; }

}  // namespace kelvara::cli
