#include "sessions/Journal.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <span>
#include <utility>

#include "base/Fault.h"
#include "link/BeltpackCommands.h"
#include "link/ReportCollector.h"
#include "sessions/TraceMarks.h"

namespace kelvara::sessions {
namespace {

constexpr int kMostNames = 1000;

/// Writes to a file that belongs to someone else.
class SharedFile : public platform::OutputFile {
 public:
  explicit SharedFile(platform::LockedFile& file) : file_(file) {}
  void Write(std::string_view bytes) override { file_.Write(bytes); }

 private:
  platform::LockedFile& file_;
};

/// The name of a journal without its suffix.
std::string NameAt(platform::DateTime localTime) {
  const auto seconds = static_cast<std::int64_t>(std::floor(localTime * platform::kSecondsPerDay));
  const std::chrono::sys_seconds moment{std::chrono::seconds(seconds)};
  const auto day = std::chrono::floor<std::chrono::days>(moment);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss time(moment - day);
  std::array<char, 40> name{};
  std::snprintf(name.data(), name.size(), "%04d-%02u-%02u-%02d%02d%02d",
                static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                static_cast<unsigned>(date.day()), static_cast<int>(time.hours().count()),
                static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()));
  return name.data();
}

/// A part of a trace that continues another one: without text before its first report, which would
/// complete a report of the other, and without the marks of clears and undos in its first
/// `clearedBytes`, which are about results that are not in it.
std::string Continuation(std::string_view part, std::size_t clearedBytes) {
  const std::size_t whole = part.size();
  std::string text;
  bool inReports = false;
  while (!part.empty()) {
    const std::size_t mark = std::min(part.find(kCommandMark), part.size());
    const bool isDoubled = part.substr(mark, 2) == std::string(2, kCommandMark);
    const std::size_t textBytes = mark + (isDoubled ? 2 : 0);
    if (inReports) {
      text += part.substr(0, textBytes);
    }
    part.remove_prefix(textBytes);
    if (isDoubled || part.empty()) {
      continue;
    }
    const std::size_t markBytes = std::min(part.find(kCommandEnd), part.size() - 1) + 1;
    const std::string_view command = part.substr(1, markBytes - 2);
    const bool isCleared = whole - part.size() < clearedBytes;
    if (!isCleared || (command != kClearMark && command != kUndoMark)) {
      text += part.substr(0, markBytes);
    }
    inReports = inReports || command == link::kRfpsCommand;
    part.remove_prefix(markBytes);
  }
  return text;
}

}  // namespace

void Journal::Sent(std::string_view command) {
  lastCommand_ = command;
  if (command == link::kRfpsCommand) {
    linesLeft_ = link::kRfpsReportLines;
    reportStart_ = file_ ? file_->Size() : 0;
    awaitsReport_ = false;
  }
  if (trace_) {
    trace_->Sent(command);
  }
}

void Journal::Received(std::string_view text) {
  if (text.empty()) {
    return;
  }
  if (!begun_) {
    Begin();
  }
  const auto lines = static_cast<int>(std::count(text.begin(), text.end(), '\n'));
  linesLeft_ = std::max(linesLeft_ - lines, 0);
  if (trace_ && !awaitsReport_) {
    trace_->Received(text);
  }
}

void Journal::Cleared(bool keeps) {
  if (keeps) {
    cleared_ = part_;
    clearedAt_ = file_ ? std::optional(file_->Size()) : std::nullopt;
  }
  if (trace_) {
    trace_->Cleared(keeps);
    const std::uint64_t end = file_->Size();
    part_ = {linesLeft_ > 0 ? reportStart_ : end, end};
  }
}

void Journal::Restored() {
  part_ = cleared_;
  clearedAt_.reset();
  if (trace_) {
    trace_->Restored();
  }
}

void Journal::Ended() {
  if (trace_) {
    trace_->Ended();
    failure_ = trace_->Failure();
    trace_.reset();
  }
  file_.reset();
}

void Journal::Continue(UnfinishedSession session) {
  try {
    std::string present = PresentPart();
    session.file->Cut(session.wholeBytes);
    if (!present.empty()) {
      session.file->Write(present);
    }
    const bool isMoved = trace_.has_value();
    std::unique_ptr<platform::LockedFile> moved = std::move(file_);
    Write(std::move(session.file));
    if (isMoved) {
      awaitsReport_ = linesLeft_ == 0;
      GiveUp(std::move(moved));
    } else {
      // Of a report that has begun, the first lines are not in any file.
      awaitsReport_ = begun_ || linesLeft_ == 0;
      begun_ = true;
      trace_->Sent(lastCommand_);
    }
  } catch (const base::Fault& fault) {
    failure_ = fault.what();
  }
}

void Journal::GiveUp(std::unique_ptr<platform::LockedFile> file) {
  if (!clearedAt_) {
    file->Remove();
    return;
  }
  file->Cut(*clearedAt_);
  LineTrace(std::make_unique<SharedFile>(*file), clock_).Ended();
  clearedAt_.reset();
}

std::string Journal::Failure() const {
  return trace_ && !trace_->Failure().empty() ? trace_->Failure() : failure_;
}

void Journal::Begin() {
  begun_ = true;
  try {
    const std::string name = NameAt(clock_.WallTime());
    std::unique_ptr<platform::LockedFile> file;
    for (int number = 1; !file && number <= kMostNames; ++number) {
      file = folder_.Create(name + (number == 1 ? "" : "-" + std::to_string(number)) + ".trace");
    }
    if (!file) {
      throw base::Fault(base::FaultKind::File, "too many journals are named " + name);
    }
    Write(std::move(file));
    trace_->Sent(lastCommand_);
  } catch (const base::Fault& fault) {
    failure_ = fault.what();
  }
}

void Journal::Write(std::unique_ptr<platform::LockedFile> file) {
  file_ = std::move(file);
  trace_.emplace(std::make_unique<SharedFile>(*file_), clock_);
}

std::string Journal::PresentPart() {
  if (!trace_) {
    return {};
  }
  trace_->Flush();
  std::string part(file_->Size() - part_.start, '\0');
  std::size_t total = 0;
  while (const std::size_t got = file_->Read(part_.start + total, std::span(part).subspan(total))) {
    total += got;
  }
  part.resize(total);
  return Continuation(part, part_.clearedBefore - std::min(part_.start, part_.clearedBefore));
}

}  // namespace kelvara::sessions
