#pragma once

#include <string>

#include "sim/Observation.h"

namespace kelvara::sim {

/// The text that answers "rfps": the command's echo, the synchronised antenna, its neighbours with
/// their readings, and filler lines up to the 29th. Each line ends in CR LF. A phase that does not
/// fit its three characters is shown as the nearest that does, -99 to 999. Takes up to nine
/// neighbours with one to three readings each; more are left out.
std::string RfpsReportText(const Observation& observation);

}  // namespace kelvara::sim
