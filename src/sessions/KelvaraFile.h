#pragma once

#include <cstddef>
#include <string_view>

namespace kelvara::sessions {

/// How much of a file is needed to recognise it.
inline constexpr std::size_t kFileStartBytes = 4096;

/// Describes a file that Kelvara wrote, recognised by its first bytes: "a log that Kelvara
/// captured", for example. Empty for anything else, including a recorded session.
std::string_view KelvaraFile(std::string_view start);

}  // namespace kelvara::sessions
