#pragma once

#include <string_view>

namespace kelvara::cli {

/// Goes back to the start of a terminal's line and clears it.
inline constexpr std::string_view kWipeLine = "\r\x1b[K";

/// Whether standard error is a terminal, so that somebody is there to see a line change.
bool IsErrorTerminal();

}  // namespace kelvara::cli
