#include "cli/RunConsole.h"

#include <CLI/CLI.hpp>
#include <exception>

#include "cli/ConsoleParser.h"

namespace kelvara::cli {
namespace {

ExitCode Run(const std::vector<std::string>& arguments, const Streams& streams,
             const CommandMachine& machine) {
  ConsoleParser parser;
  try {
    parser.Parse(arguments);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) {
      parser.Program().exit(error, streams.out, streams.err);
      return streams.FlushOutput();
    }
    streams.Complain(error.what());
    return ExitCode::WrongCommandLine;
  }
  Command* const command = parser.Chosen();
  if (command == nullptr) {
    streams.Complain("a sub-command is required; --help lists them");
    return ExitCode::WrongCommandLine;
  }
  return command->Run(streams, machine);
}

}  // namespace

int RunConsole(const std::vector<std::string>& arguments, const Streams& streams,
               const CommandMachine& machine) {
  try {
    return static_cast<int>(Run(arguments, streams, machine));
  } catch (const std::exception& error) {
    streams.Complain(error.what());
    return static_cast<int>(ExitCode::Failed);
  }
}

}  // namespace kelvara::cli
