#pragma once

#include "app/Session.h"
#include "cli/ConsoleMachine.h"
#include "cli/ResultOptions.h"
#include "cli/Streams.h"

namespace kelvara::cli {

/// Starts the capture of the log, where one was asked for.
ExitCode StartLog(app::Session& session, const ResultOptions& options, const Streams& streams);

/// Ends the capture and writes every result that was asked for, then the totals. Each output is
/// tried whatever became of the others; each that fails is one line on standard error.
ExitCode WriteResults(app::Session& session, sync::GridCells& grid, const ConsoleMachine& console,
                      const ResultOptions& options);

}  // namespace kelvara::cli
