#include <gtest/gtest.h>

#include <memory>

#include "support/LongRun.h"
#include "system/LiveOutputs.h"
#include "system/SimulatedBeltpack.h"
#include "system/SiteTruth.h"

namespace kelvara::test {
namespace {

constexpr const char* kSite = "site-51.txt";

/// Long enough for eight commands, seven of them "rfps", and the last one's answer.
constexpr const char* kSeconds = "26.5";

/// A fault of the line and what can come through of seven reports.
struct Plan {
  const char* fault;
  int fewestReports;
  int mostReports;
  bool changesReadings;
};

// The rules count answers, that to "cho" at the fifth place too. After "24" three commands go
// unheard. What is late comes after the next command, and is not collected after "cho". A hang-up
// lasts ten seconds.
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

/// A record while the line has a fault.
struct Session {
  explicit Session(const Plan& wanted) : plan(wanted) {}

  Plan plan;
  CliRoom room;
  SimulatedBeltpack beltpack{
      room.Request({"simulate", "--site", ExampleSitePath(kSite), "--fault", plan.fault})};
  Process record{
      room.Request(RecordOfAll({"--port", SimulatedBeltpack::kPort, "--for", kSeconds}))};
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

TEST(LiveTraceTest, ReplaysToTheSameResultsWhateverWentWrongOnTheLine) {
  for (const auto& session : recording.Wait()) {
    SCOPED_TRACE(session->plan.fault);
    EXPECT_EQ(session->result.exitCode, 0);
    EXPECT_EQ(session->result.errors, "");
    ExpectWholeOutputs(session->room);
  }
}

TEST(LiveTraceTest, EachFaultCostsItsReportsAndNoMore) {
  for (const auto& session : recording.Wait()) {
    SCOPED_TRACE(session->plan.fault);
    const QJsonObject results = ParsedResults(ReadTextFile(session->room.PathOf("results.json")));
    EXPECT_GE(results["reports"].toInt(), session->plan.fewestReports);
    EXPECT_LE(results["reports"].toInt(), session->plan.mostReports);
  }
}

TEST(LiveTraceTest, WhatComesThroughIsTheSitesTruth) {
  const SiteAntennas site = ExampleSiteAntennas(kSite);
  for (const auto& session : recording.Wait()) {
    if (session->plan.changesReadings) {
      continue;
    }
    SCOPED_TRACE(session->plan.fault);
    ExpectTrueReadings(ParsedResults(ReadTextFile(session->room.PathOf("results.json"))), site);
  }
}

}  // namespace
}  // namespace kelvara::test
