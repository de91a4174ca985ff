#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "cli/Command.h"

namespace kelvara::cli {

/// The program's option parser with all its sub-commands.
class ConsoleParser {
 public:
  ConsoleParser();

  /// Reads the command line, given without the program's name. Throws CLI::ParseError for a wrong
  /// command line, and also for one that asks for help or the version, with exit code 0.
  void Parse(std::vector<std::string> arguments);

  /// The sub-command on the command line, null if there is none.
  Command* Chosen() const;

  /// The parser itself, which prints the help and the version.
  const CLI::App& Program() const { return program_; }

 private:
  void Add(const char* name, std::unique_ptr<Command> command);

  /// The parser writes into members of the sub-commands, so it is destroyed before them.
  std::vector<NamedCommand> commands_;
  CLI::App program_;
};

}  // namespace kelvara::cli
