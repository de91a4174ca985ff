#include "sync/DisplayOptions.h"

#include <gtest/gtest.h>

#include "platform/MemoryMenuBar.h"

namespace kelvara::sync {
namespace {

using platform::MenuEntry;

class DisplayOptionsTest : public ::testing::Test {
 protected:
  void ShowHex() {
    menuBar.SetChecked(MenuEntry::mnuRpnDecimal, false);
    menuBar.SetChecked(MenuEntry::mnuRpnHex, true);
  }

  platform::MemoryMenuBar menuBar;
  DisplayOptions options{menuBar};
};

TEST_F(DisplayOptionsTest, AreReadFromTheCheckMarksEachTime) {
  EXPECT_EQ(options.Units(), PhaseUnits::Rfps);
  EXPECT_FALSE(options.RpnHex());
  EXPECT_TRUE(options.FpsShown());

  menuBar.SetChecked(MenuEntry::mnuDispRFPS, false);
  menuBar.SetChecked(MenuEntry::mnuDispSync, true);
  EXPECT_EQ(options.Units(), PhaseUnits::AaSync);

  menuBar.SetChecked(MenuEntry::mnuDispSync, false);
  menuBar.SetChecked(MenuEntry::mnuDispMetres, true);
  EXPECT_EQ(options.Units(), PhaseUnits::Metres);

  menuBar.SetChecked(MenuEntry::mnuDispMetres, false);
  EXPECT_EQ(options.Units(), std::nullopt);

  ShowHex();
  menuBar.SetChecked(MenuEntry::mnuFpsOn, false);
  EXPECT_TRUE(options.RpnHex());
  EXPECT_FALSE(options.FpsShown());
}

TEST_F(DisplayOptionsTest, RpnsHaveAtLeastTwoDigits) {
  EXPECT_EQ(options.RpnText(1), "01");
  EXPECT_EQ(options.RpnText(10), "10");
  EXPECT_EQ(options.RpnText(255), "255");
  ShowHex();
  EXPECT_EQ(options.RpnText(1), "01");
  EXPECT_EQ(options.RpnText(10), "0A");
  EXPECT_EQ(options.RpnText(255), "FF");
}

TEST_F(DisplayOptionsTest, TheFpsStandsInBracketsWhereItIsShown) {
  EXPECT_EQ(options.AaText(31, 12), "31[12]");
  ShowHex();
  EXPECT_EQ(options.AaText(31, 12), "1F[C]");
  EXPECT_EQ(options.AaText(0, 0), "00[0]");
  menuBar.SetChecked(MenuEntry::mnuFpsOn, false);
  EXPECT_EQ(options.AaText(31, 12), "1F");
}

}  // namespace
}  // namespace kelvara::sync
