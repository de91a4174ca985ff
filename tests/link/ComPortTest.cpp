#include "link/ComPort.h"

#include <gtest/gtest.h>

#include "base/Fault.h"
#include "support/DesktopDoubles.h"
#include "support/ScriptedPort.h"
#include "support/VirtualTime.h"

namespace kelvara::test {
namespace {

struct ComPortRig {
  ManualClock clock;
  VirtualTime time{clock};
  VirtualTime::Timer timerComPort{time, 200};
  ScriptedPort port;
  ScriptedSettingsStore store;
  link::ComPort comPort{port, timerComPort, store};
};

TEST(ComPort, IsPort1At19200WhenNothingIsStored) {
  ComPortRig rig;
  EXPECT_EQ(rig.comPort.GetComPort(), 1);
  EXPECT_EQ(rig.comPort.GetBaudRate(), 19200);
  rig.comPort.OpenComPort(rig.comPort.GetComPort());
  EXPECT_EQ(rig.port.number, 1);
  EXPECT_EQ(rig.port.settings, "19200,n,8,1");
  EXPECT_TRUE(rig.port.open);
  EXPECT_EQ(rig.comPort.PortText(), "COM1");
  EXPECT_EQ(rig.comPort.RateText(), "19200");
}

TEST(ComPort, AppliesTheSettingsBeforeItOpensAtStartUp) {
  ComPortRig rig;
  rig.store.SetValue("ComPort", "7");
  rig.store.SetValue("Baudrate", "9600");
  rig.comPort.OpenComPort(rig.comPort.GetComPort());
  EXPECT_EQ(rig.port.steps, (std::vector<std::string>{"settings 9600,n,8,1", "open"}));
  EXPECT_EQ(rig.comPort.PortText(), "COM7");
}

TEST(ComPort, FailsAtStartUpWithARateOver16BitsBeforeItOpens) {
  for (const char* const rate : {"38400", "57600"}) {
    ComPortRig rig;
    rig.store.SetValue("Baudrate", rate);
    EXPECT_EQ(rig.comPort.GetBaudRate(), std::stoi(rate));
    EXPECT_THROW(rig.comPort.OpenComPort(1), base::Fault);
    EXPECT_FALSE(rig.port.open);
    EXPECT_TRUE(rig.port.steps.empty());
  }
}

TEST(ComPort, ThatCannotBeOpenedIsAFault) {
  ComPortRig rig;
  rig.port.openable = false;
  EXPECT_THROW(rig.comPort.OpenComPort(3), base::Fault);
  EXPECT_EQ(rig.comPort.PortText(), "");
}

TEST(PortDialogOk, OpensThenStartsTheBreakTimerThenSetsTheRateThenStores) {
  ComPortRig rig;
  rig.port.open = true;
  rig.comPort.SelectPort(4, "57600");
  EXPECT_EQ(rig.port.steps, (std::vector<std::string>{"close", "open", "settings 57600,n,8,1"}));
  EXPECT_EQ(rig.port.number, 5);
  EXPECT_TRUE(rig.timerComPort.IsOn()) << "even when the link start-up never ran";
  EXPECT_EQ(rig.store.Value("ComPort"), "5");
  EXPECT_EQ(rig.store.Value("Baudrate"), "57600");
}

TEST(PortDialogOk, StoresNothingWhenThePortCannotBeOpened) {
  ComPortRig rig;
  rig.port.openable = false;
  EXPECT_THROW(rig.comPort.SelectPort(2, "19200"), base::Fault);
  EXPECT_TRUE(rig.store.values.empty());
  EXPECT_FALSE(rig.timerComPort.IsOn());
  EXPECT_FALSE(rig.port.open);
}

TEST(PortDialogOk, LeavesThePortOpenWhenTheRateIsNotANumber) {
  for (const char* const rate : {"", "fast", "19200 baud", "99999999999"}) {
    ComPortRig rig;
    EXPECT_THROW(rig.comPort.SelectPort(2, rate), base::Fault) << rate;
    EXPECT_TRUE(rig.port.open) << rate;
    EXPECT_TRUE(rig.timerComPort.IsOn()) << rate;
    EXPECT_TRUE(rig.store.values.empty()) << rate;
  }
}

TEST(PortTexts, AreTheStoredPortWhileOneIsOpenElseNoComms) {
  ComPortRig rig;
  rig.comPort.ShowPort();
  EXPECT_EQ(rig.comPort.PortText(), "No Comms");
  EXPECT_EQ(rig.comPort.RateText(), "");
  rig.comPort.SelectPort(11, "4800");
  rig.comPort.ShowPort();
  EXPECT_EQ(rig.comPort.PortText(), "COM12");
  EXPECT_EQ(rig.comPort.RateText(), "4800");
}

TEST(CouldNotOpenText, HasTwoBlanksBeforeANonNegativeNumber) {
  EXPECT_EQ(link::CouldNotOpenText(3), "Could not open COM  3");
  EXPECT_EQ(link::CouldNotOpenText(0), "Could not open COM  0");
  EXPECT_EQ(link::CouldNotOpenText(-1), "Could not open COM -1");
}

}  // namespace
}  // namespace kelvara::test
