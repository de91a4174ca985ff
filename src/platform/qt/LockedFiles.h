#pragma once

#include <QString>
#include <memory>

#include "platform/SessionFolder.h"

namespace kelvara::qt {

/// Makes a new file and locks it. Null if the name is taken; any other failure is a file fault.
std::unique_ptr<platform::LockedFile> CreateLocked(const QString& path);

/// Opens an existing file and locks it. Null if there is none or another program has locked it; any
/// other failure is a file fault.
std::unique_ptr<platform::LockedFile> OpenLocked(const QString& path);

}  // namespace kelvara::qt
