#include "platform/MemoryMenuBar.h"

#include <gtest/gtest.h>

#include <set>

namespace kelvara::platform {
namespace {

TEST(MemoryMenuBar, StartsWithTheCheckMarksOfTheMainWindow) {
  const MemoryMenuBar menuBar;
  const std::set<MenuEntry> checked{MenuEntry::mnuDisplayLogOff, MenuEntry::mnuDispRFPS,
                                    MenuEntry::mnuRpnDecimal, MenuEntry::mnuFpsOn,
                                    MenuEntry::mnuViewDebugOff};
  for (int entry = 0; entry < kMenuEntryCount; ++entry) {
    EXPECT_EQ(menuBar.IsChecked(static_cast<MenuEntry>(entry)),
              checked.count(static_cast<MenuEntry>(entry)) > 0)
        << entry;
  }
}

TEST(MemoryMenuBar, OnlyTheCaptureSubmenuStartsDisabledAndHidden) {
  const MemoryMenuBar menuBar;
  for (int entry = 0; entry < kMenuEntryCount; ++entry) {
    const bool isCaptureData = static_cast<MenuEntry>(entry) == MenuEntry::mnuCaptureData;
    EXPECT_EQ(menuBar.IsEnabled(static_cast<MenuEntry>(entry)), !isCaptureData) << entry;
    EXPECT_EQ(menuBar.IsVisible(static_cast<MenuEntry>(entry)), !isCaptureData) << entry;
  }
}

TEST(MemoryMenuBar, EachStateIsSetAlone) {
  MemoryMenuBar menuBar;
  menuBar.SetChecked(MenuEntry::mnuRpnHex, true);
  menuBar.SetEnabled(MenuEntry::mnuClearGrid, false);
  menuBar.SetVisible(MenuEntry::mnuCaptureDataStart, false);

  EXPECT_TRUE(menuBar.IsChecked(MenuEntry::mnuRpnHex));
  EXPECT_TRUE(menuBar.IsEnabled(MenuEntry::mnuRpnHex));
  EXPECT_TRUE(menuBar.IsVisible(MenuEntry::mnuRpnHex));
  EXPECT_TRUE(menuBar.IsChecked(MenuEntry::mnuRpnDecimal));
  EXPECT_FALSE(menuBar.IsEnabled(MenuEntry::mnuClearGrid));
  EXPECT_TRUE(menuBar.IsVisible(MenuEntry::mnuClearGrid));
  EXPECT_FALSE(menuBar.IsVisible(MenuEntry::mnuCaptureDataStart));
  EXPECT_TRUE(menuBar.IsEnabled(MenuEntry::mnuCaptureDataStart));
}

}  // namespace
}  // namespace kelvara::platform
