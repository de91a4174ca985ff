#include "cli/Streams.h"

#include <istream>
#include <ostream>

#include "platform/qt/Console.h"

namespace kelvara::cli {

void Streams::Complain(std::string_view text) const {
  // The cursor may be on a status or progress line.
  if (errIsTerminal) {
    err << kWipeLine;
  }
  err << "kelvara-cli: " << qt::ConsoleText(text) << '\n' << std::flush;
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
