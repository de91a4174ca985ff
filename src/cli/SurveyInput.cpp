#include "cli/SurveyInput.h"

#include "app/Session.h"
#include "base/Fault.h"
#include "cli/ConsoleMachine.h"
#include "cli/Quoted.h"
#include "cli/RecordedFiles.h"
#include "platform/qt/ResultsFile.h"
#include "sessions/RecordedSession.h"
#include "sessions/StartedFile.h"

namespace kelvara::cli {
namespace {

ExitCode ReadResultsFile(const std::string& name, platform::InputFile& file, const Streams& streams,
                         SurveyInput& input) {
  input.isRecorded = false;
  if (qt::ReadResults(sessions::WholeText(file), input.model)) {
    return ExitCode::Done;
  }
  streams.Complain(Quoted(name) + " has not the form of the results that replay --json writes");
  return ExitCode::Failed;
}

ExitCode ReadAll(const std::vector<std::string>& files, const Streams& streams,
                 const CommandMachine& machine, SurveyInput& input) {
  ExpectReadable(files);
  ConsoleMachine console(streams, machine);
  sync::GridCells grid;
  app::Session session(console.Machine(), grid, nullptr);
  session.Model().KeepReadings();
  RecordedFiles recorded(session, streams, nullptr);
  for (const std::string& name : files) {
    sessions::StartedFile file(OpenRecorded(name, streams, machine));
    if (file.HoldsResults()) {
      if (files.size() == 1) {
        return ReadResultsFile(name, file, streams, input);
      }
      streams.Complain(Quoted(name) + " holds results, which cannot be joined with other files");
      return ExitCode::WrongCommandLine;
    }
    sessions::RecordedSession text(recorded);
    recorded.ReadFile(name, file, text);
  }
  input.note = recorded.NothingFound();
  input.model = session.Model();
  return ExitCode::Done;
}

}  // namespace

ExitCode ReadSurveyInput(const std::vector<std::string>& files, const Streams& streams,
                         const CommandMachine& machine, SurveyInput& input) {
  try {
    return ReadAll(files, streams, machine, input);
  } catch (const base::Fault& fault) {
    streams.Complain(fault.what());
    return ExitCode::Failed;
  }
}

}  // namespace kelvara::cli
