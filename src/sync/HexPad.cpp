#include "sync/HexPad.h"

#include <cstddef>

namespace kelvara::sync {

std::string HexPad(std::int16_t value, std::int16_t width) {
  auto rest = static_cast<std::uint16_t>(value);
  std::string text;
  do {
    text.insert(text.begin(), "0123456789ABCDEF"[rest % 16U]);
    rest = static_cast<std::uint16_t>(rest / 16U);
  } while (rest != 0);
  if (width > 0 && text.size() < static_cast<std::size_t>(width)) {
    text.insert(0, static_cast<std::size_t>(width) - text.size(), '0');
  }
  return text;
}

}  // namespace kelvara::sync
