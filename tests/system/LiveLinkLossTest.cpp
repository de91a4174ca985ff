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
  CliRoom room;
  ProcessResult record;
  std::vector<ReceivedCommand> commands;
  std::size_t commandsAtNote = 0;
  std::time_t timeOfNote = 0;
};

/// A beltpack answers once, is silent until it is reported lost and for two commands more, and
/// answers again.
std::unique_ptr<Session> LoseTheBeltpack() {
  constexpr Process::Duration kUntilLost{90000};
  auto session = std::make_unique<Session>();
  SimulatedBeltpack beltpack(session->room.Request({"simulate"}));
  Process record(
      session->room.Request(RecordOfAll({"--port", SimulatedBeltpack::kPort, "--reports", "2"})));
  beltpack.WaitForCommands(1);
  // From the next answer on: the first one is on its way.
  beltpack.SetFault("silent:always");
  if (!record.WaitForErrors(kNote, kUntilLost)) {
    throw std::runtime_error("the lost link is not noted");
  }
  session->timeOfNote = std::time(nullptr);
  // The command of the same tick may still be on its way.
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

TEST(LiveLinkLossTest, TheNoteTellsWhenTheBeltpackWasLastHeard) {
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
  // The answer to the first command comes within a second. The twelfth finds 30 seconds of silence
  // and begins the search; the seventeenth finds 15 seconds of search, or just misses them.
  const std::size_t commands = recording.Wait().commandsAtNote;
  EXPECT_GE(commands, 17U);
  EXPECT_LE(commands, 18U);
}

TEST(LiveLinkLossTest, ThePollingGoesOnAllTheTime) {
  const std::vector<ReceivedCommand>& commands = recording.Wait().commands;
  ExpectCycleOrder(commands);
  ExpectPollingBeat(commands);
}

TEST(LiveLinkLossTest, TheSearchIsLogged) {
  const std::string log = ReadTextFile(recording.Wait().room.PathOf("log.txt"));
  EXPECT_EQ(CountOf(log, ", Break Condition Set\r\n"), 1U) << log;
}

TEST(LiveLinkLossTest, TheAnswerIsNoAndTheResultsAreKept) {
  const Session& session = recording.Wait();
  EXPECT_EQ(session.record.exitCode, 0);
  EXPECT_EQ(session.record.output.substr(0, 11), "Reports: 2\n");
  const QJsonObject results = ParsedResults(ExpectWholeOutputs(session.room));
  EXPECT_EQ(results["reports"].toInt(), 2);
  ExpectTrueReadings(results, ExampleSiteAntennas("site-12.txt"));
}

}  // namespace
}  // namespace kelvara::test
