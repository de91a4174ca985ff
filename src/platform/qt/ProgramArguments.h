#pragma once

#include <string>
#include <vector>

namespace kelvara::qt {

/// The command line, without the program's name. Each argument is a path in the program's 8-bit
/// form, so that it can name any file of the machine.
std::vector<std::string> ProgramArguments(int argumentCount, char** arguments);

/// An argument that is a text, not a path.
std::string TextOfArgument(const std::string& argument);

}  // namespace kelvara::qt
