#pragma once

#include "platform/FileSystem.h"
#include "sync/SyncModel.h"

namespace kelvara::sessions {

/// Reads one file of recorded beltpack text into a model, without a log and without beeps. Faulty
/// and unfinished reports leave in the model what a live session would. A failed read is a file
/// fault.
void ReadRecordedModel(platform::InputFile& file, sync::SyncModel& model);

}  // namespace kelvara::sessions
