#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "sync/Colour.h"

namespace kelvara::sync {

/// The colour of a diagonal cell, where an antenna meets itself.
inline constexpr Colour kDiagonalColour{0xC0C0C0};

/// The colours that FPS values are given in the grid: palette colours in the order in which they
/// are first asked for, white first, kept until the next clear.
class FpsColours {
 public:
  /// The colour of an FPS value; a value outside 0 to 16 is a subscript fault.
  Colour GetRpsColour(std::int16_t iRps);

  /// Takes every colour back.
  void Clear();

 private:
  static constexpr std::size_t kEntries = 17;

  std::array<std::optional<Colour>, kEntries> FpsColour_;
  std::int16_t NextColour_ = 0;
};

}  // namespace kelvara::sync
