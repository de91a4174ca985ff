#include "sync/DisplayOptions.h"

#include <gtest/gtest.h>

namespace kelvara::sync {
namespace {

TEST(DisplayOptions, RpnsHaveAtLeastTwoDigits) {
  const DisplayOptions decimal;
  EXPECT_EQ(decimal.RpnText(1), "01");
  EXPECT_EQ(decimal.RpnText(10), "10");
  EXPECT_EQ(decimal.RpnText(255), "255");
  const DisplayOptions hexadecimal{.rpnHex = true};
  EXPECT_EQ(hexadecimal.RpnText(1), "01");
  EXPECT_EQ(hexadecimal.RpnText(10), "0A");
  EXPECT_EQ(hexadecimal.RpnText(255), "FF");
}

TEST(DisplayOptions, TheFpsIsShownInBrackets) {
  const DisplayOptions decimal{.fpsShown = true};
  EXPECT_EQ(decimal.AaText(31, 12), "31[12]");
  const DisplayOptions hexadecimal{.rpnHex = true, .fpsShown = true};
  EXPECT_EQ(hexadecimal.AaText(31, 12), "1F[C]");
  EXPECT_EQ(hexadecimal.AaText(0, 0), "00[0]");
  const DisplayOptions withoutFps{.rpnHex = true};
  EXPECT_EQ(withoutFps.AaText(31, 12), "1F");
}

}  // namespace
}  // namespace kelvara::sync
