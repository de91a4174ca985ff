#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "sync/Colour.h"

namespace kelvara::sync {

/// The colour of a diagonal cell, which pairs an antenna with itself.
inline constexpr Colour kDiagonalColour{0xC0C0C0};

/// Assigns colours to the FPS values in the grid. A value gets the next palette colour, starting
/// with white, when it is first asked for, and keeps it until the next clear.
class FpsColours {
 public:
  /// The colour of an FPS value; a value outside 0 to 16 is a subscript fault.
  Colour GetRpsColour(std::int16_t iRps);

  /// Forgets all assigned colours.
  void Clear();

 private:
  static constexpr std::size_t kEntries = 17;

  std::array<std::optional<Colour>, kEntries> FpsColour_;
  std::int16_t NextColour_ = 0;
};

}  // namespace kelvara::sync
