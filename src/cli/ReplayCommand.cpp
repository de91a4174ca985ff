#include "cli/ReplayCommand.h"

#include <CLI/CLI.hpp>

#include "base/Fault.h"
#include "cli/ConsoleMachine.h"
#include "cli/FileClash.h"
#include "cli/RecordedFiles.h"
#include "cli/ResultOutputs.h"
#include "sessions/RecordedSession.h"
#include "sessions/TraceClock.h"
#include "sessions/WholeReport.h"

namespace kelvara::cli {

void ReplayCommand::AddTo(CLI::App& program) {
  CLI::App* command = program.add_subcommand(
      "replay",
      "Process recorded beltpack text into the matrix, the log, the report, CSV and JSON.\n"
      "The files are taken in the order given, into one sync model. A report ends at every 29th\n"
      "line; a trace made by \"record --raw\" is replayed as it was live.");
  command->add_option("FILE", files_, "Recorded beltpack text (- is standard input)")
      ->type_name("");
  command->add_flag("--whole", whole_, "Take each file as one report, however many lines it has");
  options_.AddTo(*command);
}

ExitCode ReplayCommand::Run(const Streams& streams, const CommandMachine& machine) {
  if (files_.empty()) {
    streams.Complain("a FILE is required");
    return ExitCode::WrongCommandLine;
  }
  std::vector<std::string> inputs = files_;
  std::erase(inputs, kStandardInput);
  const std::string clash = FileClash(inputs, options_.OutputPaths());
  if (!clash.empty()) {
    streams.Complain(clash);
    return ExitCode::WrongCommandLine;
  }
  ConsoleMachine console(streams, machine);
  sync::GridCells grid;
  sessions::TraceClock clock(console.Machine().clock);
  const platform::Machine replayMachine{.clock = clock,
                                        .dateFormat = console.Machine().dateFormat,
                                        .fileSystem = console.Machine().fileSystem,
                                        .beeper = console.Machine().beeper,
                                        .messageBoxes = console.Machine().messageBoxes,
                                        .events = console.Machine().events};
  app::Session session(replayMachine, grid, nullptr);
  session.Options() = {options_.Display()};
  session.ClearSyncResults();
  try {
    // Checks all the files before reading the first, so that a wrong name changes nothing.
    ExpectReadable(files_);
  } catch (const base::Fault& fault) {
    streams.Complain(fault.what());
    return ExitCode::Failed;
  }
  if (StartLog(session, options_, streams) != ExitCode::Done) {
    return ExitCode::Failed;
  }
  RecordedFiles recorded(session, streams, &clock);
  ExitCode read = ExitCode::Done;
  for (const std::string& name : files_) {
    try {
      // New readers for each file: a file that cannot be read to its end leaves no partial report.
      sessions::RecordedSession recordedSession(recorded);
      sessions::WholeReport wholeReport(recorded);
      sessions::RecordedText& text =
          whole_ ? static_cast<sessions::RecordedText&>(wholeReport) : recordedSession;
      recorded.ReadFile(name, *OpenRecorded(name, streams, machine), text);
    } catch (const base::Fault& fault) {
      streams.Complain(fault.what());
      read = ExitCode::Failed;
    }
  }
  if (read == ExitCode::Done && !whole_ && !recorded.NothingFound().empty()) {
    streams.Complain(recorded.NothingFound());
  }
  const ExitCode written = WriteResults(session, grid, console, options_);
  return read == ExitCode::Done ? written : read;
}

}  // namespace kelvara::cli
