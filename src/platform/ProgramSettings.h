#pragma once

#include <string>
#include <string_view>

#include "platform/SettingsStore.h"

namespace kelvara::platform {

/// The settings of this program: the store under the one application and section that it uses.
class ProgramSettings {
 public:
  /// The application that all settings of the program stand under.
  static constexpr std::string_view kApplication = "CorvanaSync";

  explicit ProgramSettings(SettingsStore& store) : store_(store) {}

  std::string Read(std::string_view key, std::string_view defaultText) const {
    return store_.Read(kApplication, kSection, key, defaultText);
  }

  void Write(std::string_view key, std::string_view text) {
    store_.Write(kApplication, kSection, key, text);
  }

 private:
  static constexpr std::string_view kSection = "Settings";

  SettingsStore& store_;
};

}  // namespace kelvara::platform
