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

  /// Stores the text; when this returns, it is in the store. A store that cannot be written is a
  /// file fault.
  virtual void Write(std::string_view application, std::string_view section, std::string_view key,
                     std::string_view text) = 0;
};

}  // namespace kelvara::platform
