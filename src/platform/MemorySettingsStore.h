#pragma once

#include <map>
#include <string>
#include <tuple>

#include "platform/SettingsStore.h"

namespace kelvara::platform {

/// Settings that last as long as the object.
class MemorySettingsStore : public SettingsStore {
 public:
  std::string Read(std::string_view application, std::string_view section, std::string_view key,
                   std::string_view defaultText) const override {
    const auto found =
        texts_.find({std::string(application), std::string(section), std::string(key)});
    return found == texts_.end() ? std::string(defaultText) : found->second;
  }

  void Write(std::string_view application, std::string_view section, std::string_view key,
             std::string_view text) override {
    texts_[{std::string(application), std::string(section), std::string(key)}] = text;
  }

 private:
  std::map<std::tuple<std::string, std::string, std::string>, std::string> texts_;
};

}  // namespace kelvara::platform
