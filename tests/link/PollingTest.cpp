#include <gtest/gtest.h>

#include "support/LinkRig.h"

namespace kelvara::test {
namespace {

TEST(Polling, SendsOneCommandEveryThreeSecondsInCyclesOfNine) {
  LinkRig rig;
  rig.Start();
  std::string sent;
  for (int tick = 0; tick < 18; ++tick) {
    rig.time.Pass(2999);
    EXPECT_EQ(rig.port.TakeWritten(), "") << "before tick " << tick;
    rig.time.Pass(1);
    sent += rig.port.TakeWritten();
  }
  const std::string cycle = "rfps\rrfps\rrfps\rrfps\rcho\rrfps\rrfps\rrfps\rbho\r";
  EXPECT_EQ(sent, cycle + cycle);
}

TEST(Polling, TheStepCounterWrapsFromEightToZero) {
  LinkRig rig;
  rig.Start();
  for (const int step : {1, 2, 3, 4, 5, 6, 7, 8, 0, 1}) {
    rig.time.Pass(3000);
    EXPECT_EQ(rig.link.iPollStep(), step);
  }
}

TEST(Polling, WritesACommandOneCharacterAtATimeThenACarriageReturn) {
  LinkRig rig;
  rig.link.SendChoCommand();
  EXPECT_EQ(rig.port.writes, (std::vector<std::string>{"c", "h", "o", "\r"}));
}

TEST(Polling, ReleasesTheBreakAndDiscardsInputBeforeACommand) {
  LinkRig rig;
  rig.port.SetBreak(true);
  rig.port.waiting = "left over";
  rig.link.SendRfpsCommand();
  EXPECT_FALSE(rig.port.IsBreak());
  EXPECT_FALSE(rig.port.breakWhileWriting);
  EXPECT_EQ(rig.port.InputCount(), 0U);
}

TEST(Polling, ShowsTheCommandOnlyWhenAsked) {
  LinkRig rig;
  rig.link.SetStatusText("before");
  rig.link.SerialSendString("xyz", false);
  EXPECT_EQ(rig.Status(), "before");
  rig.link.SerialSendString("xyz", true);
  EXPECT_EQ(rig.Status(), "Tx string: xyz");
}

TEST(Polling, EndsASendSilentlyOnAnError) {
  LinkRig rig;
  rig.Start();
  rig.port.writable = false;
  rig.time.Pass(3000);
  EXPECT_EQ(rig.port.TakeWritten(), "");
  EXPECT_EQ(rig.beeper.count, 0);
  EXPECT_TRUE(rig.boxes.boxes.empty());
  EXPECT_EQ(rig.actions.redraws, 1) << "the tick goes on";
  EXPECT_EQ(rig.link.iPollStep(), 1);
}

TEST(Polling, TicksRedrawTheGridAndRetryALostDevice) {
  LinkRig rig;
  rig.Start();
  rig.time.Pass(9000);
  EXPECT_EQ(rig.actions.redraws, 3);
  EXPECT_EQ(rig.port.restores, 3);
}

TEST(Polling, OnlyRfpsExpectsAReport) {
  LinkRig rig;
  rig.link.SendChoCommand();
  EXPECT_EQ(rig.link.iRfpsLinesLeft(), 0);
  rig.link.SendBhoCommand();
  EXPECT_EQ(rig.link.iRfpsLinesLeft(), 0);
  rig.link.SendRfpsCommand();
  EXPECT_EQ(rig.link.iRfpsLinesLeft(), 29);
}

TEST(Polling, TheDebugWindowSeesCommandsOnlyWhileItsOptionIsOn) {
  LinkRig rig;
  rig.link.SendRfpsCommand();
  EXPECT_TRUE(rig.debugView.commands.empty());
  rig.link.SetDebugView(&rig.debugView);
  rig.link.SendRfpsCommand();
  rig.link.SendBhoCommand();
  EXPECT_EQ(rig.debugView.commands, (std::vector<std::string>{"rfps", "bho"}));
}

TEST(BreakSignal, IsSetEvery200MillisecondsWhileSearchingAndReleasedForEachCommand) {
  LinkRig rig;
  rig.Start();
  rig.time.Pass(199);
  EXPECT_FALSE(rig.port.IsBreak());
  rig.time.Pass(1);
  EXPECT_TRUE(rig.port.IsBreak());
  rig.time.Pass(2800);
  EXPECT_FALSE(rig.port.IsBreak()) << "a command has just been sent";
  EXPECT_FALSE(rig.port.breakWhileWriting);
  EXPECT_TRUE(rig.timerComPort.IsOn());
  // Switching the timer off and on around the send restarts its 200 ms.
  rig.time.Pass(199);
  EXPECT_FALSE(rig.port.IsBreak());
  rig.time.Pass(1);
  EXPECT_TRUE(rig.port.IsBreak());
}

TEST(BreakSignal, IsNotSetOnceTheBeltpackIsHeard) {
  LinkRig rig;
  rig.Connect();
  rig.time.Pass(10000);
  EXPECT_FALSE(rig.port.IsBreak());
}

TEST(BreakSignal, AnErrorIsIgnored) {
  LinkRig rig;
  rig.port.breakable = false;
  rig.Start();
  rig.time.Pass(2000);
  EXPECT_TRUE(rig.timerComPort.IsOn());
  EXPECT_EQ(rig.beeper.count, 0);
}

TEST(SwitchingOnATimer, DoesNotRestartARunningOne) {
  LinkRig rig;
  rig.Start();
  rig.time.Pass(2000);
  rig.link.mnuForceSearch_Click();
  rig.time.Pass(1000);
  EXPECT_EQ(rig.port.TakeWritten(), "rfps\r");
}

}  // namespace
}  // namespace kelvara::test
