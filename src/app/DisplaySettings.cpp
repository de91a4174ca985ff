#include "app/DisplaySettings.h"

#include <string>
#include <string_view>

#include "base/Fault.h"
#include "base/NumberReading.h"
#include "base/Rounding.h"

namespace kelvara::app {
namespace {

/// The number of a stored text, where "True" counts as 1. A value edited by hand into something
/// else counts as the default.
std::int32_t StoredNumber(const std::string& text) {
  if (text == "True") {
    return 1;
  }
  try {
    return base::Round32(base::ReadWholeNumber(text));
  } catch (const base::Fault&) {
    return 0;
  }
}

/// The entry that a key's stored text selects: the entry with the same number, else the entry with
/// the highest.
const OptionEntry& Selected(std::string_view key, const std::string& text) {
  const std::int32_t stored = StoredNumber(text);
  const OptionEntry* highest = nullptr;
  for (const OptionEntry& entry : OptionEntries()) {
    if (entry.key == nullptr || entry.key != key) {
      continue;
    }
    if (StoredNumber(entry.value) == stored) {
      return entry;
    }
    if (highest == nullptr || StoredNumber(entry.value) > StoredNumber(highest->value)) {
      highest = &entry;
    }
  }
  return *highest;
}

}  // namespace

void DisplaySettings::GetDisplaySettings() {
  std::string_view keyBefore;
  for (const OptionEntry& entry : OptionEntries()) {
    if (entry.key != nullptr && entry.key != keyBefore) {
      keyBefore = entry.key;
      Selected(keyBefore, settings_.Read(keyBefore, "0")).choose(options_);
    }
  }
  OptionsChanged(nullptr);
}

void DisplaySettings::Choose(const OptionEntry& entry) {
  entry.choose(options_);
  OptionsChanged(&entry);
  if (entry.key != nullptr) {
    // Last, so that an option that cannot be stored holds until the settings are read again.
    settings_.Write(entry.key, entry.value);
  }
}

void DisplaySettings::OptionsChanged(const OptionEntry* chosen) {
  if (optionsChanged_) {
    optionsChanged_(chosen);
  }
}

}  // namespace kelvara::app
