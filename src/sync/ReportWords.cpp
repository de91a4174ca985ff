#include "sync/ReportWords.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace kelvara::sync {
namespace {

struct Spelling {
  ReportWord word;
  std::string_view lowerCase;
};
constexpr std::array<Spelling, 3> kSpellings{{{ReportWord::Marker, "100ec"},
                                              {ReportWord::Sync, "sync"},
                                              {ReportWord::Neighbour, "neighbour"}}};

constexpr std::uint8_t kNone = kSpellings.size();

/// For each byte, the spelling that begins with it in either letter case. Nearly every character of
/// a report begins none.
constexpr std::array<std::uint8_t, 256> kSpellingOfFirst = [] {
  std::array<std::uint8_t, 256> spellings{};
  spellings.fill(kNone);
  spellings['1'] = 0;
  spellings['s'] = spellings['S'] = 1;
  spellings['n'] = spellings['N'] = 2;
  return spellings;
}();

char LowerCase(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                              : character;
}

bool StartsWith(std::string_view text, std::string_view lowerCase) {
  return text.size() >= lowerCase.size() &&
         std::equal(lowerCase.begin(), lowerCase.end(), text.begin(),
                    [](char letter, char character) { return letter == LowerCase(character); });
}

}  // namespace

std::optional<FoundWord> ReportWords::Next() {
  for (std::size_t index = index_; index < text_.size(); ++index) {
    const std::uint8_t spelling = kSpellingOfFirst[static_cast<unsigned char>(text_[index])];
    if (spelling == kNone) {
      continue;
    }
    const auto& [word, lowerCase] = kSpellings[spelling];
    if (StartsWith(text_.substr(index), lowerCase)) {
      index_ = index + lowerCase.size();
      return FoundWord{word, index};
    }
  }
  index_ = text_.size();
  return std::nullopt;
}

}  // namespace kelvara::sync
