#pragma once

#include <iosfwd>
#include <string_view>

#include "cli/ExitCode.h"

namespace kelvara::cli {

/// Returns to the start of the terminal's line and clears it.
inline constexpr std::string_view kWipeLine = "\r\x1b[K";

/// What a command reads and where it writes.
struct Streams {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
  /// Whether `err` is a terminal, on which a line can be updated in place.
  bool errIsTerminal = false;

  /// Writes one line to `err`, prefixed with the program's name.
  void Complain(std::string_view text) const;

  /// Flushes `out`. If that fails, complains and returns Failed.
  ExitCode FlushOutput() const;
};

}  // namespace kelvara::cli
