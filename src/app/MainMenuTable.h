#pragma once

#include <span>

namespace kelvara::app {

/// One line of the main window's menus. A line followed by a deeper one is a submenu; a separator
/// has no name. The entries of an option's submenu come from the table of options.
struct MenuLine {
  int depth;
  const char* name;
  const char* caption;
};

/// The menu tree, top to bottom, in the order in which the user sees it.
std::span<const MenuLine> MainMenuLines();

}  // namespace kelvara::app
