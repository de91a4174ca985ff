#pragma once

#include <string>

#include "app/LiveSession.h"
#include "cli/Streams.h"

namespace kelvara::cli {

/// A line on standard error with the state of the link and the totals, kept up to date. It is shown
/// only if standard error is a terminal.
class StatusLine {
 public:
  StatusLine(app::LiveSession& live, const Streams& streams) : live_(live), streams_(streams) {}

  /// Shows the current state.
  void Show();

  /// Clears the line.
  void Remove();

 private:
  app::LiveSession& live_;
  Streams streams_;
  std::string shown_;
};

}  // namespace kelvara::cli
