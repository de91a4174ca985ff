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
};

/// Runs the desktop program until its main window is closed, and returns its exit code. A site, a
/// port assignment or a trace that cannot be used is a fault before any window is shown.
int RunDesktopProgram(const DesktopOptions& options);

}  // namespace kelvara::app
