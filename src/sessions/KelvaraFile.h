#pragma once

#include <cstddef>
#include <string_view>

namespace kelvara::sessions {

/// How much of a file tells what it is.
inline constexpr std::size_t kFileStartBytes = 4096;

/// What a file is that Kelvara made of a session, told by its first bytes: "a log that Kelvara
/// captured" and the like. Empty for anything else, a recorded session among them.
std::string_view KelvaraFile(std::string_view start);

}  // namespace kelvara::sessions
