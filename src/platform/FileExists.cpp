#include "platform/FileExists.h"

#include "base/Fault.h"

namespace kelvara::platform {

bool FileExists(FileSystem& fileSystem, const std::string& path) {
  if (path.empty()) {
    return false;
  }
  try {
    fileSystem.OpenForInput(path);
    return true;
  } catch (const base::Fault&) {
    return false;
  }
}

}  // namespace kelvara::platform
