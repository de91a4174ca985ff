#pragma once

#include <vector>

#include "cli/Command.h"

namespace kelvara::cli {

/// The sub-commands that not every system has.
std::vector<NamedCommand> SystemCommands();

}  // namespace kelvara::cli
