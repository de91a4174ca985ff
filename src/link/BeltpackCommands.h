#pragma once

#include <string_view>

namespace kelvara::link {

/// The beltpack's commands, each sent with a carriage return after it. "rfps" is answered by a
/// report.
inline constexpr std::string_view kRfpsCommand = "rfps";
inline constexpr std::string_view kChoCommand = "cho";
inline constexpr std::string_view kBhoCommand = "bho";

}  // namespace kelvara::link
