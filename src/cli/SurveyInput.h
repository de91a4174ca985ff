#pragma once

#include <string>
#include <vector>

#include "cli/CommandMachine.h"
#include "cli/Streams.h"
#include "sync/SyncModel.h"

namespace kelvara::cli {

/// What a survey is made of.
struct SurveyInput {
  sync::SyncModel model;
  bool isRecorded = true;  ///< From recorded text, whose readings the model then has kept.
  std::string note;        ///< What to note on standard error if nothing else is wrong.
};

/// Reads the files: recorded text as `replay` reads it, all of it one stream, or one results file
/// that `replay --json` wrote, recognised by its first byte "{". Complains if that fails.
ExitCode ReadSurveyInput(const std::vector<std::string>& files, const Streams& streams,
                         const CommandMachine& machine, SurveyInput& input);

}  // namespace kelvara::cli
