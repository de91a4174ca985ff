#include "sync/ReportWords.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace kelvara::sync {
namespace {

constexpr std::size_t kEight = 8;
constexpr unsigned kCaseBit = 0x20;

constexpr bool kLowestByteFirst = std::endian::native == std::endian::little;

/// Eight marks in one number.
std::uint64_t ReadEight(const std::uint8_t* marks) {
  std::uint64_t eight = 0;
  std::memcpy(&eight, marks, sizeof(eight));
  return eight;
}

/// The place of the first of eight marks.
std::size_t FirstMark(std::uint64_t eight) {
  const int zeros = kLowestByteFirst ? std::countr_zero(eight) : std::countl_zero(eight);
  return static_cast<std::size_t>(zeros) / kEight;
}

std::uint64_t WithoutFirstMark(std::uint64_t eight) {
  return kLowestByteFirst ? eight & (eight - 1) : eight ^ std::bit_floor(eight);
}

/// Whether the text begins with a word of lower-case letters, in any letter case.
template <std::size_t kSize>
bool StartsWithLetters(std::string_view text, const char (&letters)[kSize]) {
  constexpr std::size_t kLetters = kSize - 1;
  if (text.size() < kLetters) {
    return false;
  }
  unsigned different = 0;
  for (std::size_t i = 0; i < kLetters; ++i) {
    // No other character than the two forms of a letter gives the lower-case form here.
    different |=
        (static_cast<unsigned char>(text[i]) | kCaseBit) ^ static_cast<unsigned char>(letters[i]);
  }
  return different == 0;
}

/// The word at the beginning of the text.
std::optional<ReportWord> WordAt(std::string_view text) {
  switch (text[0]) {
    case '1':
      if (text.starts_with("100") && StartsWithLetters(text.substr(3), "ec")) {
        return ReportWord::Marker;
      }
      break;
    case 'n':
    case 'N':
      if (StartsWithLetters(text, "neighbour")) {
        return ReportWord::Neighbour;
      }
      break;
    case 's':
    case 'S':
      if (StartsWithLetters(text, "sync")) {
        return ReportWord::Sync;
      }
      break;
    default:
      break;
  }
  return std::nullopt;
}

/// Marks the places where a word's first two characters may stand; reads one character more than
/// it marks. Plain enough for the compiler to look at many places at once: setting the case bit
/// lets a few wrong characters through, which the full comparison sorts out.
template <std::size_t kPlaces>
void Mark(const char* text, std::array<std::uint8_t, kPlaces>& marks) {
  for (std::size_t i = 0; i < kPlaces; ++i) {
    const auto first = static_cast<std::uint8_t>(static_cast<std::uint8_t>(text[i]) | kCaseBit);
    const auto second =
        static_cast<std::uint8_t>(static_cast<std::uint8_t>(text[i + 1]) | kCaseBit);
    const unsigned marker = unsigned{first == '1'} & unsigned{second == '0'};
    const unsigned sync = unsigned{first == 's'} & unsigned{second == 'y'};
    const unsigned neighbour = unsigned{first == 'n'} & unsigned{second == 'e'};
    marks[i] = static_cast<std::uint8_t>(marker | sync | neighbour);
  }
}

}  // namespace

ReportWords::ReportWords(std::string_view text) : text_(text) {
  MarkStride();
  eight_ = ReadEight(marks_.data());
}

std::optional<FoundWord> ReportWords::Next() {
  while (FindMark()) {
    const std::size_t index = eightBegin_ + FirstMark(eight_);
    eight_ = WithoutFirstMark(eight_);
    if (const std::optional<ReportWord> word = WordAt(text_.substr(index))) {
      return FoundWord{*word, index};
    }
  }
  return std::nullopt;
}

bool ReportWords::FindMark() {
  while (eight_ == 0) {
    if (eightBegin_ + kEight < strideBegin_ + kStride) {
      eightBegin_ += kEight;
    } else if (strideBegin_ + kStride < text_.size()) {
      strideBegin_ += kStride;
      eightBegin_ = strideBegin_;
      MarkStride();
    } else {
      return false;
    }
    eight_ = ReadEight(marks_.data() + (eightBegin_ - strideBegin_));
  }
  return true;
}

void ReportWords::MarkStride() {
  const std::string_view rest = text_.substr(strideBegin_);
  if (rest.size() > kStride) {
    Mark(rest.data(), marks_);
  } else {
    std::array<char, kStride + 1> padded{};
    std::copy(rest.begin(), rest.end(), padded.begin());
    Mark(padded.data(), marks_);
  }
}

}  // namespace kelvara::sync
