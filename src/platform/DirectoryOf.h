#pragma once

#include <string>
#include <string_view>

namespace kelvara::platform {

/// The folder of a path: everything before its last "\", or before its last "/" where that is the
/// machine's separator. Empty for an empty path and for one whose first character is NUL. Any other
/// path without a separator is a subscript fault.
std::string DirectoryOf(std::string_view path);

/// The same, but empty for a path without a separator.
std::string DirectoryOfOrEmpty(std::string_view path);

}  // namespace kelvara::platform
