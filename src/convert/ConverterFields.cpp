#include "convert/ConverterFields.h"

#include <array>

namespace kelvara::convert {
namespace {

// The delay field has the tool tips of the resistance field.
constexpr std::array kUnits{
    ConverterField{Field::TextRfps, "TextRfps",
                   "RFPS Phase:", "Phase, as shown in the RFPS report.", "CmdUpdateRFPS",
                   "Update all fields based on RFPS Phase.", true},
    ConverterField{Field::TextAASync, "TextAASync",
                   "AA Sync Units:", "Number required by Active ANtenna Sync message.",
                   "CmdUpdateAASync", "Update all fields based on AA Sync Units.", true},
    ConverterField{Field::TextMetres, "TextMetres",
                   "Length Metres:", "Effective length of cable in metres.", "CmdUpdateMetres",
                   "Update all fields based on Cable Length.", true},
    ConverterField{Field::TextOhms, "TextOhms",
                   "Loop Res (Ohms):", "Loop resistance in ohms - Includes 1.6 ohm offset. ",
                   "CmdUpdateOhms", "Update all fields based on Loop Resistance.", true},
    ConverterField{Field::TextDelay, "TextDelay", "Delay (us)",
                   "Loop resistance in ohms - Includes 1.6 ohm offset. ", "CmdUpdateDelay",
                   "Update all fields based on Loop Resistance.", true},
};

constexpr std::array kIdentities{
    ConverterField{Field::TextRpn, "TextRpn", "AA RPN (Hex):", "Active Antenna RPN in Hex.",
                   "CmdRpn", "Update all fields based on AA RPN in hex.", true},
    ConverterField{Field::TextPortNum, "TextPortNum", "Port Num:",
                   "Port number of Active Antenna (one of the 6 ports associated with it).",
                   "CmdPortNum", "Update all fields based on AA Port number.", true},
    ConverterField{Field::TextRpnDec, "TextRpnDec",
                   "AA RPN (Dec):", "Active Antenna RPN in Decimal.", "CmdRpnDec",
                   "Update all fields based on AA RPN in decimal.", false},
};

constexpr std::array kFrames{
    ConverterFrame{"Frame1", "Kelvara", kUnits},
    ConverterFrame{"Frame2", "Active Antenna IDs", kIdentities},
};

}  // namespace

std::span<const ConverterFrame> ConverterFrames() { return kFrames; }

}  // namespace kelvara::convert
