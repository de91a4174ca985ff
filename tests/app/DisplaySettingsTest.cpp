#include "app/DisplaySettings.h"

#include <gtest/gtest.h>

#include "base/Fault.h"
#include "support/DesktopDoubles.h"

namespace kelvara::app {
namespace {

using sync::PhaseUnits;

class DisplaySettingsTest : public ::testing::Test {
 protected:
  DisplaySettingsTest() {
    display.SetOptionsChanged([this](const OptionEntry* /*chosen*/) { ++changes; });
  }

  test::ScriptedSettingsStore store;
  Options options = FirstOptions();
  DisplaySettings display{store, options};
  int changes = 0;
};

TEST_F(DisplaySettingsTest, OnAFirstRunHideTheLogAndShowRfpsUnitsInDecimalWithoutFps) {
  display.GetDisplaySettings();
  EXPECT_FALSE(options.logShown);
  EXPECT_EQ(options.units, PhaseUnits::Rfps);
  EXPECT_FALSE(options.rpnHex);
  EXPECT_FALSE(options.fpsShown);
  EXPECT_TRUE(store.values.empty()) << "applying writes nothing";
  EXPECT_EQ(changes, 1);
}

TEST_F(DisplaySettingsTest, AreAppliedAsStored) {
  store.SetValue("DisplayLog", "True");
  store.SetValue("RFPSUnits", "1");
  store.SetValue("RPNUnits", "1");
  store.SetValue("FPSDisplay", "True");
  options.debugShown = true;
  display.GetDisplaySettings();
  EXPECT_TRUE(options.logShown);
  EXPECT_EQ(options.units, PhaseUnits::AaSync);
  EXPECT_TRUE(options.rpnHex);
  EXPECT_TRUE(options.fpsShown);
  EXPECT_TRUE(options.debugShown) << "the debug view is not stored";
}

TEST_F(DisplaySettingsTest, AnyOtherUnitsValueSelectsMetres) {
  for (const char* const value : {"2", "5", "-1"}) {
    options = FirstOptions();
    store.SetValue("RFPSUnits", value);
    display.GetDisplaySettings();
    EXPECT_EQ(options.units, PhaseUnits::Metres) << value;
  }
}

TEST_F(DisplaySettingsTest, AnyOtherNumberSwitchesOn) {
  for (const char* const value : {"1", "7", "-1"}) {
    options = FirstOptions();
    store.SetValue("DisplayLog", value);
    store.SetValue("RPNUnits", value);
    display.GetDisplaySettings();
    EXPECT_TRUE(options.logShown) << value;
    EXPECT_TRUE(options.rpnHex) << value;
  }
}

TEST_F(DisplaySettingsTest, TextThatIsNotANumberCountsAsTheDefault) {
  for (const char* const key : {"DisplayLog", "RFPSUnits", "RPNUnits", "FPSDisplay"}) {
    store.SetValue(key, "yes");
  }
  display.GetDisplaySettings();
  EXPECT_FALSE(options.logShown);
  EXPECT_EQ(options.units, PhaseUnits::Rfps);
  EXPECT_FALSE(options.rpnHex);
  EXPECT_FALSE(options.fpsShown);
}

TEST_F(DisplaySettingsTest, ChoosingAnEntrySetsTheOptionAndStoresItsValue) {
  struct Case {
    const char* entry;
    const char* key;
    const char* value;
  };
  for (const Case& c :
       {Case{"mnuDisplayLogOn", "DisplayLog", "True"},
        Case{"mnuDisplayLogOff", "DisplayLog", "False"}, Case{"mnuDispRFPS", "RFPSUnits", "0"},
        Case{"mnuDispSync", "RFPSUnits", "1"}, Case{"mnuDispMetres", "RFPSUnits", "2"},
        Case{"mnuRpnDecimal", "RPNUnits", "0"}, Case{"mnuRpnHex", "RPNUnits", "1"},
        Case{"mnuFpsOn", "FPSDisplay", "True"}, Case{"mnuFpsOff", "FPSDisplay", "False"}}) {
    SCOPED_TRACE(c.entry);
    store.values.clear();
    changes = 0;
    display.Choose(OptionEntryNamed(c.entry));
    EXPECT_TRUE(OptionEntryNamed(c.entry).isChosen(options));
    EXPECT_EQ(store.values.size(), 1U);
    EXPECT_EQ(store.Value(c.key), c.value);
    EXPECT_EQ(changes, 1);
  }
}

TEST_F(DisplaySettingsTest, TheDebugViewIsNotStored) {
  display.Choose(OptionEntryNamed("mnuViewDebugOn"));
  EXPECT_TRUE(options.debugShown);
  EXPECT_TRUE(store.values.empty());
}

TEST_F(DisplaySettingsTest, AChoiceHoldsEvenWhenItCannotBeStored) {
  store.writable = false;
  EXPECT_THROW(display.Choose(OptionEntryNamed("mnuDispMetres")), base::Fault);
  EXPECT_EQ(options.units, PhaseUnits::Metres);
  EXPECT_EQ(changes, 1);
}

}  // namespace
}  // namespace kelvara::app
