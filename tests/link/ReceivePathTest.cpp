#include <gtest/gtest.h>

#include "support/LinkRig.h"
#include "support/RecordedReports.h"

namespace kelvara::test {
namespace {

TEST(SignsOfLife, AreTheCharactersStrictlyBetweenCapitalAAndSmallZ) {
  for (int code = 0; code < 256; ++code) {
    LinkRig rig;
    rig.Start();
    const char character = static_cast<char>(code);
    rig.port.Receive(std::string_view(&character, 1));
    rig.time.Pass(link::kSilenceMilliseconds);
    const bool alive = code > 'A' && code < 'z';
    EXPECT_EQ(rig.Status() == "Beltpack Connected...", alive) << "character " << code;
    EXPECT_EQ(rig.timerComPort.IsOn(), !alive) << "character " << code;
  }
}

TEST(SignsOfLife, EnableTheCommandsThatNeedABeltpack) {
  LinkRig rig;
  rig.Start();
  rig.link.ResultsCleared();
  int changes = 0;
  rig.link.SetStateChanged([&] { ++changes; });
  rig.port.Receive("12 \r\n");
  EXPECT_FALSE(rig.link.CanClear());
  EXPECT_EQ(changes, 0);
  rig.port.Receive("y");
  EXPECT_TRUE(rig.link.CanClear());
  EXPECT_EQ(changes, 2) << "the text and the commands";
}

TEST(Report, IsProcessedOnceWithExactlyTheTextSinceRfps) {
  LinkRig rig;
  rig.Start();
  rig.port.Receive("noise before\r\n");
  rig.time.Pass(3000);
  const std::string report = RecordedReport({"100ec5A301 Sync"});
  rig.port.Receive(report);
  rig.port.Receive("noise after\r\n");
  EXPECT_EQ(rig.actions.reports, std::vector<std::string>{report});
  EXPECT_EQ(rig.link.iRfpsLinesLeft(), 0);
}

TEST(Report, IsTheSameInPiecesOfAnySize) {
  const std::string report = RecordedReport({"24", "100ec5A301 Sync", "2", "242", " 24"});
  for (const std::size_t size : {std::size_t{1}, std::size_t{7}, report.size()}) {
    LinkRig rig;
    rig.Start();
    rig.link.SendRfpsCommand();
    for (std::size_t begin = 0; begin < report.size(); begin += size) {
      rig.port.Receive(std::string_view(report).substr(begin, size));
    }
    EXPECT_EQ(rig.actions.reports, std::vector<std::string>{report}) << "pieces of " << size;
  }
}

TEST(Report, InterruptedByTheNextRfpsIsNeverParsedWhereverItIsCut) {
  const std::string report = RecordedReport({"100ec5A301 Sync"});
  for (std::size_t cut = 0; cut < report.size(); ++cut) {
    LinkRig rig;
    rig.Start();
    rig.link.SendRfpsCommand();
    rig.port.Receive(report.substr(0, cut));
    rig.link.SendRfpsCommand();
    EXPECT_TRUE(rig.actions.reports.empty()) << "cut at " << cut;
    rig.port.Receive(report);
    EXPECT_EQ(rig.actions.reports, std::vector<std::string>{report}) << "cut at " << cut;
  }
}

TEST(Report, ContinuesThroughChoAndBho) {
  LinkRig rig;
  rig.Start();
  rig.link.SendRfpsCommand();
  for (int line = 0; line < 28; ++line) {
    rig.port.Receive("line\r\n");
  }
  rig.link.SendChoCommand();
  rig.link.SendBhoCommand();
  EXPECT_TRUE(rig.actions.reports.empty());
  rig.port.Receive("an answer\r\n");
  ASSERT_EQ(rig.actions.reports.size(), 1U);
  EXPECT_EQ(rig.actions.reports[0].substr(28 * 6), "an answer\r\n");
}

TEST(Report, InTheDebugWindowGrowsLineByLineAndBeepsAtItsEnd) {
  LinkRig rig;
  rig.link.SetDebugView(&rig.debugView);
  rig.Start();
  rig.link.SendRfpsCommand();
  rig.port.Receive("first\r\nsecond");
  EXPECT_EQ(rig.debugView.reportTexts, std::vector<std::string>{"first\r\n"});
  rig.port.Receive("\r\n");
  EXPECT_EQ(rig.debugView.reportTexts.back(), "first\r\nsecond\r\n");
  EXPECT_EQ(rig.beeper.count, 0);
  for (int line = 2; line < 29; ++line) {
    rig.port.Receive("\n");
  }
  EXPECT_EQ(rig.debugView.reportTexts.size(), 29U);
  EXPECT_EQ(rig.beeper.count, 1);
  EXPECT_EQ(rig.actions.reports.size(), 1U);
}

TEST(Report, WithoutTheDebugWindowIsSilent) {
  LinkRig rig;
  rig.Start();
  rig.link.SendRfpsCommand();
  rig.port.Receive(RecordedReport({}));
  EXPECT_TRUE(rig.debugView.reportTexts.empty());
  EXPECT_EQ(rig.beeper.count, 0);
}

TEST(Goodbye, IsALineThatIsExactly24) {
  for (const std::string text : {"24\r\n", "24\n", "24\r", "\r\n24\r\n", "x\n24\n"}) {
    LinkRig rig;
    rig.Connect();
    rig.port.Receive("\n");
    rig.port.Receive(text);
    EXPECT_EQ(rig.Status(), "Beltpack Disconnected...") << text;
    EXPECT_TRUE(rig.timerComPort.IsOn()) << text;
  }
}

TEST(Goodbye, Is24FollowedBySilence) {
  LinkRig rig;
  rig.Connect();
  rig.port.Receive("\n24");
  EXPECT_EQ(rig.Status(), "Beltpack Connected...");
  rig.time.Pass(99);
  EXPECT_EQ(rig.Status(), "Beltpack Connected...");
  rig.time.Pass(1);
  EXPECT_EQ(rig.Status(), "Beltpack Disconnected...");
}

TEST(Goodbye, IsNotA24InsideAReading) {
  for (const std::string text : {"124\r\n", "240\r\n", " 24\r\n", "24 \r\n", "-24\r\n",
                                 "2\r\n4\r\n", "2 4\n", "224\n", "phase = 24\r\n"}) {
    LinkRig rig;
    rig.Connect();
    rig.port.Receive("\n");
    rig.port.Receive(text);
    rig.time.Pass(1000);
    EXPECT_EQ(rig.Status(), "Beltpack Connected...") << text;
    EXPECT_FALSE(rig.timerComPort.IsOn()) << text;
  }
}

TEST(Goodbye, HeldTextIsDiscardedWithTheRestOfTheInput) {
  LinkRig rig;
  rig.Connect();
  rig.port.Receive("\n24");
  rig.link.SendRfpsCommand();
  rig.time.Pass(1000);
  EXPECT_EQ(rig.Status(), "Beltpack Connected...");
  EXPECT_EQ(rig.link.iRfpsLinesLeft(), 29);
}

TEST(ReceiveError, ResetsThePortAndLosesTheChunk) {
  LinkRig rig;
  rig.Connect();
  rig.port.steps.clear();
  rig.port.readFails = true;
  rig.port.Receive("lost");
  EXPECT_EQ(rig.port.steps, (std::vector<std::string>{"close", "discard", "open"}));
  EXPECT_EQ(rig.port.InputCount(), 0U);
  rig.link.SendRfpsCommand();
  rig.port.Receive(RecordedReport({}));
  EXPECT_EQ(rig.actions.reports.size(), 1U);
}

TEST(ReceiveError, ThrowsNothingWhenThePortCannotBeReopened) {
  LinkRig rig;
  rig.Connect();
  rig.port.readFails = true;
  rig.port.openable = false;
  EXPECT_NO_THROW(rig.port.Receive("lost"));
  EXPECT_FALSE(rig.port.IsOpen());
  EXPECT_EQ(rig.beeper.count, 0);
}

TEST(SerialGetResponseBytes, ReadsTheRequestedNumberOfBytes) {
  LinkRig rig;
  rig.port.waiting =
      "\xff"
      "bcd";
  std::array<std::uint8_t, 3> buffer{};
  EXPECT_TRUE(rig.link.SerialGetResponseBytes(1000, 3, buffer));
  EXPECT_EQ(buffer, (std::array<std::uint8_t, 3>{0xff, 'b', 'c'}));
  EXPECT_EQ(rig.port.waiting, "d");
}

TEST(SerialGetResponseBytes, GivesUpWhenNothingArrivesInTime) {
  LinkRig rig;
  rig.port.waiting = "a";
  std::array<std::uint8_t, 2> buffer{};
  rig.events.onYield = [&rig] { rig.time.Pass(10); };
  EXPECT_FALSE(rig.link.SerialGetResponseBytes(500, 2, buffer));
  EXPECT_EQ(buffer[0], 'a');
  EXPECT_GE(rig.time.Milliseconds(), 500);
  EXPECT_LE(rig.time.Milliseconds(), 530);
}

TEST(SerialGetResponseBytes, GivesEachByteTheWholeTimeout) {
  LinkRig rig;
  std::array<std::uint8_t, 3> buffer{};
  rig.events.onYield = [&rig] {
    rig.time.Pass(100);
    if (rig.time.Milliseconds() % 400 == 0) {
      rig.port.waiting += 'x';
    }
  };
  EXPECT_TRUE(rig.link.SerialGetResponseBytes(500, 3, buffer));
  EXPECT_EQ(rig.time.Milliseconds(), 1200);
}

TEST(SerialGetResponseBytes, EndsWithTheProgram) {
  LinkRig rig;
  rig.events.ending = true;
  std::array<std::uint8_t, 1> buffer{};
  EXPECT_FALSE(rig.link.SerialGetResponseBytes(60000, 1, buffer));
  EXPECT_EQ(rig.time.Milliseconds(), 0);
}

TEST(CmdChkRx, EndsOnlyWithTheProgram) {
  LinkRig rig;
  rig.events.onYield = [&rig] {
    rig.time.Pass(100);
    rig.port.waiting += "zz";
    rig.events.ending = rig.time.Milliseconds() >= 20000;
  };
  rig.link.CmdChkRx_Click();
  EXPECT_GE(rig.time.Milliseconds(), 20000);
  EXPECT_LE(rig.time.Milliseconds(), 20200);
}

}  // namespace
}  // namespace kelvara::test
