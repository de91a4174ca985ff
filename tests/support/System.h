#pragma once

#include <filesystem>

namespace kelvara::test {

inline constexpr bool kIsWindows = std::filesystem::path::preferred_separator == '\\';

}  // namespace kelvara::test
