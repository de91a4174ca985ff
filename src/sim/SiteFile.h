#pragma once

#include <string>
#include <string_view>

#include "platform/FileSystem.h"
#include "sim/Site.h"

namespace kelvara::sim {

/// Reads the text of a site file. An antenna is a line with its RPN (0 to 255), FPS (0 to 15), FPN
/// (0 to 255) and cable length in metres (0 to 2750), as whole decimal numbers with blanks or tabs
/// between them; two more numbers are its place, x and y in metres. "multipath SHARE MEAN" makes
/// that share of the ordered pairs late, "fault RPN RPN UNITS" a pair wrong; see Multipath and
/// PairFault. The lines may be in any order. Text after a "#" is a comment; empty lines are
/// ignored. `name` is the name of the file. Anything else, an RPN, a pair or "multipath" given
/// twice, a fault of an antenna that is not in the file, more than 51 antennas or none at all is a
/// file fault that names the file, the line and what is wrong with it.
Site ParseSite(std::string_view text, const std::string& name);

/// Reads a site file. A file that cannot be read, or is too large to be a site file, is a file
/// fault.
Site ReadSite(platform::FileSystem& fileSystem, const std::string& path);

}  // namespace kelvara::sim
