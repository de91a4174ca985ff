#include "cli/SurveyInput.h"

#include <algorithm>
#include <memory>
#include <span>
#include <utility>

#include "app/Session.h"
#include "base/Fault.h"
#include "cli/ConsoleMachine.h"
#include "cli/Quoted.h"
#include "cli/RecordedFiles.h"
#include "cli/ResultsFile.h"
#include "sessions/RecordedSession.h"

namespace kelvara::cli {
namespace {

/// A file of which the first piece has already been read.
class StartedFile : public platform::InputFile {
 public:
  explicit StartedFile(std::unique_ptr<platform::InputFile> file)
      : file_(std::move(file)), start_(kPieceBytes, '\0') {
    start_.resize(file_->Read(start_));
  }

  /// Whether the file is one of JSON results.
  bool HoldsResults() const { return start_.starts_with('{'); }

  std::size_t Read(std::span<char> buffer) override {
    if (given_ == start_.size()) {
      return file_->Read(buffer);
    }
    const std::size_t got = start_.copy(buffer.data(), buffer.size(), given_);
    given_ += got;
    return got;
  }

  std::size_t Size() const override { return file_->Size(); }

 private:
  std::unique_ptr<platform::InputFile> file_;
  std::string start_;
  std::size_t given_ = 0;
};

std::string WholeText(platform::InputFile& file) {
  std::string text;
  std::vector<char> piece(kPieceBytes);
  while (const std::size_t got = file.Read(piece)) {
    text.append(piece.data(), got);
  }
  return text;
}

ExitCode ReadResultsFile(const std::string& name, platform::InputFile& file, const Streams& streams,
                         SurveyInput& input) {
  input.isRecorded = false;
  if (ReadResults(WholeText(file), input.model)) {
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
  RecordedFiles recorded(session, streams);
  for (const std::string& name : files) {
    StartedFile file(OpenRecorded(name, streams, machine));
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
