#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace kelvara::sync {

/// The words that an RFPS report is understood by: "100ec", "Sync" and "Neighbour", in any letter
/// case.
enum class ReportWord { Marker, Sync, Neighbour };

/// One word, and the index of its first character in the text.
struct FoundWord {
  ReportWord word;
  std::size_t index;
};

/// Finds the words of a report in the order of the text.
class ReportWords {
 public:
  /// The text has to outlive the search.
  explicit ReportWords(std::string_view text) : text_(text) {}

  /// The next word; nothing when there is none left.
  std::optional<FoundWord> Next();

 private:
  std::string_view text_;
  std::size_t index_ = 0;
};

}  // namespace kelvara::sync
