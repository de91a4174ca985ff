#pragma once

#include <optional>
#include <span>

#include "platform/MenuBar.h"

namespace kelvara::app {

/// One line of the main window's menus. A line with a greater depth than the one before it opens a
/// submenu there; a separator has no name.
struct MenuLine {
  int depth;
  const char* name;
  const char* caption;
  bool checkable = false;
  /// The entry, where the system changes or reads its state.
  std::optional<platform::MenuEntry> entry = std::nullopt;
};

/// The menu tree, top to bottom, in the order in which the user sees it.
std::span<const MenuLine> MainMenuLines();

}  // namespace kelvara::app
