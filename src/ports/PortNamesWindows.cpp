#include "ports/PortNames.h"

namespace kelvara::ports {

std::string DefaultDevice(int port) { return "COM" + std::to_string(port); }

std::string WholeName(const std::string& device) { return device; }

}  // namespace kelvara::ports
