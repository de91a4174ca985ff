#include <gtest/gtest.h>

#include "app/NoticesRig.h"
#include "base/Fault.h"

namespace kelvara::test {
namespace {

constexpr const char* kCleared = "cleared: Results cleared: 1 report, 2 antennas. [Undo]";
constexpr const char* kDemo = "demo: Demo: the readings come from the built-in beltpack. []";

struct NoticesOrderTest : ::testing::Test, NoticesRig {};

TEST_F(NoticesOrderTest, ASessionThatWasCutOffIsOfferedAndContinued) {
  clock.wall = 20000.9;
  OfferSession();
  EXPECT_EQ(Shown(),
            "unfinished-session: The last session was cut off at 11:28 (1 report, 2 antennas). "
            "[Continue it]");
  live.StartJournal(folder);
  notices.Act();
  EXPECT_EQ(Shown(), "");
  EXPECT_EQ(live.Results().Model().ReportCount(), 1);
  EXPECT_EQ(grid.Rows(), 3);
  EXPECT_EQ(folder.locked, std::set<std::string>{kJournal}) << "what comes is added to it";
}

TEST_F(NoticesOrderTest, ASessionOfAnotherDayIsOfferedWithItsDate) {
  clock.wall = 20001.0;
  OfferSession();
  EXPECT_EQ(Shown(),
            "unfinished-session: The last session was cut off on day20000 at 11:28 (1 report, 2 "
            "antennas). [Continue it]");
}

TEST_F(NoticesOrderTest, ASessionThatDoesNotFitCanBeContinuedAfterAClear) {
  clock.wall = 20000.9;
  OfferSession(CrowdedReport(99, 100, 9));
  for (int first = 0; first < 45; first += 9) {
    live.ProcessRfpsReport(CrowdedReport(98, first, 9));
  }
  notices.Act();
  EXPECT_EQ(Shown(),
            "unfinished-session: The last session was cut off at 11:28 (1 report, 10 antennas). "
            "Continuing it failed: together there would be more than 51 antennas. [Continue it]");
  live.ClearSyncResults();
  notices.Act();
  EXPECT_EQ(Shown(), "");
  EXPECT_EQ(live.Results().Model().ReportCount(), 1);
}

TEST_F(NoticesOrderTest, AnOfferThatIsClosedLeavesTheSessionToOthers) {
  OfferSession();
  EXPECT_EQ(folder.locked.size(), 1U);
  notices.Close();
  EXPECT_EQ(Shown(), "");
  EXPECT_TRUE(folder.locked.empty());
  EXPECT_EQ(live.Results().Model().ReportCount(), 0);
}

TEST_F(NoticesOrderTest, TheMostUrgentIsShownAndTheOthersFollow) {
  notices.NoteDemo();
  EXPECT_EQ(Shown(), kDemo);
  ClearOneReport();
  EXPECT_EQ(Shown(), kCleared);
  OfferSession();
  EXPECT_EQ(Shown().substr(0, 11), "unfinished-");
  Connect();
  Silence();
  time.Pass(20 * 1000);
  EXPECT_EQ(Shown().substr(0, 7), "silent:");
  ASSERT_TRUE(Capture().StartLoggingToFile("log"));
  Capture().ClearLoggingActive();
  EXPECT_EQ(Shown().substr(0, 12), "log-stopped:");
  files.writesLeft = 0;
  EXPECT_THROW(notices.Act(), base::Fault);
  EXPECT_EQ(Shown().substr(0, 11), "log-failed:");
  rfpsTimer.SwitchOff();
  notices.NotePortOpened();
  EXPECT_EQ(Shown().substr(0, 11), "not-polled:");
  const std::size_t told = readOut.size();
  EXPECT_EQ(told, 7U);
  for (const char* const next : {"log-failed", "silent", "unfinished-session", "cleared", "demo"}) {
    notices.Close();
    EXPECT_EQ(Shown().substr(0, Shown().find(':')), next);
  }
  EXPECT_EQ(readOut.size(), told) << "what comes back is not read out again";
  notices.Close();
  EXPECT_EQ(Shown(), "");
  notices.Close();
  EXPECT_EQ(Shown(), "");
}

TEST_F(NoticesOrderTest, WhatWasClosedComesBackOnlyWithANewOccurrence) {
  boxes.answer = platform::MessageAnswer::No;
  Connect();
  Silence();
  time.Pass(20 * 1000);
  notices.Close();
  time.Pass(9 * 1000);
  EXPECT_EQ(Shown(), "") << "the same silence";
  beltpack.SetFault({});
  time.Pass(9 * 1000);
  Silence();
  time.Pass(20 * 1000);
  EXPECT_EQ(Shown().substr(0, 7), "silent:");
  beltpack.SetFault({});
  time.Pass(9 * 1000);
  live.ClearSyncResults();
  notices.Close();
  time.Pass(60 * 1000);
  EXPECT_EQ(Shown(), "") << "the same clear";
  live.ClearSyncResults();
  EXPECT_EQ(Shown().substr(0, 8), "cleared:");
}

TEST_F(NoticesOrderTest, ALogFailureThatWasClosedComesBackAfterANewStart) {
  files.unopenable["gone"] = true;
  EXPECT_FALSE(Capture().StartLoggingToFile("gone"));
  EXPECT_THROW(Capture().PrintLogEntry("lost"), base::Fault);
  notices.Close();
  EXPECT_THROW(Capture().PrintLogEntry("lost"), base::Fault);
  EXPECT_EQ(Shown(), "");
  EXPECT_FALSE(Capture().StartLoggingToFile("gone"));
  EXPECT_THROW(Capture().PrintLogEntry("lost"), base::Fault);
  EXPECT_EQ(Shown().substr(0, 11), "log-failed:");
}

}  // namespace
}  // namespace kelvara::test
