#include "app/OptionTable.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "base/Fault.h"

namespace kelvara::app {
namespace {

using sync::PhaseUnits;

template <auto field, auto value>
constexpr OptionEntry Row(const char* name, const char* caption, const char* group,
                          bool checkedAtFirst, const char* key, const char* stored) {
  return {name,
          caption,
          group,
          checkedAtFirst,
          key,
          stored,
          [](Options& options) { options.*field = value; },
          [](const Options& options) { return options.*field == value; }};
}

constexpr bool kFirst = true;
constexpr bool kLater = false;

// clang-format off
constexpr std::array kEntries{
    Row<&Options::logShown, true>("mnuDisplayLogOn", "&On", "mnuDisplayLog", kLater, "DisplayLog", "True"),
    Row<&Options::logShown, false>("mnuDisplayLogOff", "O&ff", "mnuDisplayLog", kFirst, "DisplayLog", "False"),
    Row<&Options::units, PhaseUnits::Rfps>("mnuDispRFPS", "&RFPS Units", "mnuDispFormat", kFirst, "RFPSUnits", "0"),
    Row<&Options::units, PhaseUnits::AaSync>("mnuDispSync", "&AA Sync Units", "mnuDispFormat", kLater, "RFPSUnits", "1"),
    Row<&Options::units, PhaseUnits::Metres>("mnuDispMetres", "&Metres", "mnuDispFormat", kLater, "RFPSUnits", "2"),
    Row<&Options::rpnHex, false>("mnuRpnDecimal", "&Decimal", "mnuRpnFormat", kFirst, "RPNUnits", "0"),
    Row<&Options::rpnHex, true>("mnuRpnHex", "&Hex", "mnuRpnFormat", kLater, "RPNUnits", "1"),
    Row<&Options::fpsShown, true>("mnuFpsOn", "&On", "mnuDisplayFps", kFirst, "FPSDisplay", "True"),
    Row<&Options::fpsShown, false>("mnuFpsOff", "O&ff", "mnuDisplayFps", kLater, "FPSDisplay", "False"),
    Row<&Options::debugShown, true>("mnuViewDebugOn", "&On", "mnuViewDebug", kLater, nullptr, nullptr),
    Row<&Options::debugShown, false>("mnuViewDebugOff", "O&ff", "mnuViewDebug", kFirst, nullptr, nullptr),
};
// clang-format on

}  // namespace

std::span<const OptionEntry> OptionEntries() { return kEntries; }

const OptionEntry& OptionEntryNamed(std::string_view name) {
  const auto* const found =
      std::find_if(kEntries.begin(), kEntries.end(),
                   [name](const OptionEntry& entry) { return entry.name == name; });
  if (found == kEntries.end()) {
    throw base::Fault(base::FaultKind::Subscript, "no option is called " + std::string(name));
  }
  return *found;
}

Options FirstOptions() {
  Options options;
  for (const OptionEntry& entry : kEntries) {
    if (entry.checkedAtFirst) {
      entry.choose(options);
    }
  }
  return options;
}

}  // namespace kelvara::app
