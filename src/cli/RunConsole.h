#pragma once

#include <string>
#include <vector>

#include "cli/CommandMachine.h"
#include "cli/Streams.h"

namespace kelvara::cli {

/// Does what a command line asks for, without the program's own name, and returns the exit code.
/// Nothing is thrown.
int RunConsole(const std::vector<std::string>& arguments, const Streams& streams,
               const CommandMachine& machine);

}  // namespace kelvara::cli
