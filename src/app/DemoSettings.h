#pragma once

#include "platform/MemorySettingsStore.h"
#include "platform/SettingsStore.h"

namespace kelvara::app {

/// The stored settings during a demo: the port and rate are shown as they are stored, and a choice
/// made in the demo lasts as long as the demo. All else is stored as ever.
class DemoSettings : public platform::SettingsStore {
 public:
  explicit DemoSettings(platform::SettingsStore& store) : store_(store) {}

  std::string Read(std::string_view key, std::string_view defaultText) const override;
  void Write(std::string_view key, std::string_view text) override;

 private:
  platform::SettingsStore& store_;
  platform::MemorySettingsStore port_;
};

}  // namespace kelvara::app
