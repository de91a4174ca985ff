#pragma once

#include <string>

#include "platform/FileSystem.h"

namespace kelvara::platform {

/// Whether the file can be opened for reading. A file that exists but cannot be read counts as
/// missing, as does an empty path.
bool FileExists(FileSystem& fileSystem, const std::string& path);

}  // namespace kelvara::platform
