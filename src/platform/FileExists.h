#pragma once

#include <string>

#include "platform/FileSystem.h"

namespace kelvara::platform {

/// Whether the file can be opened for reading; it is closed again at once. One that is there but
/// cannot be read counts as missing, and an empty path names none.
bool FileExists(FileSystem& fileSystem, const std::string& path);

}  // namespace kelvara::platform
