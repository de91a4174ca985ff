#pragma once

#include "platform/MenuBar.h"

namespace kelvara::app {

/// Checks an entry of the option menus and unchecks the others of its group, of which just one is
/// checked at a time.
void CheckOption(platform::MenuBar& menuBar, platform::MenuEntry entry);

}  // namespace kelvara::app
