#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kelvara::app {

/// The command-line options of the desktop program.
struct DesktopOptions {
  bool demo = false;
  std::optional<std::string> sitePath;
  std::vector<std::string> portAssignments;
  std::optional<std::string> rawPath;
  bool testReport = false;
  bool noJournal = false;
  /// A recorded session to review; nothing else is set then.
  std::optional<std::string> reviewPath;
};

/// Runs the desktop program until its main window is closed, and returns its exit code. A site, a
/// port assignment or a trace that cannot be used is a fault before any window is shown. A session
/// that cannot be reviewed is told in a message box.
int RunDesktopProgram(const DesktopOptions& options);

}  // namespace kelvara::app
