#pragma once

#include <optional>
#include <string>

namespace kelvara::ports {

/// The process that holds a serial port by its lock file (LCK..NAME, as serial programs leave them
/// in the machine's lock folder), or nothing when there is no such file or its process is gone.
/// `device` is the device itself, no link to it.
std::optional<long> HolderOf(const std::string& device);

/// Whether that process is this one.
bool IsThisProcess(long process);

/// "NAME, process NUMBER", or "process NUMBER" where the name is not known.
std::string NameOfProcess(long process);

}  // namespace kelvara::ports
