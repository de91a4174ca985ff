#include "sync/TextSearch.h"

namespace kelvara::sync {
namespace {

constexpr std::size_t kStride = 32;
constexpr unsigned kCaseBit = 0x20;

char ToLowerCase(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character | 0x20) : character;
}

bool StandsAt(std::string_view text, std::size_t index, std::string_view lowerCaseWord) {
  for (std::size_t i = 0; i < lowerCaseWord.size(); ++i) {
    if (ToLowerCase(text[index + i]) != lowerCaseWord[i]) {
      return false;
    }
  }
  return true;
}

/// Whether the word's first two characters may stand somewhere in the next `kStride` places. Plain
/// enough for the compiler to look at all of them at once; setting the case bit lets a few wrong
/// characters through, which the full comparison sorts out.
bool MayStartWithin(const char* text, unsigned char first, unsigned char second) {
  unsigned char found = 0;
  for (std::size_t i = 0; i < kStride; ++i) {
    const bool isFirst = (static_cast<unsigned char>(text[i]) | kCaseBit) == first;
    const bool isSecond = (static_cast<unsigned char>(text[i + 1]) | kCaseBit) == second;
    found |= static_cast<unsigned char>(static_cast<unsigned>(isFirst) &
                                        static_cast<unsigned>(isSecond));
  }
  return found != 0;
}

}  // namespace

std::size_t FindIgnoringCase(std::string_view text, std::string_view lowerCaseWord,
                             std::size_t start) {
  if (text.size() < lowerCaseWord.size()) {
    return std::string_view::npos;
  }
  const auto first = static_cast<unsigned char>(lowerCaseWord[0]);
  const auto second = static_cast<unsigned char>(lowerCaseWord[1]);
  const std::size_t end = text.size() - lowerCaseWord.size() + 1;
  std::size_t index = start;
  while (index < end) {
    if (index + kStride < text.size() && !MayStartWithin(text.data() + index, first, second)) {
      index += kStride;
      continue;
    }
    const std::size_t stop = end - index > kStride ? index + kStride : end;
    for (; index < stop; ++index) {
      if (StandsAt(text, index, lowerCaseWord)) {
        return index;
      }
    }
  }
  return std::string_view::npos;
}

}  // namespace kelvara::sync
