#pragma once

#include <string>

namespace kelvara::ports {

/// The default device of a port, 1 to 12, as `PortTable` describes.
std::string DefaultDevice(int port);

/// The whole name of a device that a user has named.
std::string WholeName(const std::string& device);

}  // namespace kelvara::ports
