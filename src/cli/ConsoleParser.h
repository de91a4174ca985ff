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

  /// Reads the command line, without the program's own name. A wrong one is a parse error of the
  /// parser's own, and so is one that asks for help or the version, with 0 as its exit code.
  void Parse(std::vector<std::string> arguments);

  /// The sub-command that was read, null where none was named.
  Command* Chosen() const;

  /// The parser itself, for what it read and for its help.
  const CLI::App& Program() const { return program_; }

 private:
  struct NamedCommand {
    const char* name;
    std::unique_ptr<Command> command;
  };

  void Add(const char* name, std::unique_ptr<Command> command);

  /// Each sub-command holds what its options are read into: they go after the parser.
  std::vector<NamedCommand> commands_;
  CLI::App program_;
};

}  // namespace kelvara::cli
