#include "cli/ExitCode.h"

#include <iostream>

#include "cli/Terminal.h"

namespace kelvara::cli {

void Complain(std::string_view text) {
  // A status or progress line may stand where the message is to begin.
  if (IsErrorTerminal()) {
    std::cerr << kWipeLine;
  }
  std::cerr << "kelvara-cli: " << text << '\n';
}

ExitCode FlushOutput() {
  std::cout.flush();
  if (std::cout) {
    return ExitCode::Done;
  }
  Complain("cannot write to standard output");
  return ExitCode::Failed;
}

}  // namespace kelvara::cli
