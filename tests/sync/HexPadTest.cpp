#include "sync/HexPad.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <limits>

namespace kelvara::sync {
namespace {

TEST(HexPad, PadsOnTheLeftUpToTheWidth) {
  EXPECT_EQ(HexPad(10, 2), "0A");
  EXPECT_EQ(HexPad(0, 2), "00");
  EXPECT_EQ(HexPad(3, 1), "3");
  EXPECT_EQ(HexPad(31, 2), "1F");
  EXPECT_EQ(HexPad(10, 6), "00000A");
}

TEST(HexPad, NeverCutsALongerText) {
  EXPECT_EQ(HexPad(255, 1), "FF");
  EXPECT_EQ(HexPad(4095, 2), "FFF");
  EXPECT_EQ(HexPad(0, 0), "0");
  EXPECT_EQ(HexPad(18, -5), "12");
}

TEST(HexPad, ANegativeValueGivesItsFourDigitTwosComplement) {
  EXPECT_EQ(HexPad(-1, 2), "FFFF");
  EXPECT_EQ(HexPad(-32768, 1), "8000");
  EXPECT_EQ(HexPad(-2, 6), "00FFFE");
}

TEST(HexPad, PrintsEverySixteenBitValue) {
  std::array<char, 16> expected{};
  for (int value = std::numeric_limits<std::int16_t>::min();
       value <= std::numeric_limits<std::int16_t>::max(); ++value) {
    std::snprintf(expected.data(), expected.size(), "%02X", static_cast<unsigned>(value) & 0xFFFFU);
    ASSERT_EQ(HexPad(static_cast<std::int16_t>(value), 2), expected.data());
  }
}

}  // namespace
}  // namespace kelvara::sync
