#pragma once

namespace kelvara::cli {

/// What the program says to the shell when it ends.
enum class ExitCode {
  Done = 0,
  Failed = 1,            ///< The operation failed.
  WrongCommandLine = 2,  ///< The command line is wrong.
};

}  // namespace kelvara::cli
