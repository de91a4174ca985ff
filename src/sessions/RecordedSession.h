#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "link/ReportCollector.h"
#include "sessions/RecordedText.h"

namespace kelvara::sessions {

/// A file of recorded reports. In a plain stream, a report ends at every 29th line feed. In a
/// trace, which begins with a command mark, reports are collected as they were live: "rfps" empties
/// the buffer and expects 29 lines, other commands do not, and characters outside a report are not
/// collected. A command that is unknown, or that the file ends within, is passed over.
class RecordedSession : public RecordedText {
 public:
  explicit RecordedSession(RecordedTextReader& reader) : reader_(reader) {}

  /// Continues where another one is, with a reader of its own.
  RecordedSession(const RecordedSession& other, RecordedTextReader& reader)
      : reader_(reader),
        collector_(other.collector_),
        state_(other.state_),
        command_(other.command_) {}

  void Feed(std::string_view piece) override;
  void End() override;

  /// How many bytes at the end of what was fed are the beginning of a mark that is not whole.
  std::size_t UnfinishedMarkBytes() const;

  /// How many bytes of text are kept, most of them of an unfinished report.
  std::size_t KeptBytes() const { return collector_.Text().size() + command_.size(); }

 private:
  enum class State {
    Start,    ///< Nothing read yet.
    Stream,   ///< A plain stream.
    Text,     ///< A trace, in received text.
    Mark,     ///< A trace, after a mark that may be doubled.
    Command,  ///< A trace, inside a command.
  };

  std::size_t FeedText(std::string_view text);
  std::size_t FeedMark(std::string_view text);
  std::size_t FeedCommand(std::string_view text);
  void TakeMark(std::string_view mark);
  void Collect(std::string_view text);

  RecordedTextReader& reader_;
  link::ReportCollector collector_;
  State state_ = State::Start;
  std::string command_;
};

}  // namespace kelvara::sessions
