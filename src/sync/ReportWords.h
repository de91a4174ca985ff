#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
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

/// Finds the words of a report in the order of the text, looking at many places at once.
class ReportWords {
 public:
  /// The text has to outlive the search.
  explicit ReportWords(std::string_view text);

  /// The next word; nothing when there is none left.
  std::optional<FoundWord> Next();

 private:
  static constexpr std::size_t kStride = 64;

  /// Marks the stride that begins at `strideBegin_`.
  void MarkStride();

  /// Goes on to the next eight places that have a mark; false when there are none left.
  bool FindMark();

  std::string_view text_;
  /// For each place from `strideBegin_` on, 1 where a word's first two characters may stand.
  std::array<std::uint8_t, kStride> marks_;
  std::size_t strideBegin_ = 0;
  /// The marks of the eight places from `eightBegin_` on that have not been looked at yet.
  std::uint64_t eight_ = 0;
  std::size_t eightBegin_ = 0;
};

}  // namespace kelvara::sync
