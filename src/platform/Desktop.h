#pragma once

#include <string>

#include "platform/DocumentOpener.h"
#include "platform/FileChooser.h"
#include "platform/Machine.h"
#include "platform/SettingsStore.h"

namespace kelvara::platform {

/// The services that the dialogs and commands of the program with windows need from the machine.
struct Desktop : Machine {
  FileChooser& fileChooser;
  DocumentOpener& documentOpener;
  SettingsStore& settings;
  /// The program's folder, without a trailing separator.
  std::string programFolder;
};

}  // namespace kelvara::platform
