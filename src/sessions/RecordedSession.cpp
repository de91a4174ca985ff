#include "sessions/RecordedSession.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <system_error>

#include "link/BeltpackCommands.h"
#include "sessions/TraceMarks.h"

namespace kelvara::sessions {
namespace {

/// The last millisecond of the year 9999, the latest time that has a date.
constexpr std::int64_t kLatestTime = 253402300799999;

/// A mark without a command end within this many bytes does not begin a command.
constexpr std::size_t kMaxCommandBytes = 64;

constexpr std::string_view kMarkText(&kCommandMark, 1);

/// The time in a mark; empty if it is not one.
std::optional<std::int64_t> TimeIn(std::string_view mark) {
  if (!mark.starts_with(kTimeMark)) {
    return std::nullopt;
  }
  mark.remove_prefix(1);
  std::int64_t time = -1;
  const auto [end, error] = std::from_chars(mark.data(), mark.data() + mark.size(), time);
  const bool isTime =
      error == std::errc() && end == mark.data() + mark.size() && time >= 0 && time <= kLatestTime;
  return isTime ? std::optional(time) : std::nullopt;
}

}  // namespace

void RecordedSession::Feed(std::string_view piece) {
  if (state_ == State::Start && !piece.empty()) {
    state_ = piece[0] == kCommandMark ? State::Text : State::Stream;
    if (state_ == State::Stream) {
      collector_.Expect();
    }
  }
  while (!piece.empty()) {
    std::size_t taken = piece.size();
    switch (state_) {
      case State::Start:
      case State::Stream:
        Collect(piece);
        break;
      case State::Text:
        taken = FeedText(piece);
        break;
      case State::Mark:
        taken = FeedMark(piece);
        break;
      case State::Command:
        taken = FeedCommand(piece);
        break;
    }
    piece.remove_prefix(taken);
  }
}

void RecordedSession::End() {
  if (collector_.IsUnfinished()) {
    reader_.NoteDropped(DropReason::Unfinished);
  }
  collector_.Reset();
  command_.clear();
  state_ = State::Start;
}

std::size_t RecordedSession::UnfinishedMarkBytes() const {
  return state_ == State::Mark ? 1 : state_ == State::Command ? command_.size() + 1 : 0;
}

std::size_t RecordedSession::FeedText(std::string_view text) {
  const std::size_t mark = text.find(kCommandMark);
  if (mark == std::string_view::npos) {
    Collect(text);
    return text.size();
  }
  Collect(text.substr(0, mark));
  state_ = State::Mark;
  return mark + 1;
}

std::size_t RecordedSession::FeedMark(std::string_view text) {
  if (text[0] == kCommandMark) {
    Collect(kMarkText);
    state_ = State::Text;
    return 1;
  }
  command_.clear();
  state_ = State::Command;
  return 0;
}

std::size_t RecordedSession::FeedCommand(std::string_view text) {
  const std::size_t space = kMaxCommandBytes - command_.size();
  const std::size_t end = text.substr(0, space).find(kCommandEnd);
  if (end != std::string_view::npos) {
    command_ += text.substr(0, end);
    TakeMark(command_);
    state_ = State::Text;
    return end + 1;
  }
  const std::size_t taken = std::min(space, text.size());
  command_ += text.substr(0, taken);
  if (command_.size() == kMaxCommandBytes) {
    // The trace is damaged: the text after the mark was received, not sent.
    Collect(command_);
    state_ = State::Text;
  }
  return taken;
}

void RecordedSession::TakeMark(std::string_view mark) {
  if (mark == link::kRfpsCommand) {
    collector_.Expect();
  } else if (mark == kClearMark) {
    reader_.ClearResults();
  } else if (mark == kUndoMark) {
    reader_.RestoreResults();
  } else if (const std::optional<std::int64_t> time = TimeIn(mark)) {
    reader_.SetTime(*time);
  }
}

void RecordedSession::Collect(std::string_view text) {
  while (!text.empty()) {
    const auto [taken, event] = collector_.Append(text);
    text.remove_prefix(taken);
    if (event == link::ReportCollector::Event::Report) {
      reader_.ProcessRfpsReport(collector_.Text());
    } else if (event == link::ReportCollector::Event::Dropped) {
      reader_.NoteDropped(DropReason::TooLarge);
    }
    if (state_ == State::Stream && collector_.LinesLeft() == 0) {
      collector_.Expect();
    }
  }
}

}  // namespace kelvara::sessions
