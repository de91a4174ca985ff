#pragma once

#include <map>
#include <string>

#include "platform/SettingsStore.h"

namespace kelvara::platform {

/// Settings kept in memory for the lifetime of the object.
class MemorySettingsStore : public SettingsStore {
 public:
  std::string Read(std::string_view key, std::string_view defaultText) const override {
    const auto found = texts_.find(key);
    return found == texts_.end() ? std::string(defaultText) : found->second;
  }

  void Write(std::string_view key, std::string_view text) override {
    texts_[std::string(key)] = text;
  }

 private:
  std::map<std::string, std::string, std::less<>> texts_;
};

}  // namespace kelvara::platform
