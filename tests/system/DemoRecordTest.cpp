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
    return RunProcess(fixture.Request(RecordOfAll(options)));
  }

  CliFixture fixture;
};

TEST_F(DemoRecordTest, AFastClockFillsTheMatrixWithTheSitesTrueReadings) {
  const ProcessResult record = Record({"--demo", "--speed", "200", "--reports", "250"});
  EXPECT_EQ(record.exitCode, 0);
  EXPECT_EQ(record.errors, "");
  EXPECT_EQ(record.output, "Reports: 250\nAAs: 12\n");
  const SiteAntennas site = ExampleSiteAntennas("site-12.txt");
  const QJsonObject results = ParsedResults(ExpectWholeOutputs(fixture));
  EXPECT_EQ(results["reports"].toInt(), 250);
  EXPECT_EQ(results["abandoned"].toInt(-1), 0);
  ASSERT_TRUE(IsHeardAllRound(results, site.size()));
  ExpectTrueReadings(results, site);
  ExpectTrueLengths(ReadTextFile(fixture.PathOf("report.html")), site);
}

TEST_F(DemoRecordTest, TheDurationIsMeasuredByTheFastClock) {
  const auto begin = std::chrono::steady_clock::now();
  const ProcessResult record = Record({"--demo", "--speed", "100", "--for", "100"});
  const auto taken = std::chrono::steady_clock::now() - begin;
  EXPECT_EQ(record.exitCode, 0);
  EXPECT_GE(taken, std::chrono::milliseconds(1000));
  EXPECT_LT(taken, std::chrono::milliseconds(10000));
  // A machine busy with other tests may miss some of the 33 ticks.
  const std::vector<ReceivedCommand> commands =
      CommandsIn(ReadTextFile(fixture.PathOf("trace.txt")));
  EXPECT_GE(commands.size(), 10U);
  EXPECT_LE(commands.size(), 33U);
  ExpectCycleOrder(commands);
  EXPECT_GT(ParsedResults(ExpectWholeOutputs(fixture))["reports"].toInt(), 0);
}

TEST_F(DemoRecordTest, JsonIsTheOnlyTextOnStandardOutput) {
  const ProcessResult record = RunProcess(
      fixture.Request({"record", "--json", "-", "--demo", "--reports", "3", "--speed", "100"}));
  EXPECT_EQ(record.exitCode, 0);
  EXPECT_EQ(record.errors, "");
  EXPECT_EQ(record.output.front(), '{');
  EXPECT_EQ(ParsedResults(record.output)["reports"].toInt(), 3);
}

TEST_F(DemoRecordTest, DisplayOptionsApplyToLogAndGrid) {
  const ProcessResult record = Record({"--demo", "--speed", "200", "--reports", "200", "--rpn",
                                       "hex", "--fps", "on", "--units", "metres", "--grid"});
  EXPECT_EQ(record.exitCode, 0);
  // RPN 64 is 40 in hexadecimal; 870 metres less 40 is 6 units of 130, give or take one.
  EXPECT_NE(ReadTextFile(fixture.PathOf("log.txt")).find(", 40[B]->"), std::string::npos);
  EXPECT_NE(record.output.find("40[B]"), std::string::npos);
  EXPECT_TRUE(std::regex_search(record.output, std::regex("\\b(650|780|910)\\b")));
}

TEST_F(DemoRecordTest, AFailedOutputDoesNotAffectTheOthers) {
  const ProcessResult record =
      RunProcess(fixture.Request({"record", "--demo", "--speed", "100", "--reports", "2",
                                  "--report", "missing/report.html", "--csv", "results.csv"}));
  EXPECT_EQ(record.exitCode, 1);
  EXPECT_EQ(record.errors.substr(0, 13), "kelvara-cli: ");
  EXPECT_NE(record.errors.find("missing/report.html"), std::string::npos);
  EXPECT_GT(ReadTextFile(fixture.PathOf("results.csv")).size(), 50U);
}

}  // namespace
}  // namespace kelvara::test
