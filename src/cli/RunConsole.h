#pragma once

#include <string>
#include <vector>

#include "cli/CommandMachine.h"
#include "cli/Streams.h"

namespace kelvara::cli {

/// Executes a command line, given without the program's name, and returns the exit code. Does not
/// throw.
int RunConsole(const std::vector<std::string>& arguments, const Streams& streams,
               const CommandMachine& machine);

}  // namespace kelvara::cli
