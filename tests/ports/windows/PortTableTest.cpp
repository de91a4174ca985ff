#include "ports/PortTable.h"

#include <gtest/gtest.h>

#include "platform/MemorySettingsStore.h"

namespace kelvara::test {
namespace {

TEST(PortTableTest, APortIsTheOneOfItsNameUnlessStoredOrAssigned) {
  platform::MemorySettingsStore settings;
  settings.Write("COM3", "COM14");
  ports::PortTable table(settings);
  table.Assign({2, "COM15"});
  EXPECT_EQ(table.DeviceOf(1), "COM1");
  EXPECT_EQ(table.DeviceOf(2), "COM15");
  EXPECT_EQ(table.DeviceOf(3), "COM14");
  EXPECT_EQ(table.DeviceOf(12), "COM12");
}

}  // namespace
}  // namespace kelvara::test
