#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTimer>

#include "cli/ConsoleTest.h"
#include "support/ScriptedPort.h"

namespace kelvara::test {
namespace {

/// Records from a scripted port until the program is asked to stop.
class RecordTest : public ConsoleTest {
 protected:
  RecordTest() {
    machine.makePort = [this](const ports::PortTable& table) {
      device = table.DeviceOf(3);
      auto made = std::make_unique<ScriptedPort>();
      made->openable = openable;
      port = made.get();
      return made;
    };
    machine.atStop = [this](std::function<void()> stop) {
      QTimer::singleShot(0, [this, stop = std::move(stop)] {
        if (whileRecording) {
          whileRecording();
        }
        stop();
      });
      return nullptr;
    };
  }

  ScriptedPort* port = nullptr;
  bool openable = true;
  std::string device;
  std::function<void()> whileRecording;
};

TEST_F(RecordTest, EndsWhenAskedToAndWritesItsResults) {
  EXPECT_EQ(Output({"record", "--com", "3", "--json", "results.json", "--raw", "trace.txt"}),
            "Reports: 0\nAAs: 0\n");
  EXPECT_TRUE(Exists("results.json"));
  EXPECT_TRUE(Exists("trace.txt"));
}

TEST_F(RecordTest, OpensThePortAtTheRateOfTheCommandLine) {
  portSettings.Write("COM3", "/dev/adapter");
  whileRecording = [this] {
    EXPECT_TRUE(port->open);
    EXPECT_EQ(port->number, 3);
    EXPECT_EQ(port->settings, "9600,n,8,1");
  };
  Output({"record", "--com", "3", "--baud", "9600"});
  EXPECT_EQ(device, "/dev/adapter");
}

TEST_F(RecordTest, APortThatCannotBeOpenedExitsWithOneAndWritesNothing) {
  openable = false;
  ExpectComplaint(Run({"record", "--com", "3", "--json", "results.json", "--log", "log.txt",
                       "--raw", "trace.txt"}),
                  1, "no such device");
  for (const char* name : {"results.json", "log.txt", "trace.txt"}) {
    EXPECT_FALSE(Exists(name)) << name;
  }
}

TEST_F(RecordTest, PortsListsTheDevicesInTheSettings) {
  portSettings.Write("COM3", "/dev/no-such-adapter");
  const ConsoleResult result = Run({"ports", "--com", "4=/dev/no-other"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_NE(result.output.find("COM3 /dev/no-such-adapter absent\nCOM4 /dev/no-other absent\n"),
            std::string::npos)
      << result.output;
}

TEST_F(RecordTest, PortsNamesTheAdaptersOnlyWhenAsked) {
  machine.adapterName = [](const std::string& name) {
    return std::string(name == "/dev/no-other" ? "Example USB Serial" : "");
  };
  const Arguments ports = {"ports", "--com", "3=/dev/no-such-adapter", "--com", "4=/dev/no-other"};
  const std::string third = "COM3 /dev/no-such-adapter absent\n";
  EXPECT_THAT(Run(ports).output, testing::HasSubstr(third + "COM4 /dev/no-other absent\n"));
  Arguments longer = ports;
  longer.push_back("--long");
  EXPECT_THAT(Run(longer).output,
              testing::HasSubstr(third + "COM4 /dev/no-other absent Example USB Serial\n"));
}

class RecordDemoSiteTest : public ConsoleTest {};

TEST_F(RecordDemoSiteTest, TheBuiltInBeltpackWalksInTheSiteOfAFile) {
  Write("site.txt", "21 3 90 40 0 0\n22 3 90 95 120 0\n");
  for (const Arguments& demo : {Arguments{}, Arguments{"--demo"}}) {
    Arguments arguments = {"record",    "--demo-site", "site.txt", "--speed",     "200",
                           "--reports", "1",           "--json",   "results.json"};
    arguments.insert(arguments.end(), demo.begin(), demo.end());
    EXPECT_EQ(Output(arguments), "Reports: 1\nAAs: 2\n");
    EXPECT_THAT(Read("results.json"), testing::HasSubstr("\"rpn\":21"));
  }
}

}  // namespace
}  // namespace kelvara::test
