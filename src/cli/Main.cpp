#include <CLI/CLI.hpp>
#include <QtGlobal>
#include <csignal>
#include <exception>

#include "cli/ConsoleParser.h"
#include "cli/ExitCode.h"

namespace kelvara::cli {
namespace {

ExitCode Run(int argumentCount, char** arguments) {
  ConsoleParser parser;
  try {
    parser.Parse(argumentCount, arguments);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) {
      parser.Program().exit(error);
      return FlushOutput();
    }
    Complain(error.what());
    return ExitCode::WrongCommandLine;
  }
  Command* const command = parser.Chosen();
  if (command == nullptr) {
    Complain("a sub-command is required; --help lists them");
    return ExitCode::WrongCommandLine;
  }
  return command->Run();
}

}  // namespace
}  // namespace kelvara::cli

int main(int argumentCount, char** arguments) {
  using kelvara::cli::ExitCode;
#ifndef _WIN32
  // A reader of the standard output that is gone is a write that fails, not the end of the program:
  // the files that were asked for are still to be written.
  std::signal(SIGPIPE, SIG_IGN);
#endif
  // What the library has to say about a file or a port, the program says itself.
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  try {
    return static_cast<int>(kelvara::cli::Run(argumentCount, arguments));
  } catch (const std::exception& error) {
    kelvara::cli::Complain(error.what());
    return static_cast<int>(ExitCode::Failed);
  }
}
