#pragma once

#include "cli/CommandMachine.h"
#include "cli/Streams.h"
#include "help/ProgramTitle.h"
#include "platform/qt/QtDateFormat.h"
#include "platform/qt/QtFileSystem.h"
#include "platform/qt/QtSettingsStore.h"

namespace kelvara::cli {

/// The real machine, as the commands need it.
class SystemMachine {
 public:
  CommandMachine Machine();

 private:
  qt::QtFileSystem fileSystem_;
  qt::QtDateFormat dateFormat_;
  qt::QtSettingsStore portSettings_{qt::UserSettingsFile(help::kSettingsApplication),
                                    help::kPortsSection};
};

/// The program's own streams.
Streams StandardStreams();

}  // namespace kelvara::cli
