#pragma once

#include "platform/MemorySettingsStore.h"
#include "platform/SettingsStore.h"

namespace kelvara::app {

/// The settings during a demo: the port and rate are read from the store, but a choice made in the
/// demo lasts only as long as the demo. Everything else is stored as usual.
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
