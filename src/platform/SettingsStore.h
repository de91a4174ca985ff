#pragma once

#include <string>
#include <string_view>

namespace kelvara::platform {

/// The per-user settings: text values under an application, a section and a key.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;

  /// The stored text, or `defaultText` when the key is absent.
  virtual std::string Read(std::string_view application, std::string_view section,
                           std::string_view key, std::string_view defaultText) const = 0;

  /// Stores the text; it is on its way to the disk when this returns.
  virtual void Write(std::string_view application, std::string_view section, std::string_view key,
                     std::string_view text) = 0;
};

}  // namespace kelvara::platform
