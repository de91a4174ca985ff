#include "platform/MemoryMenuBar.h"

namespace kelvara::platform {

MemoryMenuBar::MemoryMenuBar() {
  for (const MenuEntry entry :
       {MenuEntry::mnuDisplayLogOff, MenuEntry::mnuDispRFPS, MenuEntry::mnuRpnDecimal,
        MenuEntry::mnuFpsOn, MenuEntry::mnuViewDebugOff}) {
    SetChecked(entry, true);
  }
  SetEnabled(MenuEntry::mnuCaptureData, false);
  SetVisible(MenuEntry::mnuCaptureData, false);
}

}  // namespace kelvara::platform
