#pragma once

#include <string>

#include "sync/SyncModel.h"

namespace kelvara::qt {

/// Restores the model from the text of a results file that `replay --json` wrote. False if the text
/// has another form; the model is then undefined.
bool ReadResults(const std::string& text, sync::SyncModel& model);

}  // namespace kelvara::qt
