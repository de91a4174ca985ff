#include "cli/ResultOutputs.h"

#include <ostream>
#include <string>

#include "base/Fault.h"
#include "cli/GridTable.h"
#include "cli/JsonResults.h"
#include "cli/Quoted.h"
#include "platform/qt/ProgramArguments.h"

namespace kelvara::cli {
namespace {

bool StopLog(app::Session& session, const std::string& path, const Streams& streams) {
  try {
    session.Capture().StopLoggingToFile();
    return true;
  } catch (const base::Fault& fault) {
    streams.Complain("the log " + Quoted(path) + " is not complete: " + fault.what());
    return false;
  }
}

bool WriteReport(app::Session& session, const ResultOptions& options, const Streams& streams) {
  try {
    if (session.Report().GenerateReport(*options.reportPath, qt::TextOfArgument(options.site),
                                        qt::TextOfArgument(options.tester),
                                        qt::TextOfArgument(options.notes))) {
      return true;
    }
    streams.Complain("Error occured while generating report. Check the filename and path: " +
                     Quoted(*options.reportPath));
  } catch (const base::Fault&) {
    streams.Complain("the report " + Quoted(*options.reportPath) +
                     " cannot be written: there are more antennas than it can list");
  }
  return false;
}

bool WriteCsv(app::Session& session, const ConsoleMachine& console, const std::string& path) {
  const int beeps = console.BeepCount();
  session.Export().WriteResults(path);
  if (console.BeepCount() == beeps) {
    return true;
  }
  console.Out().Complain("the CSV file " + Quoted(path) + " could not be written");
  return false;
}

bool WriteJson(platform::FileSystem& fileSystem, const std::string& path, const std::string& json,
               const Streams& streams) {
  try {
    fileSystem.OpenForOutput(path)->Write(json);
    return true;
  } catch (const base::Fault& fault) {
    streams.Complain(fault.what());
    return false;
  }
}

void PrintTotals(app::Session& session, const Streams& streams) {
  streams.out << "Reports: " << session.Model().ReportCount() << '\n'
              << "AAs: " << session.Model().AaCount() << '\n';
  if (session.Parser().AbandonedCount() > 0) {
    streams.out << "Abandoned: " << session.Parser().AbandonedCount() << '\n';
  }
}

}  // namespace

ExitCode StartLog(app::Session& session, const ResultOptions& options, const Streams& streams) {
  if (options.logPath && !session.Capture().StartLoggingToFile(*options.logPath)) {
    streams.Complain("Could not start Logging to specified file. " + Quoted(*options.logPath));
    return ExitCode::Failed;
  }
  return ExitCode::Done;
}

ExitCode WriteResults(app::Session& session, sync::GridCells& grid, const ConsoleMachine& console,
                      const ResultOptions& options) {
  const Streams& streams = console.Out();
  bool done = true;
  if (options.logPath) {
    done = StopLog(session, *options.logPath, streams) && done;
  }
  if (options.reportPath) {
    done = WriteReport(session, options, streams) && done;
  }
  // Starts from an empty grid, so that cells not reached by a redraw that faults are empty.
  grid.SetSize(0, 0);
  const bool gridComplete = session.Grid().UpdateSyncGrid();
  if (options.csvPath) {
    done = WriteCsv(session, console, *options.csvPath) && done;
  }
  // Files come first because the reader of standard output may stop reading.
  const std::string json = options.jsonPath ? JsonResults(session, grid, gridComplete) : "";
  if (options.jsonPath && !options.JsonOnStandardOutput()) {
    done = WriteJson(console.Machine().fileSystem, *options.jsonPath, json, streams) && done;
  }
  if (options.grid) {
    PrintGrid(grid, streams.out);
  }
  if (options.JsonOnStandardOutput()) {
    streams.out << json;
  } else {
    PrintTotals(session, streams);
  }
  done = streams.FlushOutput() == ExitCode::Done && done;
  return done ? ExitCode::Done : ExitCode::Failed;
}

}  // namespace kelvara::cli
