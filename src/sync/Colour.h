#pragma once

#include <cstdint>

namespace kelvara::sync {

/// A 24-bit colour, blue × 65536 + green × 256 + red.
struct Colour {
  std::uint32_t value = 0;

  constexpr std::uint8_t Red() const { return static_cast<std::uint8_t>(value & 0xFFU); }
  constexpr std::uint8_t Green() const { return static_cast<std::uint8_t>(value >> 8U & 0xFFU); }
  constexpr std::uint8_t Blue() const { return static_cast<std::uint8_t>(value >> 16U & 0xFFU); }

  friend constexpr bool operator==(Colour, Colour) = default;
};

}  // namespace kelvara::sync
