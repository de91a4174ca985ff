#pragma once

#include <string>
#include <string_view>

namespace kelvara::platform {

/// One section of the user's settings: text values by key.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;

  /// The stored text, or `defaultText` if the key is absent.
  virtual std::string Read(std::string_view key, std::string_view defaultText) const = 0;

  /// Stores the text; on return it is in the store. A store that cannot be written is a file fault.
  virtual void Write(std::string_view key, std::string_view text) = 0;
};

}  // namespace kelvara::platform
