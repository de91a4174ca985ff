#include <gtest/gtest.h>

#include <memory>

#include "support/LongRun.h"
#include "system/LiveOutputs.h"
#include "system/PollingCycle.h"
#include "system/SimulatedBeltpack.h"
#include "system/SiteTruth.h"

namespace kelvara::test {
namespace {

constexpr const char* kSite = "site-4.txt";

struct Session {
  CliFixture fixture;
  ProcessResult record;
  std::vector<ReceivedCommand> commands;
};

/// Records one polling cycle and the first command of the next. With this seed the beltpack passes
/// all four antennas in seven reports.
std::unique_ptr<Session> RecordACycle() {
  auto session = std::make_unique<Session>();
  SimulatedBeltpack beltpack(
      session->fixture.Request({"simulate", "--site", ExampleSitePath(kSite), "--seed", "69"}));
  session->record = RunProcess(session->fixture.Request(
      RecordOfAll({"--port", SimulatedBeltpack::kPort, "--reports", "8"})));
  session->commands = beltpack.Commands();
  return session;
}

auto& recording = LongRun<Session>::For("LiveCycleTest", RecordACycle);

TEST(LiveCycleTest, CommandsFollowTheOrderOfTheCycle) {
  const Session& session = recording.Wait();
  ASSERT_EQ(session.commands.size(), 10U);
  ExpectCycleOrder(session.commands);
}

TEST(LiveCycleTest, ACommandIsSentEveryThreeSeconds) {
  ExpectPollingBeat(recording.Wait().commands);
}

TEST(LiveCycleTest, TheResultsAreTrueToTheSite) {
  const Session& session = recording.Wait();
  EXPECT_EQ(session.record.exitCode, 0);
  EXPECT_EQ(session.record.errors, "");
  EXPECT_EQ(session.record.output, "Reports: 8\nAAs: 4\n");
  const SiteAntennas site = ExampleSiteAntennas(kSite);
  const QJsonObject results = ParsedResults(ExpectWholeOutputs(session.fixture));
  ASSERT_TRUE(IsHeardAllRound(results, site.size()));
  ExpectTrueReadings(results, site);
  ExpectTrueLengths(ReadTextFile(session.fixture.PathOf("report.html")), site);
}

}  // namespace
}  // namespace kelvara::test
