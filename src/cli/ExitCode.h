#pragma once

namespace kelvara::cli {

/// The program's exit code.
enum class ExitCode {
  Done = 0,
  Failed = 1,
  WrongCommandLine = 2,
};

}  // namespace kelvara::cli
