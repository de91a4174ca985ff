#include "app/MainMenuTable.h"

#include <array>

namespace kelvara::app {
namespace {

using platform::MenuEntry;

constexpr MenuLine kSeparator{1, nullptr, "-"};

constexpr std::array kLines{
    MenuLine{0, "mnuFile", "&File"},
    MenuLine{1, "mnuComPort", "&Select COM Port..."},
    kSeparator,
    MenuLine{1, "mnuClearGrid", "&Clear Sync Grid && Results", false, MenuEntry::mnuClearGrid},
    MenuLine{1, "mnuForceSearch", "&Clear && Force Beltpack Search", false,
             MenuEntry::mnuForceSearch},
    MenuLine{1, "mnuClearLog", "Clear Sync Data &Log", false, MenuEntry::mnuClearLog},
    kSeparator,
    MenuLine{1, "mnuExit", "&Exit"},

    MenuLine{0, "mnuOptions", "&Options"},
    MenuLine{1, "mnuDisplayLog", "Display &Log"},
    MenuLine{2, "mnuDisplayLogOn", "&On", true, MenuEntry::mnuDisplayLogOn},
    MenuLine{2, "mnuDisplayLogOff", "O&ff", true, MenuEntry::mnuDisplayLogOff},
    MenuLine{1, "mnuDispFormat", "Display &Format"},
    MenuLine{2, "mnuDispRFPS", "&RFPS Units", true, MenuEntry::mnuDispRFPS},
    MenuLine{2, "mnuDispSync", "&AA Sync Units", true, MenuEntry::mnuDispSync},
    MenuLine{2, "mnuDispMetres", "&Metres", true, MenuEntry::mnuDispMetres},
    MenuLine{1, "mnuRpnFormat", "RPN Display &Base"},
    MenuLine{2, "mnuRpnDecimal", "&Decimal", true, MenuEntry::mnuRpnDecimal},
    MenuLine{2, "mnuRpnHex", "&Hex", true, MenuEntry::mnuRpnHex},
    MenuLine{1, "mnuDisplayFps", "Display FP&S"},
    MenuLine{2, "mnuFpsOn", "&On", true, MenuEntry::mnuFpsOn},
    MenuLine{2, "mnuFpsOff", "O&ff", true, MenuEntry::mnuFpsOff},
    MenuLine{1, "mnuViewDebug", "View Debug"},
    MenuLine{2, "mnuViewDebugOn", "&On", true, MenuEntry::mnuViewDebugOn},
    MenuLine{2, "mnuViewDebugOff", "O&ff", true, MenuEntry::mnuViewDebugOff},

    MenuLine{0, "mnuTools", "&Tools"},
    MenuLine{1, "mnuCaptureData", "&Log Data To File", false, MenuEntry::mnuCaptureData},
    MenuLine{2, "mnuCaptureStop", "&Stop", false, MenuEntry::mnuCaptureStop},
    MenuLine{2, "mnuCapturePause", "&Pause", false, MenuEntry::mnuCapturePause},
    MenuLine{2, "mnuCaptureResume", "&Resume", false, MenuEntry::mnuCaptureResume},
    MenuLine{1, "mnuCaptureDataStart", "&Log Data To File...", false,
             MenuEntry::mnuCaptureDataStart},
    MenuLine{1, "mnuGenReport", "&Generate AA Cable Length Report..."},
    kSeparator,
    MenuLine{1, "mnuConvertor", "&Converter"},

    MenuLine{0, "mnuHelp", "&Help"},
    MenuLine{1, "mnuContents", "&Help"},
    kSeparator,
    MenuLine{1, "mnuOrrinWeb", "&Halden Group Comms Website"},
    kSeparator,
    MenuLine{1, "mnuAbout", "&About Kelvara..."},
};

}  // namespace

std::span<const MenuLine> MainMenuLines() { return kLines; }

}  // namespace kelvara::app
