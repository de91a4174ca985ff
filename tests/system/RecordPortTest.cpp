#include <gtest/gtest.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <filesystem>

#include "support/PseudoTerminal.h"
#include "support/WaitUntil.h"
#include "system/CliTest.h"
#include "system/PollingCycle.h"
#include "system/SimulatedBeltpack.h"

namespace kelvara::test {
namespace {

constexpr int kCannotStart = 127;

class RecordPortTest : public CliTest {
 protected:
  /// Expects a port that cannot be opened: nothing is recorded and no result is written.
  void ExpectRefused(const Arguments& source, const std::string& reason) const {
    SCOPED_TRACE(::testing::PrintToString(source));
    ExpectRefused(RunProcess(RecordRequest(source)), source.back(), reason);
  }
  void ExpectRefused(const ProcessResult& result, const std::string& device,
                     const std::string& reason) const {
    ExpectComplaint(result, 1, device);
    EXPECT_NE(result.errors.find(reason), std::string::npos) << result.errors;
    EXPECT_EQ(result.output, "");
    EXPECT_FALSE(Exists("report.html"));
    EXPECT_FALSE(Exists("trace.txt"));
  }

  ProcessRequest RecordRequest(const Arguments& source) const {
    Arguments arguments = {"record",      "--for", "30",       "--report",
                           "report.html", "--raw", "trace.txt"};
    arguments.insert(arguments.end(), source.begin(), source.end());
    return Request(arguments);
  }

  /// The same request without the superuser's rights, which override permissions and locks.
  static ProcessRequest AsOrdinaryUser(ProcessRequest request) {
    request.withoutRights = ::geteuid() == 0;
    return request;
  }

  bool CanRunAsOrdinaryUser() const {
    return RunProcess(AsOrdinaryUser(Request({"--version"}))).exitCode != kCannotStart;
  }
};

TEST_F(RecordPortTest, AnAbsentDeviceIsRefused) {
  ExpectRefused({"--port", "/dev/no-such-device"}, "there is no such device");
  ExpectRefused({"--port", "no-such-device"}, "there is no such device");
  std::filesystem::create_symlink("/dev/no-such-device", folder.PathOf("dangling"));
  ExpectRefused({"--port", folder.PathOf("dangling")}, "there is no such device");
}

TEST_F(RecordPortTest, AFileThatIsNotASerialPortIsRefused) {
  Write("file.txt", "precious");
  ExpectRefused({"--port", folder.PathOf("file.txt")}, "it is not a serial port");
  ExpectRefused({"--port", "file.txt"}, "it is not a serial port");
  EXPECT_EQ(Read("file.txt"), "precious");
  ExpectRefused({"--port", folder.Path()}, "it is not a serial port");
  ExpectRefused({"--port", "/dev/null"}, "it is not a serial port");
}

TEST_F(RecordPortTest, ADeviceWithoutPermissionIsRefused) {
  if (!CanRunAsOrdinaryUser()) {
    GTEST_SKIP() << "the program cannot be run without the superuser's rights from where it is";
  }
  const PseudoTerminal terminal;
  ASSERT_EQ(::chmod(terminal.Device().c_str(), 0), 0);
  const ProcessRequest request = AsOrdinaryUser(RecordRequest({"--port", terminal.Device()}));
  ExpectRefused(RunProcess(request), terminal.Device(), "no permission");
}

TEST_F(RecordPortTest, TheGroupWithPermissionToOpenTheDeviceIsNamed) {
  if (::geteuid() != 0 || !CanRunAsOrdinaryUser()) {
    GTEST_SKIP() << "only the superuser can make a device that another user may not open";
  }
  const PseudoTerminal terminal;
  ASSERT_EQ(::chown(terminal.Device().c_str(), 0, 0), 0);
  ASSERT_EQ(::chmod(terminal.Device().c_str(), S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP), 0);
  const ProcessRequest request = AsOrdinaryUser(RecordRequest({"--port", terminal.Device()}));
  ExpectRefused(RunProcess(request), terminal.Device(), "group \"root\"");
}

TEST_F(RecordPortTest, TheRequestedRateIsSetAndTheLineIsRaw) {
  struct Rate {
    Arguments option;
    speed_t speed;
  };
  const std::vector<Rate> rates = {{{}, B19200},
                                   {{"--baud", "4800"}, B4800},
                                   {{"--baud", "57600"}, B57600},
                                   {{"--baud", "115200"}, B115200}};
  for (const Rate& rate : rates) {
    SCOPED_TRACE(::testing::PrintToString(rate.option));
    const PseudoTerminal terminal;
    Arguments arguments = {"record", "--port", terminal.Device()};
    arguments.insert(arguments.end(), rate.option.begin(), rate.option.end());
    Process record(Request(arguments));
    struct termios settings {};
    const auto isSet = [&] {
      settings = terminal.LineSettings();
      return ::cfgetospeed(&settings) == rate.speed && ::cfgetispeed(&settings) == rate.speed;
    };
    ASSERT_TRUE(WaitUntil(isSet, Process::kPatience));
    EXPECT_EQ(settings.c_cflag & CSIZE, tcflag_t{CS8});
    EXPECT_EQ(settings.c_cflag & (CSTOPB | PARENB | CRTSCTS), 0U);
    EXPECT_EQ(settings.c_iflag & (IXON | IXOFF | ICRNL | INLCR | IGNCR), 0U);
    EXPECT_EQ(settings.c_lflag & (ECHO | ICANON | ISIG), 0U);
    EXPECT_EQ(settings.c_oflag & OPOST, 0U);
  }
}

TEST_F(RecordPortTest, APortNumberIsTheDeviceNamedInTheSettings) {
  const SimulatedBeltpack beltpack(Request({"simulate"}));
  std::filesystem::create_directories(folder.PathOf("config/CorvanaSync"));
  Write("config/CorvanaSync/CorvanaSync.ini",
        "[Settings]\nComPort=3\n\n[Ports]\nCOM3=/dev/no-such-device\nCOM12=" +
            folder.PathOf(SimulatedBeltpack::kPort) + "\n");
  environment["XDG_CONFIG_HOME"] = folder.PathOf("config");
  const std::string output = Output({"record", "--com", "12", "--reports", "1"});
  EXPECT_EQ(output.substr(0, 11), "Reports: 1\n");
  EXPECT_EQ(beltpack.Commands().size(), 1U);
  ExpectRefused(Run({"record", "--com", "3"}), "/dev/no-such-device", "there is no such device");
}

/// A port that a record already uses.
class HeldPortTest : public RecordPortTest {
 protected:
  ProcessRequest WithStatusLine(ProcessRequest request) const {
    request.errorsToTerminal = true;
    return request;
  }

  /// Tries to open the port again while the first record runs, and expects the first record to be
  /// unaffected.
  void ExpectSecondRefused(Process& first, const std::vector<ProcessRequest>& seconds,
                           const SimulatedBeltpack& beltpack) {
    ASSERT_TRUE(first.WaitForErrors("Reports: 1"));
    for (const ProcessRequest& second : seconds) {
      SCOPED_TRACE(::testing::PrintToString(second.arguments));
      ExpectRefused(RunProcess(second), second.arguments.back(), "in use by another program");
    }
    const ProcessResult result = first.Finish();
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output.substr(0, 11), "Reports: 2\n");
    ASSERT_EQ(beltpack.Commands().size(), 2U);
    ExpectCycleOrder(beltpack.Commands());
    ExpectPollingBeat(beltpack.Commands());
  }

  const Arguments firstArguments = {"record", "--port", SimulatedBeltpack::kPort, "--reports", "2"};
};

TEST_F(HeldPortTest, ASecondRecordFailsAndTheFirstContinues) {
  const SimulatedBeltpack beltpack(Request({"simulate"}));
  Process first(WithStatusLine(Request(firstArguments)));
  ExpectSecondRefused(first,
                      {RecordRequest({"--port", SimulatedBeltpack::kPort}),
                       RecordRequest({"--port", beltpack.Device()})},
                      beltpack);
}

TEST_F(HeldPortTest, ASecondRecordAlsoFailsForOrdinaryUsers) {
  if (!CanRunAsOrdinaryUser()) {
    GTEST_SKIP() << "the program cannot be run without the superuser's rights from where it is";
  }
  const SimulatedBeltpack beltpack(AsOrdinaryUser(Request({"simulate"})));
  Process first(WithStatusLine(AsOrdinaryUser(Request(firstArguments))));
  // The last request runs as the current user, so that a superuser finds an ordinary user's record.
  ExpectSecondRefused(first,
                      {AsOrdinaryUser(RecordRequest({"--port", SimulatedBeltpack::kPort})),
                       RecordRequest({"--port", beltpack.Device()})},
                      beltpack);
}

TEST_F(HeldPortTest, IsReportedByPorts) {
  const PseudoTerminal terminal;
  Process first(WithStatusLine(Request({"record", "--port", terminal.Device()})));
  ASSERT_TRUE(first.WaitForErrors("Attempting To Connect"));
  const ProcessResult ports = Run({"ports", "--com", "4=" + terminal.Device()});
  EXPECT_EQ(ports.exitCode, 0);
  EXPECT_NE(ports.output.find("COM4 " + terminal.Device() + " present\n"), std::string::npos);
  EXPECT_NE(ports.errors.find("COM4 cannot be opened: in use by another program"),
            std::string::npos)
      << ports.errors;
}

TEST_F(HeldPortTest, IsHeldEvenWithoutALockFile) {
  const PseudoTerminal terminal;
  Process first(WithStatusLine(Request({"record", "--port", terminal.Device()})));
  ASSERT_TRUE(first.WaitForErrors("Attempting To Connect"));
  // Not every machine has a folder for lock files that every user may write to.
  std::filesystem::remove("/var/lock/LCK..pts_" +
                          std::filesystem::path(terminal.Device()).filename().string());
  ExpectRefused({"--port", terminal.Device()}, "in use by another program");
}

TEST_F(HeldPortTest, IsFreeAgainAfterTheRecordIsKilled) {
  const SimulatedBeltpack beltpack(Request({"simulate"}));
  Process first(WithStatusLine(Request({"record", "--port", beltpack.Device()})));
  ASSERT_TRUE(first.WaitForErrors("Attempting To Connect"));
  first.Signal(SIGKILL);
  EXPECT_EQ(first.Finish().signal, SIGKILL);
  EXPECT_EQ(Output({"record", "--port", beltpack.Device(), "--for", "0.2"}),
            "Reports: 0\nAAs: 0\n");
}

}  // namespace
}  // namespace kelvara::test
