#include "cli/SystemCommands.h"

namespace kelvara::cli {

std::vector<NamedCommand> SystemCommands() { return {}; }

}  // namespace kelvara::cli
