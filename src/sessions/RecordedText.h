#pragma once

#include <cstdint>
#include <string_view>

namespace kelvara::sessions {

/// Why recorded text was not handed to the parser.
enum class DropReason {
  Unfinished,  ///< The file ended before the report's last line.
  TooLarge,    ///< The report was too large to keep.
};

/// Receives the reports of a recorded session.
class RecordedTextReader {
 public:
  virtual ~RecordedTextReader() = default;

  /// One whole report, line ends included.
  virtual void ProcessRfpsReport(std::string_view report) = 0;

  /// Text that was dropped.
  virtual void NoteDropped(DropReason reason) = 0;

  /// What follows was received at this time, in milliseconds since the start of 1970 in UTC.
  virtual void SetTime(std::int64_t /*utcMilliseconds*/) {}

  /// The user, or a lost link, cleared the results here.
  virtual void ClearResults() {}

  /// The user restored the cleared results here.
  virtual void RestoreResults() {}
};

/// One file of recorded beltpack text, fed in pieces of any size.
class RecordedText {
 public:
  virtual ~RecordedText() = default;

  /// The file's next piece. Reports that it completes go to the reader at once.
  virtual void Feed(std::string_view piece) = 0;

  /// The file has ended.
  virtual void End() = 0;
};

}  // namespace kelvara::sessions
