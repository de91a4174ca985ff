#pragma once

#include <span>
#include <string_view>

#include "sync/DisplayOptions.h"

namespace kelvara::app {

/// The options of the Options menu.
struct Options : sync::DisplayOptions {
  /// Whether the log box is shown.
  bool logShown = false;
  /// Whether the debug window is open. It is not stored.
  bool debugShown = false;
};

/// One entry of the option menus. Exactly one entry of a group is checked.
struct OptionEntry {
  const char* name;
  const char* caption;
  const char* group;
  /// Whether it is checked before the stored options are applied.
  bool checkedAtFirst;
  /// The settings key and what choosing the entry stores there; null where nothing is stored.
  const char* key;
  const char* value;
  void (*choose)(Options& options);
  bool (*isChosen)(const Options& options);
};

/// Every entry, one row each, in the order of the menus.
std::span<const OptionEntry> OptionEntries();

/// The entry of that name; an unknown name is a subscript fault.
const OptionEntry& OptionEntryNamed(std::string_view name);

/// The options before the stored ones are applied.
Options FirstOptions();

}  // namespace kelvara::app
