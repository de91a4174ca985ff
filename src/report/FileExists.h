#pragma once

#include <string>

#include "platform/FileSystem.h"

namespace kelvara::report {

/// Whether the file can be opened for reading; it is closed again at once. One that is there but
/// cannot be read counts as missing, and an empty path names none.
bool FileExists(platform::FileSystem& fileSystem, const std::string& path);

}  // namespace kelvara::report
