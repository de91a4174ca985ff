#pragma once

#include <string>

namespace kelvara::ports {

/// What the system calls the adapter or the built-in port behind a device, such as "FTDI FT232R USB
/// UART"; empty if it is unknown or the device is absent. Opens nothing.
std::string AdapterName(const std::string& device);

}  // namespace kelvara::ports
