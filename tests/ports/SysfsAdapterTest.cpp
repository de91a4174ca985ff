#include "ports/SysfsAdapter.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support/TemporaryFolder.h"

namespace kelvara::test {
namespace {

/// A device tree like the kernel's: the devices in a hierarchy of buses, and links to them.
class SysfsAdapterTest : public testing::Test {
 protected:
  void AddFile(const std::string& path, const std::string& text) {
    const std::filesystem::path file = tree_.PathOf(path);
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file) << text << '\n';
  }

  void AddLink(const std::string& path, const std::string& target) {
    const std::filesystem::path link = tree_.PathOf(path);
    std::filesystem::create_directories(link.parent_path());
    std::filesystem::create_directories(tree_.PathOf(target));
    std::filesystem::create_symlink(
        std::filesystem::relative(tree_.PathOf(target), link.parent_path()), link);
  }

  /// Adds a terminal whose hardware is the device at `place`.
  void AddTerminal(const std::string& name, const std::string& place) {
    AddLink(place + "/tty/" + name + "/device", place);
    AddLink("class/tty/" + name, place + "/tty/" + name);
  }

  std::string Name(const std::string& device) const {
    return ports::SysfsAdapterName(tree_.Path(), device);
  }

  TemporaryFolder tree_;
};

constexpr const char* kHub = "devices/pci0000:00/0000:00:14.0/usb1";

TEST_F(SysfsAdapterTest, AUsbAdapterHasTheNameOfMakerAndProduct) {
  const std::string hub = kHub;
  AddFile(hub + "/idVendor", "1d6b");
  AddFile(hub + "/product", "xHCI Host Controller");
  AddFile(hub + "/1-2/idVendor", "0403");
  AddFile(hub + "/1-2/manufacturer", "FTDI");
  AddFile(hub + "/1-2/product", "FT232R USB UART");
  AddTerminal("ttyUSB0", hub + "/1-2/1-2:1.0/ttyUSB0");
  AddLink(hub + "/1-2/1-2:1.0/ttyUSB0/driver", "bus/usb-serial/drivers/ftdi_sio");
  EXPECT_EQ(Name("/dev/ttyUSB0"), "FTDI FT232R USB UART");
}

TEST_F(SysfsAdapterTest, AMissingOrRepeatedMakerIsLeftOut) {
  const std::string place = std::string(kHub) + "/1-3";
  AddFile(place + "/idVendor", "2341");
  AddTerminal("ttyACM0", place + "/1-3:1.0");
  EXPECT_EQ(Name("/dev/ttyACM0"), "");
  AddFile(place + "/product", "Example Adapter 4");
  EXPECT_EQ(Name("/dev/ttyACM0"), "Example Adapter 4");
  AddFile(place + "/manufacturer", "Example");
  EXPECT_EQ(Name("/dev/ttyACM0"), "Example Adapter 4");
  AddFile(place + "/product", "");
  EXPECT_EQ(Name("/dev/ttyACM0"), "Example");
}

TEST_F(SysfsAdapterTest, ControlCharactersAreNotPassedOn) {
  AddFile(std::string(kHub) + "/1-3/idVendor", "2341");
  AddFile(std::string(kHub) + "/1-3/product", "\t Red\x1b[31m\xC3\xBC \r");
  AddTerminal("ttyACM0", std::string(kHub) + "/1-3/1-3:1.0");
  EXPECT_EQ(Name("/dev/ttyACM0"), "Red [31m\xC3\xBC");
}

TEST_F(SysfsAdapterTest, ABuiltInPortHasTheNameOfItsDriver) {
  AddTerminal("ttyS0", "devices/pnp0/00:05");
  AddLink("devices/pnp0/00:05/driver", "bus/pnp/drivers/serial");
  EXPECT_EQ(Name("/dev/ttyS0"), "built-in port, driver serial");
  // Newer kernels have two nodes more, with drivers of their own.
  const std::string place = "devices/platform/soc/a0000.serial";
  AddTerminal("ttyS1", place + "/a0000.serial:0/a0000.serial:0.0");
  AddLink(place + "/a0000.serial:0/a0000.serial:0.0/driver", "bus/serial-base/drivers/port");
  AddLink(place + "/a0000.serial:0/driver", "bus/serial-base/drivers/ctrl");
  AddLink(place + "/driver", "bus/platform/drivers/of_serial");
  AddFile(place + "/a0000.serial:0/a0000.serial:0.0/tty/ttyS1/type", "4");
  EXPECT_EQ(Name("/dev/ttyS1"), "built-in port, driver of_serial");
}

TEST_F(SysfsAdapterTest, ABuiltInPortWithoutHardwareHasNoName) {
  AddTerminal("ttyS3", "devices/platform/serial8250");
  AddLink("devices/platform/serial8250/driver", "bus/platform/drivers/serial8250");
  AddFile("devices/platform/serial8250/tty/ttyS3/type", "0");
  EXPECT_EQ(Name("/dev/ttyS3"), "");
}

TEST_F(SysfsAdapterTest, WhatTheTreeDoesNotListHasNoName) {
  AddTerminal("ttyS0", "devices/pnp0/00:05");
  AddLink("devices/pnp0/00:05/driver", "bus/pnp/drivers/serial");
  ASSERT_NE(Name("/dev/ttyS0"), "");
  for (const char* device : {"/dev/ttyUSB0", "/dev/pts/0", "/dev/", "/tmp/ttyS0", "ttyS0", ""}) {
    EXPECT_EQ(Name(device), "") << device;
  }
  EXPECT_EQ(ports::SysfsAdapterName(tree_.PathOf("none"), "/dev/ttyS0"), "");
}

}  // namespace
}  // namespace kelvara::test
