#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace kelvara::sync {

/// The words that structure an RFPS report: "100ec", "Sync" and "Neighbour", in any letter case.
enum class ReportWord { Marker, Sync, Neighbour };

/// One word, and the index of its first character in the text.
struct FoundWord {
  ReportWord word;
  std::size_t index;
};

/// Finds the words of a report in the order of the text.
class ReportWords {
 public:
  /// The text must exist as long as this object.
  explicit ReportWords(std::string_view text) : text_(text) {}

  /// The next word, or nothing if none is left.
  std::optional<FoundWord> Next();

 private:
  std::string_view text_;
  std::size_t index_ = 0;
};

}  // namespace kelvara::sync
