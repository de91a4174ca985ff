#include "sim/Beltpack.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "sim/BeltpackRig.h"
#include "sim/RfpsReportText.h"

namespace kelvara::sim {
namespace {

using test::CountLines;
using test::IsWholeReport;

class BeltpackTest : public ::testing::Test, public test::BeltpackRig {};

TEST_F(BeltpackTest, AnswersRfpsWithTheReportsOfItsWalk) {
  SiteWalk walk(DemoSite(), BeltpackManner().seed);
  for (int poll = 0; poll < 20; ++poll) {
    EXPECT_EQ(Ask("rfps"), RfpsReportText(walk.Next()));
  }
}

TEST_F(BeltpackTest, AnswersTheOtherCommandsWithALine) {
  EXPECT_EQ(Ask("cho"), "cho ok\r\n");
  EXPECT_EQ(Ask("bho"), "bho ok\r\n");
  EXPECT_EQ(Ask("RFPS"), "?\r\n");
  EXPECT_EQ(Ask("rfps "), "?\r\n");
  EXPECT_EQ(Ask(std::string(100000, 'x')), "?\r\n");
  EXPECT_TRUE(IsWholeReport(Ask("rfps")));
}

TEST_F(BeltpackTest, TakesACommandCharacterByCharacterAndSeveralAtOnce) {
  for (const char character : std::string("rfps")) {
    beltpack.Receive(std::string(1, character), nowMs);
    EXPECT_EQ(Wait(), "");
  }
  beltpack.Receive("\r", nowMs);
  EXPECT_TRUE(IsWholeReport(Wait()));
  beltpack.Receive("cho\rbho\r", nowMs);
  EXPECT_EQ(Wait(), "cho ok\r\nbho ok\r\n");
}

TEST_F(BeltpackTest, BreaksLineFeedsAndEmptyLinesChangeNothing) {
  beltpack.Receive(std::string_view("\0\0\r\n\r\nch\0o\n\0", 12), nowMs);
  EXPECT_EQ(Wait(), "");
  EXPECT_EQ(Ask(""), "cho ok\r\n");
}

TEST_F(BeltpackTest, SendsNothingUnasked) {
  EXPECT_EQ(beltpack.NextDue(), std::nullopt);
  EXPECT_EQ(beltpack.TakeOutput(nowMs + 1000000), "");
}

TEST_F(BeltpackTest, TheAnswerComesAfterAShortDelayAtTheSpeedOfTheLine) {
  beltpack.Receive("rfps\r", nowMs);
  // Each byte takes 520 microseconds.
  EXPECT_EQ(beltpack.NextDue(), nowMs + 41);
  EXPECT_EQ(beltpack.TakeOutput(nowMs + 40), "");
  EXPECT_EQ(beltpack.TakeOutput(nowMs + 41), "r");
  EXPECT_EQ(beltpack.NextDue(), nowMs + 42);
  EXPECT_EQ(beltpack.TakeOutput(nowMs + 42), "fp");
  EXPECT_EQ(beltpack.TakeOutput(nowMs + 140).size(), 189U);
}

TEST_F(BeltpackTest, SpeedAndDelayCanBeChosen) {
  BeltpackManner manner;
  manner.bytesPerSecond = 1000;
  manner.answerDelayMs = 500;
  BeltpackRig slow(manner);
  slow.beltpack.Receive("cho\r", slow.nowMs);
  EXPECT_EQ(slow.beltpack.TakeOutput(slow.nowMs + 500), "");
  EXPECT_EQ(slow.beltpack.TakeOutput(slow.nowMs + 503), "cho");
  EXPECT_EQ(slow.beltpack.TakeOutput(slow.nowMs + 508), " ok\r\n");
}

TEST_F(BeltpackTest, TakingOutputOftenOrOnceGivesTheSameBytes) {
  BeltpackRig other;
  for (int poll = 0; poll < 10; ++poll) {
    std::size_t mostAtOnce = 0;
    EXPECT_EQ(AskPatiently("rfps", mostAtOnce), other.Ask("rfps"));
    EXPECT_LE(mostAtOnce, 2U);
  }
}

TEST_F(BeltpackTest, IgnoresCommandsWhileFourAnswersWait) {
  std::string commands;
  for (int command = 0; command < 1000; ++command) {
    commands += "rfps\r";
  }
  beltpack.Receive(commands, nowMs);
  EXPECT_EQ(CountLines(beltpack.TakeOutput(nowMs + 100000)), 4U * 29U);
  nowMs += 100000;
  EXPECT_TRUE(IsWholeReport(Ask("rfps")));
}

TEST_F(BeltpackTest, ReportsEveryCommandWithItsTime) {
  std::vector<std::pair<std::string, std::int64_t>> heard;
  beltpack.SetCommandNotification(
      [&](std::string_view command, std::int64_t atMs) { heard.emplace_back(command, atMs); });
  SetFault("silent");
  beltpack.Receive("rf", 5);
  beltpack.Receive("ps\r\rwhat?\r", 12);
  beltpack.Receive("cho\r", 3012);
  EXPECT_EQ(heard, (std::vector<std::pair<std::string, std::int64_t>>{
                       {"rfps", 12}, {"what?", 12}, {"cho", 3012}}));
}

TEST_F(BeltpackTest, IsAwayWhileUnpluggedAndLosesWhatWasOnTheLine) {
  beltpack.Receive("rfps\rch", nowMs);
  beltpack.Unplug();
  EXPECT_FALSE(beltpack.IsPresent(nowMs + 1000000));
  EXPECT_EQ(beltpack.NextDue(), std::nullopt);
  EXPECT_EQ(Wait(), "");
  EXPECT_EQ(Ask("cho"), "");
  beltpack.Plug();
  EXPECT_TRUE(beltpack.IsPresent(nowMs));
  EXPECT_EQ(Wait(), "");
  EXPECT_EQ(Ask("bho"), "bho ok\r\n");
}

}  // namespace
}  // namespace kelvara::sim
