#include <gtest/gtest.h>

#include <chrono>
#include <regex>

#include "system/LiveOutputs.h"
#include "system/PollingCycle.h"
#include "system/SiteTruth.h"

namespace kelvara::test {
namespace {

/// The commands in a trace.
std::vector<ReceivedCommand> CommandsIn(const std::string& trace) {
  const std::regex mark("\x01([a-z]+)\x02");
  std::vector<ReceivedCommand> commands;
  for (std::sregex_iterator match(trace.begin(), trace.end(), mark), end; match != end; ++match) {
    commands.push_back({0, (*match)[1]});
  }
  return commands;
}

class DemoRecordTest : public ::testing::Test {
 protected:
  ProcessResult Record(const std::vector<std::string>& options) const {
    return RunProcess(room.Request(RecordOfAll(options)));
  }

  CliRoom room;
};

TEST_F(DemoRecordTest, AFastClockFillsTheMatrixWithTheSitesTruth) {
  const ProcessResult record = Record({"--demo", "--speed", "200", "--reports", "250"});
  EXPECT_EQ(record.exitCode, 0);
  EXPECT_EQ(record.errors, "");
  EXPECT_EQ(record.output, "Reports: 250\nAAs: 12\n");
  const SiteAntennas site = ExampleSiteAntennas("site-12.txt");
  const QJsonObject results = ParsedResults(ExpectWholeOutputs(room));
  EXPECT_EQ(results["reports"].toInt(), 250);
  EXPECT_EQ(results["abandoned"].toInt(-1), 0);
  ASSERT_TRUE(IsHeardAllRound(results, site.size()));
  ExpectTrueReadings(results, site);
  ExpectTrueLengths(ReadTextFile(room.PathOf("report.html")), site);
}

TEST_F(DemoRecordTest, TimeRunsByTheFastClock) {
  const auto begin = std::chrono::steady_clock::now();
  const ProcessResult record = Record({"--demo", "--speed", "100", "--for", "100"});
  const auto taken = std::chrono::steady_clock::now() - begin;
  EXPECT_EQ(record.exitCode, 0);
  EXPECT_GE(taken, std::chrono::milliseconds(1000));
  EXPECT_LT(taken, std::chrono::milliseconds(10000));
  // A machine that is busy with other tests may miss some of the 33 ticks.
  const std::vector<ReceivedCommand> commands = CommandsIn(ReadTextFile(room.PathOf("trace.txt")));
  EXPECT_GE(commands.size(), 10U);
  EXPECT_LE(commands.size(), 33U);
  ExpectCycleOrder(commands);
  EXPECT_GT(ParsedResults(ExpectWholeOutputs(room))["reports"].toInt(), 0);
}

TEST_F(DemoRecordTest, JsonOnStandardOutputStandsAlone) {
  const ProcessResult record = RunProcess(
      room.Request({"record", "--json", "-", "--demo", "--reports", "3", "--speed", "100"}));
  EXPECT_EQ(record.exitCode, 0);
  EXPECT_EQ(record.errors, "");
  EXPECT_EQ(record.output.front(), '{');
  EXPECT_EQ(ParsedResults(record.output)["reports"].toInt(), 3);
}

TEST_F(DemoRecordTest, DisplayOptionsHoldForLogAndGrid) {
  const ProcessResult record = Record({"--demo", "--speed", "200", "--reports", "200", "--rpn",
                                       "hex", "--fps", "on", "--units", "metres", "--grid"});
  EXPECT_EQ(record.exitCode, 0);
  // RPN 64 is 40 in hexadecimal; 870 metres less 40 are 6 units of 130, more or less one.
  EXPECT_NE(ReadTextFile(room.PathOf("log.txt")).find(", 40[B]->"), std::string::npos);
  EXPECT_NE(record.output.find("40[B]"), std::string::npos);
  EXPECT_TRUE(std::regex_search(record.output, std::regex("\\b(650|780|910)\\b")));
}

TEST_F(DemoRecordTest, AnOutputThatFailsDoesNotTakeTheOthersWithIt) {
  const ProcessResult record =
      RunProcess(room.Request({"record", "--demo", "--speed", "100", "--reports", "2", "--report",
                               "missing/report.html", "--csv", "results.csv"}));
  EXPECT_EQ(record.exitCode, 1);
  EXPECT_EQ(record.errors.substr(0, 13), "kelvara-cli: ");
  EXPECT_NE(record.errors.find("missing/report.html"), std::string::npos);
  EXPECT_GT(ReadTextFile(room.PathOf("results.csv")).size(), 50U);
}

}  // namespace
}  // namespace kelvara::test
