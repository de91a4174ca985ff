#include "app/DisplaySettings.h"

#include <gtest/gtest.h>

#include "base/Fault.h"
#include "platform/MemoryMenuBar.h"
#include "support/DesktopDoubles.h"
#include "support/Doubles.h"

namespace kelvara::test {
namespace {

using platform::MenuEntry;

struct DisplayRig {
  bool Checked(MenuEntry entry) const { return menuBar.IsChecked(entry); }

  ScriptedSettingsStore store;
  platform::MemoryMenuBar menuBar;
  RecordingLogBox logBox;
  app::DisplaySettings display{platform::ProgramSettings(store), menuBar, logBox};
};

TEST(DisplaySettings, OfAFirstRunHideTheLogAndShowRfpsUnitsInDecimalWithoutFps) {
  DisplayRig rig;
  rig.display.GetDisplaySettings();
  EXPECT_FALSE(rig.logBox.shown);
  EXPECT_TRUE(rig.Checked(MenuEntry::mnuDisplayLogOff));
  EXPECT_FALSE(rig.Checked(MenuEntry::mnuDisplayLogOn));
  EXPECT_FALSE(rig.menuBar.IsEnabled(MenuEntry::mnuClearLog));
  EXPECT_TRUE(rig.Checked(MenuEntry::mnuDispRFPS));
  EXPECT_FALSE(rig.Checked(MenuEntry::mnuDispSync));
  EXPECT_FALSE(rig.Checked(MenuEntry::mnuDispMetres));
  EXPECT_TRUE(rig.Checked(MenuEntry::mnuRpnDecimal));
  EXPECT_FALSE(rig.Checked(MenuEntry::mnuRpnHex));
  EXPECT_TRUE(rig.Checked(MenuEntry::mnuFpsOff));
  EXPECT_FALSE(rig.Checked(MenuEntry::mnuFpsOn));
  EXPECT_TRUE(rig.store.values.empty()) << "applying writes nothing";
}

TEST(DisplaySettings, AreAppliedAsStored) {
  DisplayRig rig;
  rig.store.SetValue("DisplayLog", "True");
  rig.store.SetValue("RFPSUnits", "1");
  rig.store.SetValue("RPNUnits", "1");
  rig.store.SetValue("FPSDisplay", "True");
  rig.display.GetDisplaySettings();
  EXPECT_TRUE(rig.logBox.shown);
  EXPECT_TRUE(rig.menuBar.IsEnabled(MenuEntry::mnuClearLog));
  EXPECT_TRUE(rig.Checked(MenuEntry::mnuDisplayLogOn));
  EXPECT_TRUE(rig.Checked(MenuEntry::mnuDispSync));
  EXPECT_TRUE(rig.Checked(MenuEntry::mnuRpnHex));
  EXPECT_TRUE(rig.Checked(MenuEntry::mnuFpsOn));
}

TEST(DisplaySettings, AnyOtherUnitsValueSelectsMetres) {
  for (const char* const value : {"2", "5", "-1"}) {
    DisplayRig rig;
    rig.store.SetValue("RFPSUnits", value);
    rig.display.GetDisplaySettings();
    EXPECT_TRUE(rig.Checked(MenuEntry::mnuDispMetres)) << value;
    EXPECT_FALSE(rig.Checked(MenuEntry::mnuDispRFPS)) << value;
  }
}

TEST(OptionCommands, CheckTheirEntryAloneAndStoreTheirValue) {
  struct Case {
    MenuEntry entry;
    const char* key;
    const char* value;
  };
  for (const Case& c : {Case{MenuEntry::mnuDisplayLogOn, "DisplayLog", "True"},
                        Case{MenuEntry::mnuDisplayLogOff, "DisplayLog", "False"},
                        Case{MenuEntry::mnuDispRFPS, "RFPSUnits", "0"},
                        Case{MenuEntry::mnuDispSync, "RFPSUnits", "1"},
                        Case{MenuEntry::mnuDispMetres, "RFPSUnits", "2"},
                        Case{MenuEntry::mnuRpnDecimal, "RPNUnits", "0"},
                        Case{MenuEntry::mnuRpnHex, "RPNUnits", "1"},
                        Case{MenuEntry::mnuFpsOn, "FPSDisplay", "True"},
                        Case{MenuEntry::mnuFpsOff, "FPSDisplay", "False"}}) {
    DisplayRig rig;
    rig.display.Choose(c.entry);
    EXPECT_TRUE(rig.Checked(c.entry)) << c.key << c.value;
    EXPECT_EQ(rig.store.values.size(), 1U) << c.key << c.value;
    EXPECT_EQ(rig.store.Value(c.key), c.value);
  }
}

TEST(OptionCommands, LeaveJustOneEntryOfAGroupChecked) {
  DisplayRig rig;
  rig.display.Choose(MenuEntry::mnuDispMetres);
  rig.display.Choose(MenuEntry::mnuDispSync);
  EXPECT_FALSE(rig.Checked(MenuEntry::mnuDispRFPS));
  EXPECT_TRUE(rig.Checked(MenuEntry::mnuDispSync));
  EXPECT_FALSE(rig.Checked(MenuEntry::mnuDispMetres));
}

TEST(OptionCommands, SwitchingTheLogOffThrowsItsTextAway) {
  DisplayRig rig;
  rig.display.Choose(MenuEntry::mnuDisplayLogOn);
  EXPECT_TRUE(rig.menuBar.IsEnabled(MenuEntry::mnuClearLog));
  rig.logBox.Append("entry\r\n");
  rig.display.Choose(MenuEntry::mnuDisplayLogOff);
  EXPECT_FALSE(rig.menuBar.IsEnabled(MenuEntry::mnuClearLog));
  rig.display.Choose(MenuEntry::mnuDisplayLogOn);
  EXPECT_EQ(rig.logBox.text, "");
}

TEST(OptionCommands, HoldEvenWhenTheyCannotBeStored) {
  DisplayRig rig;
  rig.store.writable = false;
  EXPECT_THROW(rig.display.Choose(MenuEntry::mnuDisplayLogOff), base::Fault);
  EXPECT_TRUE(rig.Checked(MenuEntry::mnuDisplayLogOff));
  EXPECT_FALSE(rig.logBox.shown);
}

}  // namespace
}  // namespace kelvara::test
