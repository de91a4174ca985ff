#include "cli/SimulateCommand.h"
#include "cli/SystemCommands.h"

namespace kelvara::cli {

std::vector<NamedCommand> SystemCommands() {
  std::vector<NamedCommand> commands;
  commands.push_back({"simulate", std::make_unique<SimulateCommand>()});
  return commands;
}

}  // namespace kelvara::cli
