#include "app/DemoSettings.h"

#include <gtest/gtest.h>

#include "link/ComPort.h"
#include "support/DesktopDoubles.h"

namespace kelvara::app {
namespace {

class DemoSettingsTest : public ::testing::Test {
 protected:
  std::string Read(std::string_view key) const { return demo.Read(key, "default"); }
  void Write(std::string_view key, std::string_view text) { demo.Write(key, text); }

  test::ScriptedSettingsStore stored;
  DemoSettings demo{stored};
};

TEST_F(DemoSettingsTest, ReadsTheStoredPortAndNeverChangesIt) {
  stored.SetValue("ComPort", "7");
  EXPECT_EQ(Read(link::kComPortKey), "7");
  EXPECT_EQ(Read(link::kBaudrateKey), "default");
  Write(link::kComPortKey, "3");
  Write(link::kBaudrateKey, "9600");
  EXPECT_EQ(Read(link::kComPortKey), "3");
  EXPECT_EQ(Read(link::kBaudrateKey), "9600");
  EXPECT_EQ(stored.Value("ComPort"), "7");
  EXPECT_EQ(stored.values.size(), 1U);
}

TEST_F(DemoSettingsTest, StoresEverythingElse) {
  Write("RFPSUnits", "2");
  EXPECT_EQ(stored.Value("RFPSUnits"), "2");
  EXPECT_EQ(Read("RFPSUnits"), "2");
  EXPECT_EQ(Read("LastFile"), "default");
}

}  // namespace
}  // namespace kelvara::app
