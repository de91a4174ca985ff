#pragma once

#include <iosfwd>
#include <string_view>

#include "cli/ExitCode.h"

namespace kelvara::cli {

/// Goes back to the start of a terminal's line and clears it.
inline constexpr std::string_view kWipeLine = "\r\x1b[K";

/// What a command reads and where it writes.
struct Streams {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
  /// Whether somebody is there to see a line of `err` change.
  bool errIsTerminal = false;

  /// Writes one line to `err` behind the program's name.
  void Complain(std::string_view text) const;

  /// Hands on what was printed to `out`. Failed, and a complaint, where it cannot be written.
  ExitCode FlushOutput() const;
};

}  // namespace kelvara::cli
