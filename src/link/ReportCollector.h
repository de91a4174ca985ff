#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kelvara::link {

/// The lines of a report that answers "rfps".
inline constexpr std::int16_t kRfpsReportLines = 29;

/// The most text that one report may have. A report that grows beyond it before its 29th line feed
/// is dropped, so that an endless line cannot fill the memory.
inline constexpr std::size_t kMaxReportBytes = std::size_t{1} << 20U;

/// Collects the text of one report until its 29th line feed.
class ReportCollector {
 public:
  /// What the text just taken has completed.
  enum class Event {
    None,     ///< No line feed in it, or nothing is being collected.
    Line,     ///< One or more lines of a report that is not complete yet.
    Report,   ///< The last line: `Text` is the whole report.
    Dropped,  ///< The last line of a report that was too large to keep.
  };

  struct Step {
    std::size_t taken;  ///< How many characters were taken.
    Event event;
  };

  /// Empties the buffer and expects the lines of a new report.
  void Expect();

  /// Empties the buffer and expects nothing.
  void Reset();

  /// Takes text up to and including the report's last line feed, or all of it if that has not come
  /// yet. While nothing is expected it takes all text and keeps none.
  Step Append(std::string_view text);

  /// Line feeds still expected; 0 while nothing is collected.
  std::int16_t LinesLeft() const { return iRfpsLinesLeft_; }

  /// Whether a report has begun and is not complete.
  bool IsUnfinished() const { return iRfpsLinesLeft_ > 0 && (tooLarge_ || !sRfpsBuffer_.empty()); }

  /// The text so far. It stays after the report is complete, until the next one is expected.
  std::string_view Text() const { return sRfpsBuffer_; }

 private:
  void Keep(std::string_view text);

  std::int16_t iRfpsLinesLeft_ = 0;
  bool tooLarge_ = false;
  std::string sRfpsBuffer_;
};

}  // namespace kelvara::link
