#pragma once

#include "platform/FileSystem.h"
#include "sync/SyncModel.h"

namespace kelvara::sessions {

/// The results of one file of recorded beltpack text, as a live session would have had them at its
/// end. A failed read is a file fault.
sync::SyncModel ReadRecordedModel(platform::InputFile& file);

}  // namespace kelvara::sessions
