#include "app/OptionGroups.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "platform/MemoryMenuBar.h"

namespace kelvara::app {
namespace {

using platform::MenuEntry;

const std::vector<std::vector<MenuEntry>> kGroups = {
    {MenuEntry::mnuDisplayLogOn, MenuEntry::mnuDisplayLogOff},
    {MenuEntry::mnuDispRFPS, MenuEntry::mnuDispSync, MenuEntry::mnuDispMetres},
    {MenuEntry::mnuRpnDecimal, MenuEntry::mnuRpnHex},
    {MenuEntry::mnuFpsOn, MenuEntry::mnuFpsOff},
    {MenuEntry::mnuViewDebugOn, MenuEntry::mnuViewDebugOff}};

std::set<MenuEntry> CheckedEntries(const platform::MenuBar& menuBar) {
  std::set<MenuEntry> checked;
  for (int entry = 0; entry < platform::kMenuEntryCount; ++entry) {
    if (menuBar.IsChecked(static_cast<MenuEntry>(entry))) {
      checked.insert(static_cast<MenuEntry>(entry));
    }
  }
  return checked;
}

TEST(OptionGroupsTest, ChecksTheEntryAloneInItsGroupAndNothingElse) {
  for (const std::vector<MenuEntry>& group : kGroups) {
    for (const MenuEntry chosen : group) {
      SCOPED_TRACE(static_cast<int>(chosen));
      platform::MemoryMenuBar menuBar;
      std::set<MenuEntry> expected = CheckedEntries(menuBar);
      for (const MenuEntry member : group) {
        expected.erase(member);
      }
      expected.insert(chosen);
      CheckOption(menuBar, chosen);
      EXPECT_EQ(CheckedEntries(menuBar), expected);
    }
  }
}

TEST(OptionGroupsTest, MendsAGroupWithNoneOrSeveralChecked) {
  for (const std::vector<MenuEntry>& group : kGroups) {
    for (const bool before : {false, true}) {
      platform::MemoryMenuBar menuBar;
      for (const MenuEntry member : group) {
        menuBar.SetChecked(member, before);
      }
      CheckOption(menuBar, group.back());
      for (const MenuEntry member : group) {
        EXPECT_EQ(menuBar.IsChecked(member), member == group.back()) << static_cast<int>(member);
      }
    }
  }
}

TEST(OptionGroupsTest, LeavesVisibilityAndUseAlone) {
  platform::MemoryMenuBar menuBar;
  menuBar.SetEnabled(MenuEntry::mnuRpnHex, false);
  menuBar.SetVisible(MenuEntry::mnuRpnDecimal, false);
  CheckOption(menuBar, MenuEntry::mnuRpnHex);
  EXPECT_FALSE(menuBar.IsEnabled(MenuEntry::mnuRpnHex));
  EXPECT_FALSE(menuBar.IsVisible(MenuEntry::mnuRpnDecimal));
}

}  // namespace
}  // namespace kelvara::app
