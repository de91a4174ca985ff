#pragma once

#include <memory>

#include "cli/CommandMachine.h"
#include "cli/Streams.h"

namespace CLI {
class App;
}

namespace kelvara::cli {

/// One sub-command of the program.
class Command {
 public:
  virtual ~Command() = default;

  /// Declares the sub-command and its options.
  virtual void AddTo(CLI::App& program) = 0;

  /// Does the work. Called after the options have been read.
  virtual ExitCode Run(const Streams& streams, const CommandMachine& machine) = 0;
};

/// A sub-command and its name on the command line.
struct NamedCommand {
  const char* name;
  std::unique_ptr<Command> command;
};

}  // namespace kelvara::cli
