#include <gtest/gtest.h>

#include <regex>
#include <sstream>

#include "support/DeviceOpenings.h"
#include "support/PseudoTerminal.h"
#include "system/CliTest.h"

namespace kelvara::test {
namespace {

class PortsTest : public CliTest {
 protected:
  static std::vector<std::string> Lines(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
      lines.push_back(line);
    }
    return lines;
  }

  /// The twelve lines that "ports" prints.
  std::vector<std::string> Ports(const Arguments& options = {}) const {
    Arguments arguments = {"ports"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const ProcessResult result = Run(arguments);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output.back(), '\n');
    std::vector<std::string> lines = Lines(result.output);
    EXPECT_EQ(lines.size(), 12U) << result.output;
    lines.resize(12);
    return lines;
  }

  void WriteSettings(const std::string& configFolder, const std::string& text) const {
    std::filesystem::create_directories(folder.PathOf(configFolder + "/CorvanaSync"));
    Write(configFolder + "/CorvanaSync/CorvanaSync.ini", text);
  }
};

TEST_F(PortsTest, WithoutSettingsAdaptersComeFirstThenModemsThenBuiltInPorts) {
  const std::vector<std::string> lines = Ports();
  const std::vector<std::string> devices = {"/dev/ttyUSB0", "/dev/ttyUSB1", "/dev/ttyUSB2",
                                            "/dev/ttyUSB3", "/dev/ttyACM0", "/dev/ttyACM1",
                                            "/dev/ttyACM2", "/dev/ttyACM3", "/dev/ttyS0",
                                            "/dev/ttyS1",   "/dev/ttyS2",   "/dev/ttyS3"};
  for (std::size_t port = 0; port < devices.size(); ++port) {
    const std::string start = "COM" + std::to_string(port + 1) + " " + devices[port];
    const bool exists = std::filesystem::exists(devices[port]);
    // A built-in port may have a name without any hardware.
    EXPECT_EQ(lines[port], start + (exists ? " present" : " absent"));
  }
}

TEST_F(PortsTest, TheSettingsNameTheDevices) {
  const PseudoTerminal terminal;
  Write("file.txt", "precious");
  WriteSettings("config", "[Ports]\nCOM2=" + terminal.Device() + "\nCOM5=/dev/no-such-device\n" +
                              "COM12=" + folder.PathOf("file.txt") + "\n");
  environment["XDG_CONFIG_HOME"] = folder.PathOf("config");
  const std::vector<std::string> lines = Ports();
  EXPECT_EQ(lines[1], "COM2 " + terminal.Device() + " present");
  EXPECT_EQ(lines[4], "COM5 /dev/no-such-device absent");
  EXPECT_EQ(lines[11], "COM12 " + folder.PathOf("file.txt") + " present");
  for (std::size_t port = 0; port < lines.size(); ++port) {
    EXPECT_TRUE(std::regex_match(
        lines[port], std::regex("COM" + std::to_string(port + 1) + " \\S+ (present|absent)")))
        << lines[port];
  }
  const std::string errors = Run({"ports"}).errors;
  EXPECT_EQ(errors.find("COM2 "), std::string::npos) << errors;
  EXPECT_EQ(errors.find("COM5 "), std::string::npos) << errors;
  EXPECT_NE(errors.find("kelvara-cli: COM12 cannot be opened: it is not a serial port\n"),
            std::string::npos)
      << errors;
}

TEST_F(PortsTest, TheSettingsAreInTheHomeFolderUnlessTheEnvironmentNamesAnother) {
  WriteSettings(".config", "[Ports]\nCOM1=/dev/one\n");
  WriteSettings("config", "[Ports]\nCOM1=/dev/other\n");
  EXPECT_EQ(Ports()[0], "COM1 /dev/one absent");
  environment["XDG_CONFIG_HOME"] = folder.PathOf("config");
  EXPECT_EQ(Ports()[0], "COM1 /dev/other absent");
}

TEST_F(PortsTest, ADeviceMayBeGivenForOneRun) {
  WriteSettings(".config", "[Ports]\nCOM1=/dev/one\n");
  EXPECT_EQ(Ports({"--com", "1=/dev/other"})[0], "COM1 /dev/other absent");
  EXPECT_EQ(Ports()[0], "COM1 /dev/one absent");
}

TEST_F(PortsTest, ListingOpensNoDevice) {
  const PseudoTerminal terminal;
  const DeviceOpenings openings(terminal.Device());
  EXPECT_EQ(Ports({"--com", "1=" + terminal.Device()})[0],
            "COM1 " + terminal.Device() + " present");
  EXPECT_FALSE(openings.HasAny());
  Output({"record", "--port", terminal.Device(), "--for", "0.1"});
  EXPECT_TRUE(openings.HasAny());
}

TEST_F(PortsTest, ListingChangesNoSettings) {
  Ports();
  EXPECT_FALSE(Exists(".config"));
}

TEST_F(PortsTest, WrongCommandLinesAreRefused) {
  for (const Arguments& arguments : std::vector<Arguments>{{"ports", "extra"},
                                                           {"ports", "--unknown"},
                                                           {"ports", "--com", "13=/dev/one"},
                                                           {"ports", "--com", "/dev/one"}}) {
    SCOPED_TRACE(::testing::PrintToString(arguments));
    const ProcessResult result = Run(arguments);
    ExpectComplaint(result, 2, "");
    EXPECT_EQ(result.output, "");
  }
}

}  // namespace
}  // namespace kelvara::test
