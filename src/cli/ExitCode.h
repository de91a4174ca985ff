#pragma once

#include <string_view>

namespace kelvara::cli {

/// What the program says to the shell when it ends.
enum class ExitCode {
  Done = 0,
  Failed = 1,            ///< The operation failed.
  WrongCommandLine = 2,  ///< The command line is wrong.
};

/// Writes one line to standard error behind the program's name.
void Complain(std::string_view text);

/// Hands on what was printed. Failed, and a complaint, where it cannot be written.
ExitCode FlushOutput();

}  // namespace kelvara::cli
