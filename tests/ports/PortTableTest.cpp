#include "ports/PortTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "base/Fault.h"
#include "platform/qt/QtSettingsStore.h"

namespace kelvara::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class PortTableTest : public testing::Test {
 protected:
  std::vector<std::string> Devices() const {
    std::vector<std::string> devices;
    for (int port = 1; port <= 12; ++port) {
      devices.push_back(table_.DeviceOf(port));
    }
    return devices;
  }

  QTemporaryDir folder_;
  qt::QtSettingsStore settings_{folder_.filePath("settings.ini"), "Ports"};
  ports::PortTable table_{settings_};
};

TEST_F(PortTableTest, DefaultsAreAdaptersModemsAndBuiltInPorts) {
  EXPECT_THAT(Devices(), ElementsAre("/dev/ttyUSB0", "/dev/ttyUSB1", "/dev/ttyUSB2", "/dev/ttyUSB3",
                                     "/dev/ttyACM0", "/dev/ttyACM1", "/dev/ttyACM2", "/dev/ttyACM3",
                                     "/dev/ttyS0", "/dev/ttyS1", "/dev/ttyS2", "/dev/ttyS3"));
}

TEST_F(PortTableTest, SettingsOverrideDefaultsAndAssignmentsOverrideSettings) {
  settings_.Write("COM2", "/dev/serial/by-id/usb-FTDI_A-if00");
  settings_.Write("COM12", "/dev/ttyUSB7");
  EXPECT_EQ(table_.DeviceOf(1), "/dev/ttyUSB0");
  EXPECT_EQ(table_.DeviceOf(2), "/dev/serial/by-id/usb-FTDI_A-if00");
  EXPECT_EQ(table_.DeviceOf(12), "/dev/ttyUSB7");
  table_.Assign({2, "/dev/pts/9"});
  table_.Assign({3, "/dev/pts/1"});
  table_.Assign({3, "/dev/pts/2"});
  EXPECT_EQ(table_.DeviceOf(2), "/dev/pts/9");
  EXPECT_EQ(table_.DeviceOf(3), "/dev/pts/2");
  settings_.Write("COM12", "");
  EXPECT_EQ(table_.DeviceOf(12), "/dev/ttyS3");
}

TEST_F(PortTableTest, AHandWrittenTableIsRead) {
  QFile file(folder_.filePath("settings.ini"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("; the adapter in the cabinet\r\n[Ports]\r\nCOM1 = /dev/ttyUSB5\r\ncom2=ttyACM1\r\n");
  file.close();
  EXPECT_EQ(table_.DeviceOf(1), "/dev/ttyUSB5");
  EXPECT_EQ(table_.DeviceOf(2), "/dev/ttyACM1");
  EXPECT_EQ(table_.DeviceOf(3), "/dev/ttyUSB2");
}

TEST_F(PortTableTest, RelativeNamesAreInDevUnlessTheyAreInTheCurrentFolder) {
  const QString before = QDir::currentPath();
  ASSERT_TRUE(QDir::setCurrent(folder_.path()));
  ASSERT_TRUE(QFile::link("/dev/null", "beltpack"));
  table_.Assign({1, "ttyUSB6"});
  table_.Assign({2, "serial/by-id/usb-A"});
  table_.Assign({3, "beltpack"});
  EXPECT_EQ(table_.DeviceOf(1), "/dev/ttyUSB6");
  EXPECT_EQ(table_.DeviceOf(2), "/dev/serial/by-id/usb-A");
  EXPECT_EQ(table_.DeviceOf(3), QDir::currentPath().toStdString() + "/beltpack");
  QDir::setCurrent(before);
}

TEST_F(PortTableTest, ThereAreTwelvePorts) {
  for (const int port : {-1, 0, 13, 32767}) {
    EXPECT_THROW(table_.DeviceOf(port), base::Fault) << port;
    EXPECT_THROW(table_.Assign({port, "/dev/ttyUSB0"}), base::Fault) << port;
  }
}

TEST(PortAssignmentTest, IsANumberAndADevice) {
  const ports::PortAssignment plain = ports::ReadPortAssignment("3=/dev/ttyUSB7");
  EXPECT_EQ(plain.port, 3);
  EXPECT_EQ(plain.device, "/dev/ttyUSB7");
  const ports::PortAssignment odd = ports::ReadPortAssignment(" 12 = /dev/a=b c ");
  EXPECT_EQ(odd.port, 12);
  EXPECT_EQ(odd.device, "/dev/a=b c");
}

TEST(PortAssignmentTest, SaysWhatIsWrong) {
  struct Case {
    const char* text;
    const char* reason;
  };
  for (const auto& [text, reason] :
       {Case{"", "has no \"=\""}, Case{"3", "has no \"=\""}, Case{"/dev/ttyUSB0", "has no \"=\""},
        Case{"=/dev/ttyUSB0", "from 1 to 12"}, Case{"0=/dev/ttyUSB0", "from 1 to 12"},
        Case{"13=/dev/ttyUSB0", "from 1 to 12"}, Case{"-1=/dev/ttyUSB0", "from 1 to 12"},
        Case{"COM3=/dev/ttyUSB0", "from 1 to 12"}, Case{"3x=/dev/ttyUSB0", "from 1 to 12"},
        Case{"99999999999=/dev/ttyUSB0", "from 1 to 12"}, Case{"3=", "no device is named"},
        Case{"3= ", "no device is named"}}) {
    try {
      ports::ReadPortAssignment(text);
      ADD_FAILURE() << "accepted \"" << text << "\"";
    } catch (const base::Fault& fault) {
      EXPECT_EQ(fault.Kind(), base::FaultKind::Port);
      EXPECT_THAT(fault.what(), HasSubstr(reason));
      EXPECT_THAT(fault.what(), HasSubstr(text));
    }
  }
}

}  // namespace
}  // namespace kelvara::test
