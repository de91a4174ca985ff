#include "sync/FpsColours.h"

#include <gtest/gtest.h>

#include <array>

#include "support/Faults.h"

namespace kelvara::sync {
namespace {

using base::FaultKind;
using sync::Colour;
using test::FaultOf;

struct PaletteEntry {
  std::uint32_t stored;
  int red;
  int green;
  int blue;
};

constexpr std::array<PaletteEntry, 16> kPalette{{
    {0xFFFFFF, 255, 255, 255},
    {0xFFE6E6, 230, 230, 255},
    {0xE6FFE6, 230, 255, 230},
    {0xFFF2E6, 230, 242, 255},
    {0xFFFFE6, 230, 255, 255},
    {0xE6FFFF, 255, 255, 230},
    {0xE6E6FF, 255, 230, 230},
    {0xFFE6FF, 255, 230, 255},
    {0xFF9999, 153, 153, 255},
    {0xFFCC99, 153, 204, 255},
    {0xFFFF99, 153, 255, 255},
    {0x99FF99, 153, 255, 153},
    {0x99FFFF, 255, 255, 153},
    {0x9999FF, 255, 153, 153},
    {0xFF99FF, 255, 153, 255},
    {0xFF99FF, 255, 153, 255},
}};

TEST(FpsColours, AreAssignedInPaletteOrderWhenFirstAskedFor) {
  FpsColours colours;
  for (std::int16_t asked = 0; asked < 16; ++asked) {
    const auto iRps = static_cast<std::int16_t>(15 - asked);
    const PaletteEntry& entry = kPalette.at(static_cast<std::size_t>(asked));
    const Colour colour = colours.GetRpsColour(iRps);
    EXPECT_EQ(colour.value, entry.stored) << asked;
    EXPECT_EQ(int{colour.Red()}, entry.red) << asked;
    EXPECT_EQ(int{colour.Green()}, entry.green) << asked;
    EXPECT_EQ(int{colour.Blue()}, entry.blue) << asked;
  }
}

TEST(FpsColours, AreKeptUntilTheNextClear) {
  FpsColours colours;
  EXPECT_EQ(colours.GetRpsColour(7), Colour{0xFFFFFF});
  EXPECT_EQ(colours.GetRpsColour(3), Colour{0xFFE6E6});
  EXPECT_EQ(colours.GetRpsColour(7), Colour{0xFFFFFF});
  EXPECT_EQ(colours.GetRpsColour(3), Colour{0xFFE6E6});
  EXPECT_EQ(colours.GetRpsColour(0), Colour{0xE6FFE6});

  colours.Clear();
  EXPECT_EQ(colours.GetRpsColour(3), Colour{0xFFFFFF});
  EXPECT_EQ(colours.GetRpsColour(7), Colour{0xFFE6E6});
}

TEST(FpsColours, TheSixteenthLooksLikeTheFifteenth) {
  FpsColours colours;
  for (std::int16_t iRps = 0; iRps < 14; ++iRps) {
    colours.GetRpsColour(iRps);
  }
  EXPECT_EQ(colours.GetRpsColour(14), Colour{0xFF99FF});
  EXPECT_EQ(colours.GetRpsColour(15), Colour{0xFF99FF});
}

TEST(FpsColours, AnFpsOutsideTheTableIsASubscriptFaultThatUsesNoColour) {
  FpsColours colours;
  EXPECT_EQ(FaultOf([&] { return colours.GetRpsColour(17); }), FaultKind::Subscript);
  EXPECT_EQ(FaultOf([&] { return colours.GetRpsColour(-1); }), FaultKind::Subscript);
  EXPECT_EQ(FaultOf([&] { return colours.GetRpsColour(32767); }), FaultKind::Subscript);
  EXPECT_EQ(FaultOf([&] { return colours.GetRpsColour(-32768); }), FaultKind::Subscript);
  EXPECT_EQ(colours.GetRpsColour(16), Colour{0xFFFFFF});
}

// When every FPS from 0 to 16 is asked for, the last gets the palette's empty entry. It has no
// colour, so it is looked up again the next time, when no palette entry is left.
TEST(FpsColours, TheSeventeenthPaletteEntryIsEmpty) {
  FpsColours colours;
  for (std::int16_t iRps = 0; iRps < 16; ++iRps) {
    colours.GetRpsColour(iRps);
  }
  EXPECT_EQ(colours.GetRpsColour(16), Colour{});
  EXPECT_EQ(FaultOf([&] { return colours.GetRpsColour(16); }), FaultKind::Subscript);
  EXPECT_EQ(colours.GetRpsColour(15), Colour{0xFF99FF});
}

TEST(FpsColours, TheDiagonalIsGrey) {
  EXPECT_EQ(kDiagonalColour.value, 0xC0C0C0U);
  EXPECT_EQ(int{kDiagonalColour.Red()}, 192);
  EXPECT_EQ(int{kDiagonalColour.Green()}, 192);
  EXPECT_EQ(int{kDiagonalColour.Blue()}, 192);
}

}  // namespace
}  // namespace kelvara::sync
