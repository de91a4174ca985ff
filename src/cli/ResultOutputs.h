#pragma once

#include "app/Session.h"
#include "cli/ConsoleMachine.h"
#include "cli/ResultOptions.h"
#include "cli/Streams.h"

namespace kelvara::cli {

/// Starts the capture of the log if the options ask for one. Reports a failure on standard error.
ExitCode StartLog(app::Session& session, const ResultOptions& options, const Streams& streams);

/// Ends the capture, writes every requested result, then prints the totals. A failed output does
/// not prevent the others; each failure is one line on standard error.
ExitCode WriteResults(app::Session& session, sync::GridCells& grid, const ConsoleMachine& console,
                      const ResultOptions& options);

}  // namespace kelvara::cli
