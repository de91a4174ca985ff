#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <memory>
#include <random>
#include <regex>
#include <thread>

#include "support/ReplayedTrace.h"
#include "support/TextFile.h"
#include "system/CliFixture.h"
#include "system/SimulatedBeltpack.h"

namespace kelvara::test {
namespace {

using std::chrono::milliseconds;

/// A record that captures a log and writes a trace, and the time at which it is killed.
struct Session {
  explicit Session(const std::vector<std::string>& source) {
    std::vector<std::string> arguments = {"record", "--log", "log.txt", "--raw", "trace.txt"};
    arguments.insert(arguments.end(), source.begin(), source.end());
    record = std::make_unique<Process>(fixture.Request(arguments));
  }
  Session() : beltpack(std::make_unique<SimulatedBeltpack>(fixture.Request({"simulate"}))) {}

  CliFixture fixture;
  std::unique_ptr<SimulatedBeltpack> beltpack;
  std::unique_ptr<Process> record;
  std::chrono::steady_clock::time_point end;
};

/// The files that a killed record left, and how many commands its beltpack received.
struct Remains {
  std::string log;
  std::string trace;
  std::size_t commandsHeard = 0;
};

/// The complete lines of a log, and the text after the last of them.
struct LogLines {
  explicit LogLines(const std::string& log) {
    std::size_t start = 0;
    for (std::size_t lineEnd = log.find("\r\n"); lineEnd != std::string::npos;
         lineEnd = log.find("\r\n", start)) {
      whole.push_back(log.substr(start, lineEnd - start));
      start = lineEnd + 2;
    }
    tail = log.substr(start);
  }

  std::vector<std::string> whole;
  std::string tail;
};

constexpr std::size_t kStampBytes = std::string_view("2026-01-01 00:00:00, ").size();

/// Where the last complete command of a trace begins. Everything before it had been processed when
/// it was written.
std::size_t LastCommand(const std::string& trace) {
  std::size_t last = 0;
  for (const char* command : {"rfps", "cho", "bho"}) {
    const std::size_t at =
        trace.rfind(sessions::kCommandMark + std::string(command) + sessions::kCommandEnd);
    last = at == std::string::npos ? last : std::max(last, at);
  }
  return last;
}

/// Counts over many kills, to check that they happened while there was something to lose.
struct Tally {
  int withReadings = 0;
  int withinAReport = 0;
};

/// Expects every entry whose write had returned to be in the log, complete and in order.
void ExpectNothingLost(const Remains& remains, Tally& tally) {
  const LogLines lines(remains.log);
  const std::regex form(
      "\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d, (Log To File Started|\\d\\d->\\d\\d=-?\\d+)");
  std::vector<std::string> readings;
  for (const std::string& line : lines.whole) {
    EXPECT_TRUE(std::regex_match(line, form)) << line;
    readings.push_back(line.substr(std::min(line.size(), kStampBytes)));
  }
  if (readings.empty()) {
    EXPECT_EQ(LastCommand(remains.trace), 0U) << "the log starts before the first command";
    return;
  }
  EXPECT_EQ(readings.front(), "Log To File Started");
  readings.erase(readings.begin());

  const std::vector<std::string> all = ReplayedTrace(remains.trace).log.entries;
  const std::vector<std::string> sure =
      ReplayedTrace(remains.trace.substr(0, LastCommand(remains.trace))).log.entries;
  EXPECT_GE(readings.size(), sure.size());
  ASSERT_LE(readings.size(), all.size());
  EXPECT_TRUE(std::equal(readings.begin(), readings.end(), all.begin()));
  if (lines.tail.size() > kStampBytes) {
    ASSERT_LT(readings.size(), all.size());
    EXPECT_TRUE((all[readings.size()] + "\r").starts_with(lines.tail.substr(kStampBytes)));
  }
  EXPECT_GE(CommandsIn(remains.trace), static_cast<int>(remains.commandsHeard));

  tally.withReadings += readings.empty() ? 0 : 1;
  const std::string last = remains.trace.substr(LastCommand(remains.trace));
  const auto lineFeeds = std::count(last.begin(), last.end(), '\n');
  tally.withinAReport += lineFeeds > 0 && lineFeeds < link::kRfpsReportLines ? 1 : 0;
}

/// Kills each session at its time and expects it to have been running and to have lost nothing.
void KillAll(const std::vector<std::unique_ptr<Session>>& sessions, Tally& tally) {
  std::vector<Session*> order;
  for (const auto& session : sessions) {
    order.push_back(session.get());
  }
  std::sort(order.begin(), order.end(),
            [](const Session* one, const Session* other) { return one->end < other->end; });
  for (Session* const session : order) {
    std::this_thread::sleep_until(session->end);
    session->record->Signal(SIGKILL);
  }
  for (Session* const session : order) {
    EXPECT_EQ(session->record->Finish().signal, SIGKILL);
    Remains remains{ReadTextFile(session->fixture.PathOf("log.txt")),
                    ReadTextFile(session->fixture.PathOf("trace.txt")), 0};
    if (session->beltpack) {
      remains.commandsHeard = session->beltpack->Commands().size();
    }
    ExpectNothingLost(remains, tally);
  }
}

TEST(KilledRecordTest, KeepsEveryWrittenLineWhenKilledAtTwoHundredMomentsOverAPseudoTerminal) {
  constexpr int kWaves = 2;
  constexpr int kSessions = 100;
  constexpr int kFirstMilliseconds = 2900;
  constexpr int kLastMilliseconds = 7500;
  std::mt19937 random(200);
  Tally tally;
  for (int wave = 0; wave < kWaves; ++wave) {
    std::vector<std::unique_ptr<Session>> sessions;
    for (int session = 0; session < kSessions; ++session) {
      sessions.push_back(std::make_unique<Session>());
    }
    for (const auto& session : sessions) {
      session->record = std::make_unique<Process>(
          session->fixture.Request({"record", "--port", SimulatedBeltpack::kPort, "--log",
                                    "log.txt", "--raw", "trace.txt"}));
      session->end =
          std::chrono::steady_clock::now() + milliseconds(std::uniform_int_distribution<int>(
                                                 kFirstMilliseconds, kLastMilliseconds)(random));
    }
    KillAll(sessions, tally);
  }
  EXPECT_GT(tally.withReadings, kWaves * kSessions / 4);
  EXPECT_GT(tally.withinAReport, 0);
}

TEST(KilledRecordTest, KeepsEveryWrittenLineWhenKilledAtFullSpeed) {
  constexpr int kKills = 100;
  constexpr int kAtOnce = 4;
  std::mt19937 random(100);
  Tally tally;
  for (int kill = 0; kill < kKills; kill += kAtOnce) {
    std::vector<std::unique_ptr<Session>> sessions;
    for (int session = 0; session < kAtOnce; ++session) {
      sessions.push_back(
          std::make_unique<Session>(std::vector<std::string>{"--demo", "--speed", "300"}));
      sessions.back()->end = std::chrono::steady_clock::now() +
                             milliseconds(std::uniform_int_distribution<int>(50, 350)(random));
    }
    // A program that has not started recording has nothing to lose, and may have no file yet.
    for (const auto& session : sessions) {
      EXPECT_TRUE(
          WaitUntil([&] { return std::filesystem::exists(session->fixture.PathOf("log.txt")); },
                    Process::kPatience));
    }
    KillAll(sessions, tally);
  }
  EXPECT_GT(tally.withReadings, kKills / 4);
}

}  // namespace
}  // namespace kelvara::test
