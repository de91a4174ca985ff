#include "ports/PortNames.h"

namespace kelvara::ports {

std::string UsualDevice(int port, const platform::SettingsStore& /*settings*/) {
  return "COM" + std::to_string(port);
}

std::string WholeName(const std::string& device) { return device; }

}  // namespace kelvara::ports
