#include <gtest/gtest.h>

#include <cmath>
#include <csignal>
#include <thread>

#include "system/LiveOutputs.h"
#include "system/PollingCycle.h"
#include "system/SimulatedBeltpack.h"
#include "system/SiteTruth.h"

namespace kelvara::test {
namespace {

/// A record whose beltpack is unplugged after the first report.
class LiveUnplugTest : public ::testing::Test {
 protected:
  static constexpr Process::Duration kAway{3000};

  LiveUnplugTest() {
    EXPECT_TRUE(record.WaitForErrors("Reports: 1"));
    beltpack.Unplug();
  }

  static ProcessRequest WithStatusLine(ProcessRequest request) {
    request.errorsToTerminal = true;
    return request;
  }

  CliFixture fixture;
  SimulatedBeltpack beltpack{fixture.Request({"simulate"})};
  Process record{WithStatusLine(
      fixture.Request(RecordOfAll({"--port", SimulatedBeltpack::kPort, "--reports", "3"})))};
};

TEST_F(LiveUnplugTest, PollingContinuesWhenTheDeviceIsBackAndNothingIsLost) {
  const Process::Duration before = record.ProcessorTime();
  std::this_thread::sleep_for(kAway);
  const Process::Duration used = record.ProcessorTime() - before;
  EXPECT_LT(used, kAway / 5) << "processor time while the device was away";
  beltpack.Plug();
  const ProcessResult result = record.Finish();
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.output.substr(0, 16), "Reports: 3\nAAs: ");

  const QJsonObject results = ParsedResults(ExpectWholeOutputs(fixture));
  EXPECT_EQ(results["reports"].toInt(), 3);
  ExpectTrueReadings(results, ExampleSiteAntennas("site-12.txt"));

  // One report arrived before. One or two ticks passed while the device was away; the interval is
  // kept.
  const std::vector<ReceivedCommand> commands = beltpack.Commands();
  ASSERT_GE(commands.size(), 3U);
  const double missed =
      static_cast<double>(commands[1].milliseconds - commands[0].milliseconds) / kPollMilliseconds;
  EXPECT_NEAR(missed, std::round(missed), 0.2);
  EXPECT_GE(std::round(missed), 2);
  EXPECT_LE(std::round(missed), 3);
}

TEST_F(LiveUnplugTest, ARecordThatEndsWithoutItsDeviceKeepsItsResults) {
  record.Signal(SIGTERM);
  const ProcessResult result = record.Finish();
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.output.substr(0, 16), "Reports: 1\nAAs: ");
  EXPECT_EQ(ParsedResults(ExpectWholeOutputs(fixture))["reports"].toInt(), 1);
}

}  // namespace
}  // namespace kelvara::test
