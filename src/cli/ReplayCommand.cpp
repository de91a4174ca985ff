#include "cli/ReplayCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <istream>
#include <memory>
#include <span>
#include <string_view>

#include "base/Fault.h"
#include "cli/ConsoleMachine.h"
#include "cli/FileClash.h"
#include "cli/ProgressLine.h"
#include "cli/Quoted.h"
#include "cli/ResultOutputs.h"
#include "link/ReportCollector.h"
#include "platform/qt/QtFileSystem.h"
#include "sessions/KelvaraFile.h"
#include "sessions/RecordedSession.h"
#include "sessions/WholeReport.h"

namespace kelvara::cli {
namespace {

constexpr const char* kStandardInput = "-";
constexpr std::size_t kPieceBytes = std::size_t{256} << 10U;

/// Standard input as a file.
class StreamInput : public platform::InputFile {
 public:
  explicit StreamInput(std::istream& in) : in_(in) {}

  std::size_t Read(std::span<char> buffer) override {
    // Waits for the first character, then takes the characters that arrived with it.
    if (in_.peek() != std::istream::traits_type::eof()) {
      return static_cast<std::size_t>(
          in_.readsome(buffer.data(), static_cast<std::streamsize>(buffer.size())));
    }
    if (in_.bad()) {
      throw base::Fault(base::FaultKind::File, "cannot read standard input");
    }
    return 0;
  }

  std::size_t Size() const override { return 0; }

 private:
  std::istream& in_;
};

/// Hands recorded reports to the parser and notes dropped reports on standard error.
class Replay : public sessions::RecordedTextReader {
 public:
  Replay(app::Session& session, const Streams& streams) : session_(session), streams_(streams) {}

  void ProcessRfpsReport(std::string_view report) override {
    const std::int64_t before = Counted();
    session_.Parser().ProcessRfpsReport(report);
    taken_ += Counted() > before ? 1 : 0;
  }

  void NoteDropped(sessions::DropReason reason) override {
    if (reason == sessions::DropReason::Unfinished) {
      streams_.Complain(name_ + ": the last report has fewer than " +
                        std::to_string(link::kRfpsReportLines) + " lines and was dropped");
    } else {
      streams_.Complain(name_ + ": a report larger than " + std::to_string(link::kMaxReportBytes) +
                        " bytes without its " + std::to_string(link::kRfpsReportLines) +
                        " lines was dropped");
    }
  }

  /// Reads one file to its end.
  void ReadFile(const std::string& name, platform::InputFile& file, sessions::RecordedText& text) {
    name_ = name == kStandardInput ? "standard input" : name;
    ProgressLine progress(name_, file.Size(), streams_);
    std::vector<char> piece(kPieceBytes);
    std::string start;
    const std::int64_t before = taken_;
    while (const std::size_t got = file.Read(piece)) {
      start.append(piece.data(), std::min(got, sessions::kFileStartBytes - start.size()));
      text.Feed({piece.data(), got});
      progress.Advance(got);
    }
    text.End();
    names_ += names_.empty() ? "" : ", ";
    names_ += Quoted(name_);
    const std::string_view kind = sessions::KelvaraFile(start);
    if (!kind.empty()) {
      names_ += " (" + std::string(kind) + ")";
    } else if (taken_ > before) {
      // Words in one of Kelvara's own files may look like an antenna, so only other files count.
      found_ = true;
    }
  }

  /// Notes on standard error if none of the files contained a report of an antenna.
  void NoteNothingFound() const {
    if (!found_) {
      streams_.Complain("no report of an antenna is in " + names_);
    }
  }

 private:
  std::int64_t Counted() const {
    return session_.Model().ReportCount() + session_.Parser().AbandonedCount();
  }

  app::Session& session_;
  Streams streams_;
  std::string name_;
  std::string names_;       ///< All the files, with the kind of each that is Kelvara's own.
  std::int64_t taken_ = 0;  ///< Reports of antennas, including abandoned ones.
  bool found_ = false;
};

std::unique_ptr<platform::InputFile> Open(const std::string& name, const Streams& streams,
                                          const CommandMachine& machine) {
  if (name == kStandardInput) {
    return std::make_unique<StreamInput>(streams.in);
  }
  return machine.fileSystem.OpenForInput(name);
}

}  // namespace

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
  app::Session session(console.Machine(), grid, nullptr);
  session.Options() = {options_.Display()};
  session.ClearSyncResults();
  try {
    // Checks all the files before reading the first, so that a wrong name changes nothing.
    for (const std::string& name : files_) {
      if (name != kStandardInput) {
        qt::ExpectReadable(name);
      }
    }
  } catch (const base::Fault& fault) {
    streams.Complain(fault.what());
    return ExitCode::Failed;
  }
  if (StartLog(session, options_, streams) != ExitCode::Done) {
    return ExitCode::Failed;
  }
  Replay replay(session, streams);
  ExitCode read = ExitCode::Done;
  for (const std::string& name : files_) {
    try {
      // New readers for each file: a file that cannot be read to its end leaves no partial report.
      sessions::RecordedSession recordedSession(replay);
      sessions::WholeReport wholeReport(replay);
      sessions::RecordedText& text =
          whole_ ? static_cast<sessions::RecordedText&>(wholeReport) : recordedSession;
      replay.ReadFile(name, *Open(name, streams, machine), text);
    } catch (const base::Fault& fault) {
      streams.Complain(fault.what());
      read = ExitCode::Failed;
    }
  }
  if (read == ExitCode::Done && !whole_) {
    replay.NoteNothingFound();
  }
  const ExitCode written = WriteResults(session, grid, console, options_);
  return read == ExitCode::Done ? written : read;
}

}  // namespace kelvara::cli
