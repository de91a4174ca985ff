#pragma once

#include <string>

#include "platform/DocumentOpener.h"
#include "platform/FileChooser.h"
#include "platform/Machine.h"
#include "platform/SettingsStore.h"

namespace kelvara::platform {

/// What the dialogs and commands of a program with windows ask of its machine.
struct Desktop : Machine {
  FileChooser& fileChooser;
  DocumentOpener& documentOpener;
  SettingsStore& settings;
  /// The folder of the program, without a separator at its end.
  std::string programFolder;
};

}  // namespace kelvara::platform
