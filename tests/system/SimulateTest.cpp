#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>

#include "sim/TerminalUser.h"
#include "support/WaitUntil.h"
#include "system/CliTest.h"
#include "system/SiteTruth.h"

namespace kelvara::test {
namespace {

namespace fs = std::filesystem;

class SimulateTest : public CliTest {
 protected:
  /// Sends a command to the device and returns the answer once it has `lines` lines.
  static std::string Ask(const std::string& device, const std::string& command, int lines) {
    const TerminalUser user(device);
    EXPECT_TRUE(user.IsOpen()) << device;
    EXPECT_TRUE(user.Send(command + "\r"));
    std::string answer;
    const auto isWhole = [&] {
      answer += user.Take();
      return std::count(answer.begin(), answer.end(), '\n') >= lines;
    };
    EXPECT_TRUE(WaitUntil(isWhole, Process::kPatience)) << answer;
    return answer;
  }

  /// Runs with options and expects one complaint and nothing on standard output.
  void ExpectFailure(const Arguments& options, int exitCode, const std::string& named) const {
    SCOPED_TRACE(::testing::PrintToString(options));
    Arguments arguments = {"simulate"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const ProcessResult result = Run(arguments);
    ExpectComplaint(result, exitCode, named);
    EXPECT_EQ(result.output, "");
  }

  const std::string link = folder.PathOf("beltpack");
};

TEST_F(SimulateTest, TheFirstLineIsTheDeviceWhichAnswersUntilASignal) {
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    SCOPED_TRACE(signal);
    Process simulate(Request({"simulate"}));
    const std::string device = simulate.ReadLine().value_or("");
    EXPECT_TRUE(fs::is_character_file(device)) << device;
    const std::string report = Ask(device, "rfps", 29);
    EXPECT_EQ(std::count(report.begin(), report.end(), '\n'), 29);
    EXPECT_NE(report.find("100ec"), std::string::npos);
    const std::string answer = Ask(device, "cho", 1);
    EXPECT_EQ(std::count(answer.begin(), answer.end(), '\n'), 1);
    simulate.Signal(signal);
    const ProcessResult result = simulate.Finish();
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_FALSE(result.timedOut);
    EXPECT_EQ(result.output, device + "\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_FALSE(fs::exists(device));
  }
}

TEST_F(SimulateTest, TheLinkIsMadeAndRemoved) {
  Process simulate(Request({"simulate", "--link", "beltpack"}));
  const std::string device = simulate.ReadLine().value_or("");
  EXPECT_EQ(fs::read_symlink(link), device);
  Ask(link, "bho", 1);
  simulate.Signal(SIGTERM);
  EXPECT_EQ(simulate.Finish().exitCode, 0);
  EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
}

TEST_F(SimulateTest, ALeftoverLinkIsReplaced) {
  {
    Process killed(Request({"simulate", "--link", "beltpack"}));
    killed.ReadLine();
    killed.Signal(SIGKILL);
    EXPECT_EQ(killed.Finish().signal, SIGKILL);
  }
  EXPECT_TRUE(fs::is_symlink(link));
  Process simulate(Request({"simulate", "--link", "beltpack"}));
  const std::string device = simulate.ReadLine().value_or("");
  EXPECT_EQ(device, fs::read_symlink(link));
  Ask(link, "cho", 1);
}

TEST_F(SimulateTest, AnExistingFileIsNotReplacedByTheLink) {
  Write("beltpack", "precious");
  ExpectFailure({"--link", "beltpack"}, 1, "beltpack");
  EXPECT_EQ(Read("beltpack"), "precious");
  fs::create_directory(folder.PathOf("empty"));
  ExpectFailure({"--link", "empty"}, 1, "empty");
  EXPECT_TRUE(fs::is_directory(folder.PathOf("empty")));
  ExpectFailure({"--link", "missing/beltpack"}, 1, "missing/beltpack");
}

TEST_F(SimulateTest, ABadSiteFileIsReportedWithItsLine) {
  Write("text.txt", "# antennas\n1 3 90 40\n2 3 ninety 95\n");
  ExpectFailure({"--site", "text.txt"}, 1, "line 3");
  Write("range.txt", "1 3 90 40\n256 3 90 95\n");
  ExpectFailure({"--site", "range.txt"}, 1, "line 2");
  Write("twice.txt", "1 3 90 40\n1 3 90 95\n");
  ExpectFailure({"--site", "twice.txt"}, 1, "line 2");
  Write("empty.txt", "# nothing\n");
  ExpectFailure({"--site", "empty.txt"}, 1, "empty.txt");
  std::string crowd;
  for (int rpn = 0; rpn < 52; ++rpn) {
    crowd += std::to_string(rpn) + " 3 90 40\n";
  }
  Write("crowd.txt", crowd);
  ExpectFailure({"--site", "crowd.txt"}, 1, "line 52");
  ExpectFailure({"--site", "missing.txt"}, 1, "missing.txt");
  ExpectFailure({"--site", folder.Path()}, 1, folder.Path());
}

TEST_F(SimulateTest, ABadSiteFileMakesNoLink) {
  Write("empty.txt", "");
  ExpectFailure({"--site", "empty.txt", "--link", "beltpack"}, 1, "empty.txt");
  EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
}

TEST_F(SimulateTest, WrongCommandLinesAreRefused) {
  for (const Arguments& options : std::vector<Arguments>{{"extra"},
                                                         {"--unknown"},
                                                         {"--site"},
                                                         {"--fault", "thunder"},
                                                         {"--fault", "silent:never"},
                                                         {"--seed", "first"},
                                                         {"--seed", ""},
                                                         {"--seed", "-1"},
                                                         {"--seed", "010"}}) {
    ExpectFailure(options, 2, "");
  }
}

TEST_F(SimulateTest, TheSameSeedGivesTheSameReadings) {
  const auto firstReport = [&](const std::string& seed) {
    Process simulate(
        Request({"simulate", "--site", ExampleSitePath("site-51.txt"), "--seed", seed}));
    return Ask(simulate.ReadLine().value_or(""), "rfps", 29);
  };
  const std::string report = firstReport("7");
  EXPECT_EQ(firstReport("7"), report);
  EXPECT_NE(firstReport("8"), report);
}

TEST_F(SimulateTest, EndsWithItsInputOnlyUnderControl) {
  Process controlled(Request({"simulate", "--control"}));
  EXPECT_EQ(controlled.Finish().exitCode, 0);
  Process uncontrolled(Request({"simulate"}));
  const std::string device = uncontrolled.ReadLine().value_or("");
  Ask(device, "cho", 1);
}

TEST_F(SimulateTest, AnUnknownCommandIsReportedAndChangesNothing) {
  ProcessRequest request = Request({"simulate", "--control"});
  request.inputStaysOpen = true;
  Process simulate(request);
  const std::string device = simulate.ReadLine().value_or("");
  simulate.Send("explode\n");
  EXPECT_TRUE(simulate.WaitForErrors("explode"));
  Ask(device, "cho", 1);
  ExpectComplaint(simulate.Finish(), 0, "explode");
}

TEST_F(SimulateTest, TheDeviceIsNamedAgainWhenPluggedInAgain) {
  ProcessRequest request = Request({"simulate", "--control", "--link", "beltpack"});
  request.inputStaysOpen = true;
  Process simulate(request);
  EXPECT_TRUE(fs::is_character_file(simulate.ReadLine().value_or("")));
  simulate.Send("unplug\n");
  EXPECT_TRUE(WaitUntil([&] { return !fs::exists(fs::symlink_status(link)); }, Process::kPatience));
  simulate.Send("plug\n");
  const std::string device = simulate.ReadLine().value_or("");
  EXPECT_EQ(device, fs::read_symlink(link));
  Ask(link, "cho", 1);
}

}  // namespace
}  // namespace kelvara::test
