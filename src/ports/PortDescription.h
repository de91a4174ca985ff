#pragma once

#include <string>

#include "ports/PortTable.h"

namespace kelvara::ports {

/// What the user is told of a port before it is chosen: the device it stands for and whether that
/// can be opened; if not, why and what to do. `openDevice`: the device that this program has open,
/// or an empty text.
std::string DescribePort(const PortTable& ports, int port, const std::string& openDevice);

}  // namespace kelvara::ports
