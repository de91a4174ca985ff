#pragma once

#include <string>

#include "cli/ConsoleControls.h"

namespace kelvara::cli {

/// A line on standard error with the state of the link and the totals, kept up to date. It shows
/// itself only where standard error is a terminal.
class StatusLine {
 public:
  explicit StatusLine(const ConsoleStatusBar& statusBar);

  /// Shows the panels as they are now.
  void Show();

  /// Wipes the line out.
  void Remove();

 private:
  const ConsoleStatusBar& statusBar_;
  bool isTerminal_;
  std::string shown_;
};

}  // namespace kelvara::cli
