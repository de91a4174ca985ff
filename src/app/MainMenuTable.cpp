#include "app/MainMenuTable.h"

#include <array>

namespace kelvara::app {
namespace {

constexpr MenuLine kSeparator{1, nullptr, "-"};

constexpr std::array kLines{
    MenuLine{0, "mnuFile", "&File"},
    MenuLine{1, "mnuComPort", "&Select COM Port..."},
    kSeparator,
    MenuLine{1, "mnuClearGrid", "&Clear Sync Grid && Results"},
    MenuLine{1, "mnuForceSearch", "&Clear && Force Beltpack Search"},
    MenuLine{1, "mnuClearLog", "Clear Sync Data &Log"},
    kSeparator,
    MenuLine{1, "mnuExit", "&Exit"},

    MenuLine{0, "mnuOptions", "&Options"},
    MenuLine{1, "mnuDisplayLog", "Display &Log"},
    MenuLine{1, "mnuDispFormat", "Display &Format"},
    MenuLine{1, "mnuRpnFormat", "RPN Display &Base"},
    MenuLine{1, "mnuDisplayFps", "Display FP&S"},
    MenuLine{1, "mnuViewDebug", "View Debug"},

    MenuLine{0, "mnuTools", "&Tools"},
    MenuLine{1, "mnuCaptureData", "&Log Data To File"},
    MenuLine{2, "mnuCaptureStop", "&Stop"},
    MenuLine{2, "mnuCapturePause", "&Pause"},
    MenuLine{2, "mnuCaptureResume", "&Resume"},
    MenuLine{1, "mnuCaptureDataStart", "&Log Data To File..."},
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
