#include "cli/RecordedFiles.h"

#include <algorithm>
#include <istream>
#include <optional>
#include <span>

#include "base/Fault.h"
#include "cli/ProgressLine.h"
#include "cli/Quoted.h"
#include "link/ReportCollector.h"
#include "platform/qt/QtFileSystem.h"
#include "sessions/KelvaraFile.h"
#include "sessions/StartedFile.h"

namespace kelvara::cli {
namespace {

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

}  // namespace

std::unique_ptr<platform::InputFile> OpenRecorded(const std::string& name, const Streams& streams,
                                                  const CommandMachine& machine) {
  if (name == kStandardInput) {
    return std::make_unique<StreamInput>(streams.in);
  }
  return machine.fileSystem.OpenForInput(name);
}

void ExpectReadable(const std::vector<std::string>& names) {
  for (const std::string& name : names) {
    if (name != kStandardInput) {
      qt::ExpectReadable(name);
    }
  }
}

void RecordedFiles::ProcessRfpsReport(std::string_view report) {
  const std::int64_t before = Counted();
  session_.Parser().ProcessRfpsReport(report);
  taken_ += Counted() > before ? 1 : 0;
}

void RecordedFiles::NoteDropped(sessions::DropReason reason) {
  if (reason == sessions::DropReason::Unfinished) {
    streams_.Complain(name_ + ": the last report has fewer than " +
                      std::to_string(link::kRfpsReportLines) + " lines and was dropped");
  } else {
    streams_.Complain(name_ + ": a report larger than " + std::to_string(link::kMaxReportBytes) +
                      " bytes without its " + std::to_string(link::kRfpsReportLines) +
                      " lines was dropped");
  }
}

void RecordedFiles::SetTime(std::int64_t utcMilliseconds) {
  if (clock_ != nullptr) {
    clock_->SetTraceTime(utcMilliseconds);
  }
}

void RecordedFiles::ClearResults() { session_.ClearSyncResults(); }

void RecordedFiles::RestoreResults() {
  const std::string reason = session_.RestoreClearedResults();
  if (!reason.empty()) {
    streams_.Complain(name_ + ": cleared results were not restored: " + reason);
  }
}

void RecordedFiles::ReadFile(const std::string& name, platform::InputFile& file,
                             sessions::RecordedText& text) {
  name_ = name == kStandardInput ? "standard input" : name;
  ProgressLine progress(name_, file.Size(), streams_);
  std::vector<char> piece(sessions::kPieceBytes);
  std::string start;
  const std::int64_t before = taken_;
  while (const std::size_t got = file.Read(piece)) {
    start.append(piece.data(), std::min(got, sessions::kFileStartBytes - start.size()));
    text.Feed({piece.data(), got});
    progress.Advance(got);
  }
  text.End();
  if (clock_ != nullptr) {
    clock_->SetTraceTime(std::nullopt);
  }
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

std::string RecordedFiles::NothingFound() const {
  return found_ ? "" : "no report of an antenna is in " + names_;
}

std::int64_t RecordedFiles::Counted() const {
  return session_.Model().ReportCount() + session_.Parser().AbandonedCount();
}

}  // namespace kelvara::cli
