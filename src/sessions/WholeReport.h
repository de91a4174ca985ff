#pragma once

#include <string>
#include <string_view>

#include "sessions/RecordedText.h"

namespace kelvara::sessions {

/// A file that is one report, whatever its size and number of lines. All of it is kept in memory.
class WholeReport : public RecordedText {
 public:
  explicit WholeReport(RecordedTextReader& reader) : reader_(reader) {}

  void Feed(std::string_view piece) override;
  void End() override;

 private:
  RecordedTextReader& reader_;
  std::string text_;
};

}  // namespace kelvara::sessions
