#include <gtest/gtest.h>

#include <memory>

#include "support/LongRun.h"
#include "system/LiveOutputs.h"
#include "system/SimulatedBeltpack.h"
#include "system/SiteTruth.h"

namespace kelvara::test {
namespace {

constexpr const char* kSite = "site-51.txt";

/// Long enough for eight commands, seven of them "rfps", and the answer to the last.
constexpr const char* kSeconds = "26.5";

/// A line fault and how many of seven reports can arrive.
struct Plan {
  const char* fault;
  int fewestReports;
  int mostReports;
  bool changesReadings;
};

// The rules count answers, including the fifth, to "cho". After "24" three commands go unanswered.
// A late answer arrives after the next command, and is not collected after "cho". A hang-up lasts
// ten seconds.
constexpr Plan kPlans[] = {{"none", 7, 7, false},
                           {"silent:2", 3, 3, false},
                           {"24:3", 4, 4, false},
                           {"partial:2", 3, 3, false},
                           {"late:always", 5, 5, false},
                           {"garbled:2", 3, 7, true},
                           {"lost-line-feeds:2", 3, 6, false},
                           {"slow:always", 7, 7, false},
                           {"flood:3", 5, 6, true},
                           {"hang-up:3", 4, 4, false}};

/// A record over a line with a fault.
struct Session {
  explicit Session(const Plan& chosen) : plan(chosen) {}

  Plan plan;
  CliFixture fixture;
  SimulatedBeltpack beltpack{
      fixture.Request({"simulate", "--site", ExampleSitePath(kSite), "--fault", plan.fault})};
  Process record{
      fixture.Request(RecordOfAll({"--port", SimulatedBeltpack::kPort, "--for", kSeconds}))};
  ProcessResult result;
};

using Sessions = std::vector<std::unique_ptr<Session>>;

std::unique_ptr<Sessions> RecordFaults() {
  auto sessions = std::make_unique<Sessions>();
  for (const Plan& plan : kPlans) {
    sessions->push_back(std::make_unique<Session>(plan));
  }
  for (const auto& session : *sessions) {
    session->result = session->record.Finish();
  }
  return sessions;
}

auto& recording = LongRun<Sessions>::For("LiveTraceTest", RecordFaults);

TEST(LiveTraceTest, ReplaysToTheSameResultsAfterEveryLineFault) {
  for (const auto& session : recording.Wait()) {
    SCOPED_TRACE(session->plan.fault);
    EXPECT_EQ(session->result.exitCode, 0);
    EXPECT_EQ(session->result.errors, "");
    ExpectWholeOutputs(session->fixture);
  }
}

TEST(LiveTraceTest, EachFaultCostsOnlyTheReportsItAffects) {
  for (const auto& session : recording.Wait()) {
    SCOPED_TRACE(session->plan.fault);
    const QJsonObject results =
        ParsedResults(ReadTextFile(session->fixture.PathOf("results.json")));
    EXPECT_GE(results["reports"].toInt(), session->plan.fewestReports);
    EXPECT_LE(results["reports"].toInt(), session->plan.mostReports);
  }
}

TEST(LiveTraceTest, ReportsThatArriveAreTrueToTheSite) {
  const SiteAntennas site = ExampleSiteAntennas(kSite);
  for (const auto& session : recording.Wait()) {
    if (session->plan.changesReadings) {
      continue;
    }
    SCOPED_TRACE(session->plan.fault);
    ExpectTrueReadings(ParsedResults(ReadTextFile(session->fixture.PathOf("results.json"))), site);
  }
}

}  // namespace
}  // namespace kelvara::test
