#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <memory>
#include <thread>

#include "support/LongRun.h"
#include "system/LiveOutputs.h"
#include "system/PollingCycle.h"
#include "system/SimulatedBeltpack.h"
#include "system/SiteTruth.h"

namespace kelvara::test {
namespace {

constexpr const char* kNote = "kelvara-cli: Lost Communications with Beltpack at ";

struct Session {
  CliFixture fixture;
  ProcessResult record;
  std::vector<ReceivedCommand> commands;
  std::size_t commandsAtNote = 0;
  std::time_t timeOfNote = 0;
};

/// A beltpack answers once, is silent until it is reported lost and for two more commands, then
/// answers again.
std::unique_ptr<Session> LoseTheBeltpack() {
  constexpr Process::Duration kUntilLost{90000};
  auto session = std::make_unique<Session>();
  SimulatedBeltpack beltpack(session->fixture.Request({"simulate"}));
  Process record(session->fixture.Request(
      RecordOfAll({"--port", SimulatedBeltpack::kPort, "--reports", "2"})));
  beltpack.WaitForCommands(1);
  // Takes effect from the next answer; the first one is already being sent.
  beltpack.SetFault("silent:always");
  if (!record.WaitForErrors(kNote, kUntilLost)) {
    throw std::runtime_error("the lost link is not noted");
  }
  session->timeOfNote = std::time(nullptr);
  // The command of the same tick may still arrive.
  std::this_thread::sleep_for(std::chrono::milliseconds(kPollMilliseconds / 3));
  session->commandsAtNote = beltpack.Commands().size();
  beltpack.WaitForCommands(session->commandsAtNote + 2);
  beltpack.SetFault("none");
  session->record = record.Finish();
  session->commands = beltpack.Commands();
  return session;
}

auto& recording = LongRun<Session>::For("LiveLinkLossTest", LoseTheBeltpack);

std::size_t CountOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

TEST(LiveLinkLossTest, ALostLinkIsNotedOnce) {
  const std::string& errors = recording.Wait().record.errors;
  EXPECT_EQ(CountOf(errors, kNote), 1U) << errors;
  EXPECT_EQ(CountOf(errors, "\n"), 1U) << errors;
}

TEST(LiveLinkLossTest, TheNoteSaysWhenTheBeltpackWasLastHeard) {
  const Session& session = recording.Wait();
  const std::string& errors = session.record.errors;
  const std::size_t place = errors.find(kNote);
  ASSERT_NE(place, std::string::npos);
  std::tm parts{};
  ASSERT_NE(
      ::strptime(errors.c_str() + place + std::string(kNote).size(), "%Y-%m-%d %H:%M:%S\n", &parts),
      nullptr)
      << errors;
  constexpr double kSecondsBefore = 45;
  EXPECT_NEAR(std::difftime(session.timeOfNote, ::timegm(&parts)), kSecondsBefore, 2);
}

TEST(LiveLinkLossTest, ABeltpackIsLostAfterThirtySecondsOfSilenceAndFifteenOfSearch) {
  // The first command is answered within a second. At the twelfth, 30 seconds of silence have
  // passed and the search begins. At the seventeenth or eighteenth, 15 seconds of search have
  // passed.
  const std::size_t commands = recording.Wait().commandsAtNote;
  EXPECT_GE(commands, 17U);
  EXPECT_LE(commands, 18U);
}

TEST(LiveLinkLossTest, PollingNeverStops) {
  const std::vector<ReceivedCommand>& commands = recording.Wait().commands;
  ExpectCycleOrder(commands);
  ExpectPollingBeat(commands);
}

TEST(LiveLinkLossTest, TheSearchIsLogged) {
  const std::string log = ReadTextFile(recording.Wait().fixture.PathOf("log.txt"));
  EXPECT_EQ(CountOf(log, ", Break Condition Set\r\n"), 1U) << log;
}

TEST(LiveLinkLossTest, TheQuestionIsAnsweredNoAndTheResultsAreKept) {
  const Session& session = recording.Wait();
  EXPECT_EQ(session.record.exitCode, 0);
  EXPECT_EQ(session.record.output.substr(0, 11), "Reports: 2\n");
  const QJsonObject results = ParsedResults(ExpectWholeOutputs(session.fixture));
  EXPECT_EQ(results["reports"].toInt(), 2);
  ExpectTrueReadings(results, ExampleSiteAntennas("site-12.txt"));
}

}  // namespace
}  // namespace kelvara::test
