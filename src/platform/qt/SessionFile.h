#pragma once

#include <string>

#include "platform/FileSystem.h"
#include "sync/SyncModel.h"

namespace kelvara::qt {

/// Reads the file of an earlier session: recorded text as `replay` reads it, or results that
/// `replay --json` wrote. A file that cannot be read, or that holds no antenna, is a file fault
/// whose text says why.
sync::SyncModel ReadSessionFile(platform::FileSystem& fileSystem, const std::string& path);

}  // namespace kelvara::qt
