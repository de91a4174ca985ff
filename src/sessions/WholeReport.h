#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "sessions/RecordedText.h"

namespace kelvara::sessions {

/// A file that is one report, whatever its number of lines. Only one that grows beyond the largest
/// report without the lines of one is dropped.
class WholeReport : public RecordedText {
 public:
  explicit WholeReport(RecordedTextReader& reader) : reader_(reader) {}

  void Feed(std::string_view piece) override;
  void End() override;

 private:
  RecordedTextReader& reader_;
  std::string text_;
  std::size_t lines_ = 0;
  bool tooLarge_ = false;
};

}  // namespace kelvara::sessions
