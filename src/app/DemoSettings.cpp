#include "app/DemoSettings.h"

#include "link/ComPort.h"

namespace kelvara::app {

std::string DemoSettings::Read(std::string_view key, std::string_view defaultText) const {
  return port_.Read(key, store_.Read(key, defaultText));
}

void DemoSettings::Write(std::string_view key, std::string_view text) {
  const bool isPortSetting = key == link::kComPortKey || key == link::kBaudrateKey;
  (isPortSetting ? static_cast<platform::SettingsStore&>(port_) : store_).Write(key, text);
}

}  // namespace kelvara::app
