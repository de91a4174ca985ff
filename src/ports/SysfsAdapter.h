#pragma once

#include <filesystem>
#include <string>

namespace kelvara::ports {

/// What the kernel's device tree, mounted at `root`, tells of the hardware behind a device in /dev:
/// the maker and product of a USB adapter, or the driver of a port of the machine. Empty if it
/// tells nothing, or the port has no hardware.
std::string SysfsAdapterName(const std::filesystem::path& root, const std::string& device);

}  // namespace kelvara::ports
