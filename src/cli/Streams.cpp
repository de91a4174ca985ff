#include "cli/Streams.h"

#include <istream>
#include <ostream>

namespace kelvara::cli {

void Streams::Complain(std::string_view text) const {
  // A status or progress line may stand where the message is to begin.
  if (errIsTerminal) {
    err << kWipeLine;
  }
  err << "kelvara-cli: " << text << '\n' << std::flush;
}

ExitCode Streams::FlushOutput() const {
  out.flush();
  if (out) {
    return ExitCode::Done;
  }
  Complain("cannot write to standard output");
  return ExitCode::Failed;
}

}  // namespace kelvara::cli
