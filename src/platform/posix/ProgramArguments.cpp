#include "platform/qt/ProgramArguments.h"

#include <algorithm>

namespace kelvara::qt {

std::vector<std::string> ProgramArguments(int argumentCount, char** arguments) {
  return {arguments + std::min(argumentCount, 1), arguments + argumentCount};
}

std::string TextOfArgument(const std::string& argument) { return argument; }

}  // namespace kelvara::qt
