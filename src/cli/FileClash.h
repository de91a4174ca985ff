#pragma once

#include <string>
#include <vector>

namespace kelvara::cli {

/// The message for a command line that would overwrite one of its inputs or write two outputs to
/// one file; empty if each output has its own file. Devices and pipes never clash.
std::string FileClash(const std::vector<std::string>& inputs,
                      const std::vector<std::string>& outputs);

}  // namespace kelvara::cli
