#include "sim/LineDamage.h"

#include <algorithm>

namespace kelvara::sim {
namespace {

constexpr int kByteValues = 256;
constexpr int kBytesPerGarbledOne = 20;
constexpr int kLineFeedsPerLostOne = 4;

/// Any byte but this one.
char AnotherByte(char byte, Random& random) {
  return static_cast<char>(byte + 1 + random.Below(kByteValues - 1));
}

}  // namespace

std::string CutShort(std::string text, Random& random) {
  if (text.size() > 1) {
    text.resize(1 + static_cast<std::size_t>(random.Below(static_cast<int>(text.size()) - 1)));
  }
  return text;
}

std::string Garbled(std::string text, Random& random) {
  if (text.empty()) {
    return text;
  }
  const int certain = random.Below(static_cast<int>(text.size()));
  for (int index = 0; index < static_cast<int>(text.size()); ++index) {
    if (index == certain || random.Below(kBytesPerGarbledOne) == 0) {
      char& byte = text[static_cast<std::size_t>(index)];
      byte = AnotherByte(byte, random);
    }
  }
  return text;
}

std::string WithoutSomeLineFeeds(const std::string& text, Random& random) {
  const auto lineFeeds = static_cast<int>(std::count(text.begin(), text.end(), '\n'));
  if (lineFeeds == 0) {
    return text;
  }
  const int certain = random.Below(lineFeeds);
  int lineFeed = 0;
  std::string left;
  for (const char character : text) {
    if (character == '\n') {
      const bool isLost = lineFeed == certain || random.Below(kLineFeedsPerLostOne) == 0;
      ++lineFeed;
      if (isLost) {
        continue;
      }
    }
    left += character;
  }
  return left;
}

std::string AnyBytes(std::size_t count, Random& random) {
  std::string bytes(count, '\0');
  for (char& byte : bytes) {
    byte = static_cast<char>(random.Below(kByteValues));
  }
  return bytes;
}

}  // namespace kelvara::sim
