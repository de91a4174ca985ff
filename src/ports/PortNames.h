#pragma once

#include <string>

#include "platform/SettingsStore.h"

namespace kelvara::ports {

/// The device of a port, 1 to 12, that is not assigned for this run: as `PortTable` describes.
std::string UsualDevice(int port, const platform::SettingsStore& settings);

/// The whole name of a device that a user has named.
std::string WholeName(const std::string& device);

}  // namespace kelvara::ports
