#include "sync/FpsColours.h"

#include "base/CheckedInteger.h"

namespace kelvara::sync {
namespace {

/// The palette. Entries 14 and 15 are identical, and the seventeenth entry is empty.
constexpr std::array<std::optional<Colour>, 17> kPalette{
    Colour{0xFFFFFF}, Colour{0xFFE6E6}, Colour{0xE6FFE6}, Colour{0xFFF2E6}, Colour{0xFFFFE6},
    Colour{0xE6FFFF}, Colour{0xE6E6FF}, Colour{0xFFE6FF}, Colour{0xFF9999}, Colour{0xFFCC99},
    Colour{0xFFFF99}, Colour{0x99FF99}, Colour{0x99FFFF}, Colour{0x9999FF}, Colour{0xFF99FF},
    Colour{0xFF99FF}, std::nullopt};

}  // namespace

Colour FpsColours::GetRpsColour(std::int16_t iRps) {
  std::optional<Colour>& colour = base::At(FpsColour_, iRps);
  if (!colour) {
    colour = base::At(kPalette, NextColour_);
    ++NextColour_;
  }
  return colour.value_or(Colour{});
}

void FpsColours::Clear() {
  FpsColour_.fill(std::nullopt);
  NextColour_ = 0;
}

}  // namespace kelvara::sync
