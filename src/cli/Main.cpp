#include <CLI/CLI.hpp>
#include <QtGlobal>
#include <array>
#include <csignal>
#include <exception>
#include <memory>

#include "cli/CommandLine.h"
#include "cli/ConvertCommand.h"
#include "cli/ExitCode.h"
#include "cli/PortsCommand.h"
#include "cli/RecordCommand.h"
#include "cli/ReplayCommand.h"
#include "platform/ProgramTitle.h"
#ifndef _WIN32
#include "cli/SimulateCommand.h"
#endif

namespace kelvara::cli {
namespace {

struct NamedCommand {
  const char* name;
  std::unique_ptr<Command> command;
};

ExitCode Run(int argumentCount, char** arguments) {
  const std::array commands{
      NamedCommand{"replay", std::make_unique<ReplayCommand>()},
      NamedCommand{"convert", std::make_unique<ConvertCommand>()},
      NamedCommand{"record", std::make_unique<RecordCommand>()},
      NamedCommand{"ports", std::make_unique<PortsCommand>()},
#ifndef _WIN32
      NamedCommand{"simulate", std::make_unique<SimulateCommand>()},
#endif
  };
  CLI::App program("Commission the radio side of a wireless intercom, without a window.",
                   "kelvara-cli");
  program.set_version_flag("--version", platform::ProgramTitleAndVersion());
  // None at all is complained about below: here it would hide what is wrong with an argument.
  program.require_subcommand(0, 1);
  for (const NamedCommand& named : commands) {
    named.command->AddTo(program);
  }
  try {
    program.parse(ReversedArguments(program, argumentCount, arguments));
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) {
      program.exit(error);
      return ExitCode::Done;
    }
    Complain(error.what());
    return ExitCode::WrongCommandLine;
  }
  for (const NamedCommand& named : commands) {
    if (program.got_subcommand(named.name)) {
      return named.command->Run();
    }
  }
  Complain("a sub-command is required; --help lists them");
  return ExitCode::WrongCommandLine;
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
