#pragma once

#include <string>
#include <vector>

namespace kelvara::cli {

/// What is wrong with a command line that would write over what it reads, or write two things to
/// one file; empty where each output has a file of its own. Devices and pipes take anything.
std::string FileClash(const std::vector<std::string>& inputs,
                      const std::vector<std::string>& outputs);

}  // namespace kelvara::cli
