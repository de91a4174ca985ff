#include "app/OptionGroups.h"

#include <algorithm>
#include <array>
#include <span>

namespace kelvara::app {
namespace {

using platform::MenuEntry;

constexpr std::array kDisplayLog{MenuEntry::mnuDisplayLogOn, MenuEntry::mnuDisplayLogOff};
constexpr std::array kDispFormat{MenuEntry::mnuDispRFPS, MenuEntry::mnuDispSync,
                                 MenuEntry::mnuDispMetres};
constexpr std::array kRpnFormat{MenuEntry::mnuRpnDecimal, MenuEntry::mnuRpnHex};
constexpr std::array kDisplayFps{MenuEntry::mnuFpsOn, MenuEntry::mnuFpsOff};
constexpr std::array kViewDebug{MenuEntry::mnuViewDebugOn, MenuEntry::mnuViewDebugOff};

constexpr std::array<std::span<const MenuEntry>, 5> kGroups{kDisplayLog, kDispFormat, kRpnFormat,
                                                            kDisplayFps, kViewDebug};

}  // namespace

void CheckOption(platform::MenuBar& menuBar, MenuEntry entry) {
  for (const std::span<const MenuEntry> group : kGroups) {
    if (std::find(group.begin(), group.end(), entry) == group.end()) {
      continue;
    }
    for (const MenuEntry member : group) {
      menuBar.SetChecked(member, member == entry);
    }
  }
}

}  // namespace kelvara::app
