#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "sessions/RecordedText.h"

namespace kelvara::test {

/// Records the reports and notes read from recorded text, in order.
class ReadingRecorder : public sessions::RecordedTextReader {
 public:
  void ProcessRfpsReport(std::string_view report) override { events.emplace_back(report); }
  void NoteDropped(sessions::DropReason reason) override {
    events.emplace_back(reason == sessions::DropReason::Unfinished ? kUnfinished : kTooLarge);
  }

  void SetTime(std::int64_t utcMilliseconds) override {
    events.push_back("(time " + std::to_string(utcMilliseconds) + ")");
  }
  void ClearResults() override { events.emplace_back(kClear); }
  void RestoreResults() override { events.emplace_back(kUndo); }

  static constexpr const char* kClear = "(clear)";
  static constexpr const char* kUndo = "(undo)";
  static constexpr const char* kUnfinished = "(unfinished)";
  static constexpr const char* kTooLarge = "(too large)";

  std::vector<std::string> events;
};

/// Feeds a whole file in pieces of one size.
inline void FeedFile(sessions::RecordedText& reading, std::string_view text,
                     std::size_t pieceSize) {
  for (std::size_t start = 0; start < text.size(); start += pieceSize) {
    reading.Feed(text.substr(start, pieceSize));
  }
  reading.End();
}

/// The events of a file read in one piece.
template <typename Reading>
std::vector<std::string> EventsOf(std::string_view text) {
  ReadingRecorder recorder;
  Reading reading(recorder);
  FeedFile(reading, text, text.size() + 1);
  return recorder.events;
}

}  // namespace kelvara::test
