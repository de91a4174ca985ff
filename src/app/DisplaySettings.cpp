#include "app/DisplaySettings.h"

#include <algorithm>
#include <array>

#include "app/OptionGroups.h"
#include "base/Fault.h"
#include "base/NumberReading.h"
#include "base/Rounding.h"

namespace kelvara::app {
namespace {

using platform::MenuEntry;

constexpr const char* kDisplayLogKey = "DisplayLog";
constexpr const char* kRfpsUnitsKey = "RFPSUnits";
constexpr const char* kRpnUnitsKey = "RPNUnits";
constexpr const char* kFpsDisplayKey = "FPSDisplay";
constexpr const char* kTrue = "True";
constexpr const char* kFalse = "False";

/// What each entry of the display menus stores.
struct StoredOption {
  MenuEntry entry;
  const char* key;
  const char* value;
};

constexpr std::array<StoredOption, 9> kStoredOptions{
    {{MenuEntry::mnuDisplayLogOn, kDisplayLogKey, kTrue},
     {MenuEntry::mnuDisplayLogOff, kDisplayLogKey, kFalse},
     {MenuEntry::mnuDispRFPS, kRfpsUnitsKey, "0"},
     {MenuEntry::mnuDispSync, kRfpsUnitsKey, "1"},
     {MenuEntry::mnuDispMetres, kRfpsUnitsKey, "2"},
     {MenuEntry::mnuRpnDecimal, kRpnUnitsKey, "0"},
     {MenuEntry::mnuRpnHex, kRpnUnitsKey, "1"},
     {MenuEntry::mnuFpsOn, kFpsDisplayKey, kTrue},
     {MenuEntry::mnuFpsOff, kFpsDisplayKey, kFalse}}};

}  // namespace

void DisplaySettings::GetDisplaySettings() {
  ShowLog(ReadBoolean(kDisplayLogKey));
  const int units = ReadInteger(kRfpsUnitsKey);
  CheckOption(menuBar_, units == 0   ? MenuEntry::mnuDispRFPS
                        : units == 1 ? MenuEntry::mnuDispSync
                                     : MenuEntry::mnuDispMetres);
  CheckOption(menuBar_,
              ReadInteger(kRpnUnitsKey) == 0 ? MenuEntry::mnuRpnDecimal : MenuEntry::mnuRpnHex);
  CheckOption(menuBar_, ReadBoolean(kFpsDisplayKey) ? MenuEntry::mnuFpsOn : MenuEntry::mnuFpsOff);
}

void DisplaySettings::Choose(MenuEntry entry) {
  const auto* const option =
      std::find_if(kStoredOptions.begin(), kStoredOptions.end(),
                   [entry](const StoredOption& candidate) { return candidate.entry == entry; });
  if (option == kStoredOptions.end()) {
    return;
  }
  CheckOption(menuBar_, entry);
  if (entry == MenuEntry::mnuDisplayLogOn) {
    ShowLog(true);
  } else if (entry == MenuEntry::mnuDisplayLogOff) {
    ShowLog(false);
    logBox_.Clear();
  }
  // Last, so that an option that cannot be stored holds until the settings are read again.
  settings_.Write(option->key, option->value);
}

void DisplaySettings::ShowLog(bool shown) {
  CheckOption(menuBar_, shown ? MenuEntry::mnuDisplayLogOn : MenuEntry::mnuDisplayLogOff);
  menuBar_.SetEnabled(MenuEntry::mnuClearLog, shown);
  logBox_.SetShown(shown);
}

bool DisplaySettings::ReadBoolean(const char* key) const {
  const std::string text = settings_.Read(key, kFalse);
  return text == kTrue || (text != kFalse && ReadInteger(key) != 0);
}

int DisplaySettings::ReadInteger(const char* key) const {
  try {
    return base::Round32(base::ReadWholeNumber(settings_.Read(key, "0")));
  } catch (const base::Fault&) {
    // A value edited by hand into something else counts as the default.
    return 0;
  }
}

}  // namespace kelvara::app
