#pragma once

#include <string>
#include <vector>

namespace kelvara::cli {

/// The program's arguments, last one first as the option parser takes them. A value of `convert`
/// that begins with "-" is protected from being read as an option.
std::vector<std::string> ReversedArguments(int argumentCount, const char* const* arguments);

}  // namespace kelvara::cli
