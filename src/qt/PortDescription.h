#pragma once

#include <string>

#include "qt/PortTable.h"

namespace kelvara::qt {

/// What the user is told of a port before it is chosen: the device it stands for and whether that
/// can be opened; if not, why and what to do.
std::string DescribePort(const PortTable& ports, int port);

}  // namespace kelvara::qt
