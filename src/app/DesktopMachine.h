#pragma once

#include <functional>
#include <string>

#include "app/Session.h"
#include "platform/DocumentOpener.h"
#include "platform/FileChooser.h"
#include "platform/SerialPort.h"
#include "platform/SettingsStore.h"
#include "platform/widgets/QtDesktop.h"

namespace kelvara::app {

/// What the windows ask of the machine.
struct DesktopMachine {
  const platform::Clock& clock;
  const platform::DateFormat& dateFormat;
  platform::FileSystem& fileSystem;
  platform::Beeper& beeper;
  platform::MessageBoxes& messageBoxes;
  platform::FileChooser& fileChooser;
  platform::DocumentOpener& documentOpener;
  platform::SettingsStore& settingsStore;
  platform::SerialPort& MSComm1;
  widgets::QtEventPump& events;
  /// The folder of the program, without a separator at its end.
  std::string programFolder;
  /// What the user is told of the device behind a port number.
  std::function<std::string(int port)> describePort;
};

}  // namespace kelvara::app
