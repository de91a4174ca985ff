#include "app/Notices.h"

#include <gtest/gtest.h>

#include <limits>

#include "app/NoticesRig.h"
#include "base/Fault.h"

namespace kelvara::test {
namespace {

constexpr const char* kCleared = "cleared: Results cleared: 1 report, 2 antennas. [Undo]";

struct NoticesTest : ::testing::Test, NoticesRig {};

TEST_F(NoticesTest, NothingIsSaidWhileAllIsWell) {
  Connect();
  ASSERT_TRUE(Capture().StartLoggingToFile("log"));
  time.Pass(600 * 1000);
  Capture().PauseLoggingToFile();
  Capture().ResumeLoggingToFile();
  Capture().StopLoggingToFile();
  EXPECT_EQ(Shown(), "");
  EXPECT_TRUE(readOut.empty());
}

TEST_F(NoticesTest, APortThatIsOpenButNotPolledIsToldAndPolledOnRequest) {
  port.SetPortNumber(3);
  port.SetOpen(true);
  notices.NotePortOpened();
  EXPECT_EQ(Shown(),
            "not-polled: COM3 is open, but the beltpack is not polled yet. [Start polling]");
  notices.Act();
  EXPECT_EQ(Shown(), "");
  time.Pass(30 * 1000);
  EXPECT_EQ(live.Link().StatusText(), "Beltpack Connected...");
  EXPECT_GT(live.Results().Model().ReportCount(), 0);
}

TEST_F(NoticesTest, APortThatStaysClosedOrIsPolledIsNotTold) {
  notices.NotePortOpened();
  EXPECT_EQ(Shown(), "");
  Start();
  notices.NotePortOpened();
  EXPECT_EQ(Shown(), "");
}

TEST_F(NoticesTest, PollingByAnotherCommandEndsTheNotice) {
  port.SetOpen(true);
  notices.NotePortOpened();
  live.Link().mnuForceSearch_Click();
  EXPECT_EQ(Shown(), "");
}

TEST_F(NoticesTest, ALogThatCannotBeWrittenIsToldAndCanBeStopped) {
  Connect();
  ASSERT_TRUE(Capture().StartLoggingToFile("log"));
  files.writesLeft = 3;
  const std::int32_t before = live.Results().Model().ReportCount();
  time.Pass(60 * 1000);
  const std::string shown =
      "log-failed: Reports are being dropped: log cannot be written (cannot write log). [Stop "
      "logging]";
  EXPECT_EQ(Shown(), shown);
  EXPECT_EQ(readOut, std::vector<std::string>{shown});
  const std::string log = files.files["log"];
  notices.Act();
  EXPECT_EQ(Shown(), "");
  EXPECT_FALSE(Capture().IsLoggingActive());
  EXPECT_EQ(files.openFiles, 0);
  EXPECT_EQ(files.files["log"], log) << "no entry";
  EXPECT_EQ(Capture().StatusText(), "");
  EXPECT_EQ(Capture().State(), capture::CaptureState::Idle);
  time.Pass(60 * 1000);
  EXPECT_GT(live.Results().Model().ReportCount(), before + 10);
}

TEST_F(NoticesTest, ALogThatCanBeWrittenAgainIsNoLongerTold) {
  Connect();
  ASSERT_TRUE(Capture().StartLoggingToFile("log"));
  files.writesLeft = 0;
  EXPECT_THROW(Capture().PrintLogEntry("lost"), base::Fault);
  EXPECT_NE(Shown(), "");
  files.writesLeft.reset();
  Capture().PrintLogEntry("kept");
  EXPECT_EQ(Shown(), "");
}

TEST_F(NoticesTest, ACaptureThatCouldNotStartIsToldWithItsReasonOnceReportsAreDropped) {
  files.unopenable["gone"] = true;
  EXPECT_FALSE(Capture().StartLoggingToFile("gone"));
  EXPECT_EQ(Shown(), "") << "a message box has told it";
  live.ProcessRfpsReport(OneNeighbourReport(1, 2, -11));
  EXPECT_EQ(Shown(),
            "log-failed: Reports are being dropped: gone cannot be written (cannot open gone). "
            "[Stop logging]");
  notices.Act();
  EXPECT_EQ(Shown(), "");
  live.ProcessRfpsReport(OneNeighbourReport(1, 2, -11));
  EXPECT_EQ(live.Results().Model().ReportCount(), 1);
}

TEST_F(NoticesTest, ACaptureThatTheLinkStoppedIsToldAndContinuedOnRequest) {
  Start();
  ASSERT_TRUE(Capture().StartLoggingToFile("log"));
  live.StartLink();
  live.StartLink();
  EXPECT_EQ(Shown(),
            "log-stopped: Nothing has been logged to log since the link was started again. "
            "[Continue logging]");
  notices.Act();
  EXPECT_EQ(Shown(), "");
  EXPECT_EQ(Capture().StatusText(), "Logging...");
  const std::string& log = files.files["log"];
  EXPECT_TRUE(log.ends_with(", Log To File Resumed\r\n")) << log;
  time.Pass(30 * 1000);
  EXPECT_NE(log.find("->"), std::string::npos);
}

TEST_F(NoticesTest, ACaptureThatTheUserPausedOrStoppedIsNotTold) {
  Start();
  ASSERT_TRUE(Capture().StartLoggingToFile("log"));
  Capture().PauseLoggingToFile();
  live.StartLink();
  EXPECT_EQ(Shown(), "");
  Capture().ResumeLoggingToFile();
  live.StartLink();
  EXPECT_NE(Shown(), "");
  Capture().PauseLoggingToFile();
  EXPECT_EQ(Shown(), "");
  Capture().StopLoggingToFile();
  live.StartLink();
  EXPECT_EQ(Shown(), "");
}

TEST_F(NoticesTest, SilenceIsCountedAtEachTickAndReadOutOnce) {
  Connect();
  Silence();
  std::vector<std::string> texts;
  for (int second = 0; second < 43; ++second) {
    time.Pass(1000);
    if (!Shown().empty() && (texts.empty() || texts.back() != Shown())) {
      texts.push_back(Shown());
    }
  }
  // One a tick, also while the link searches.
  ASSERT_GE(texts.size(), 10U);
  EXPECT_EQ(readOut, std::vector<std::string>{texts.front()});
  int seconds = 0;
  ASSERT_EQ(std::sscanf(texts.front().c_str(),
                        "silent: Nothing heard from the beltpack for %d s. []", &seconds),
            1);
  EXPECT_GE(seconds, 10);
  EXPECT_LE(seconds, 12);
  for (const std::string& text : texts) {
    EXPECT_EQ(text,
              "silent: Nothing heard from the beltpack for " + std::to_string(seconds) + " s. []");
    seconds += 3;
  }
}

TEST_F(NoticesTest, SilenceEndsAtTheFirstLetter) {
  Connect();
  Silence();
  time.Pass(20 * 1000);
  ASSERT_NE(Shown(), "");
  beltpack.SetFault({});
  int letters = 0;
  while (!Shown().empty() && letters < 5000) {
    time.Pass(1);
    ++letters;
  }
  EXPECT_EQ(Shown(), "");
  EXPECT_GT(live.Link().iRfpsLinesLeft(), 25) << "in the first lines of the report";
  Silence();
  time.Pass(20 * 1000);
  EXPECT_EQ(readOut.size(), 2U) << "a new silence is told again";
}

TEST_F(NoticesTest, SilenceIsNoLongerToldOnceTheBeltpackIsTakenForLost) {
  boxes.answer = platform::MessageAnswer::No;
  std::string atTheQuestion;
  boxes.whileOpen = [&] { atTheQuestion = Shown(); };
  Connect();
  Silence();
  time.Pass(60 * 1000);
  EXPECT_EQ(boxes.boxes.size(), 1U);
  EXPECT_EQ(atTheQuestion.substr(0, 7), "silent:");
  EXPECT_EQ(Shown(), "");
}

TEST_F(NoticesTest, SilenceIsNotToldWhileTheBeltpackIsSearchedOrHasSaidGoodbye) {
  Silence();
  Start();
  time.Pass(60 * 1000);
  EXPECT_EQ(Shown(), "");
  beltpack.SetFault({});
  live.Link().mnuForceSearch_Click();
  time.Pass(30 * 1000);
  beltpack.SetFault({sim::LineFault::Disconnect});
  time.Pass(9 * 1000);
  ASSERT_EQ(live.Link().StatusText(), "Beltpack Disconnected...");
  Silence();
  time.Pass(30 * 1000);
  EXPECT_EQ(Shown(), "");
}

TEST_F(NoticesTest, EveryCommandThatClearsResultsCanBeUndone) {
  boxes.answer = platform::MessageAnswer::Yes;
  const std::vector<std::function<void()>> commands = {
      [this] { live.mnuClearGrid_Click(); }, [this] { live.Link().mnuForceSearch_Click(); },
      [this] { live.StartLink(); },
      [this] {
        Silence();
        time.Pass(60 * 1000);
        beltpack.SetFault({});
      }};
  Connect();
  for (const auto& clear : commands) {
    time.Pass(30 * 1000);
    clear();
    const sync::SyncModel* const cleared = live.Results().ClearedResults();
    ASSERT_NE(cleared, nullptr);
    const std::int32_t reports = cleared->ReportCount();
    EXPECT_EQ(Shown(), "cleared: Results cleared: " + std::to_string(reports) + " reports, " +
                           std::to_string(cleared->AaCount()) + " antennas. [Undo]");
    notices.Act();
    EXPECT_EQ(Shown(), "");
    EXPECT_EQ(live.Results().Model().ReportCount(), reports);
  }
}

TEST_F(NoticesTest, ClearedResultsWithoutAReportAreNotTold) {
  Start();
  live.ClearSyncResults();
  EXPECT_EQ(Shown(), "");
  ClearOneReport();
  EXPECT_EQ(Shown(), kCleared);
  live.ClearSyncResults();
  EXPECT_EQ(Shown(), kCleared) << "nothing else was cleared since";
}

TEST_F(NoticesTest, AnUndoThatDoesNotFitSaysWhyAndChangesNothing) {
  live.ProcessRfpsReport(CrowdedReport(99, 100, 9));
  live.ClearSyncResults();
  for (int first = 0; first < 45; first += 9) {
    live.ProcessRfpsReport(CrowdedReport(98, first, 9));
  }
  notices.Close();
  notices.UndoClear();
  EXPECT_EQ(Shown(),
            "cleared: Results cleared: 1 report, 10 antennas. Undo failed: together there would be "
            "more than 51 antennas. [Undo]");
  EXPECT_EQ(readOut.size(), 2U);
  EXPECT_EQ(live.Results().Model().AaCount(), 46);
  ClearOneReport();
  EXPECT_EQ(Shown(), "cleared: Results cleared: 6 reports, 46 antennas. [Undo]");
}

TEST_F(NoticesTest, AnUndoThatOverflowsSaysWhy) {
  live.Results().Model().SetReportCount(std::numeric_limits<std::int32_t>::max());
  live.ClearSyncResults();
  live.ProcessRfpsReport(OneNeighbourReport(1, 2, -11));
  notices.Act();
  EXPECT_EQ(Shown(),
            "cleared: Results cleared: 2147483647 reports, 0 antennas. Undo failed: together the "
            "readings would be too many to be counted. [Undo]");
  EXPECT_EQ(live.Results().Model().ReportCount(), 1);
}

}  // namespace
}  // namespace kelvara::test
