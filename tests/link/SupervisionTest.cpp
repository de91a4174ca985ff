#include <gtest/gtest.h>

#include "base/Fault.h"
#include "support/LinkRig.h"

namespace kelvara::test {
namespace {

using platform::MessageAnswer;

TEST(Searching, BecomesConnectedAtASignOfLife) {
  LinkRig rig;
  rig.Start();
  EXPECT_TRUE(rig.timerComPort.IsOn());
  EXPECT_EQ(rig.Status(), "Attempting To Connect To Beltpack...");
  rig.port.Receive("B");
  EXPECT_FALSE(rig.timerComPort.IsOn());
  EXPECT_EQ(rig.link.bLinkLossPending(), 0);
  EXPECT_EQ(rig.Status(), "Beltpack Connected...");
}

TEST(Searching, ContinuesAtAGoodbye) {
  LinkRig rig;
  rig.Start();
  rig.port.Receive("24\r\n");
  EXPECT_TRUE(rig.timerComPort.IsOn());
  EXPECT_EQ(rig.link.bLinkLossPending(), 0);
  EXPECT_EQ(rig.Status(), "Beltpack Disconnected...");
}

TEST(Searching, NeverTimesOutAndNeverAsks) {
  LinkRig rig;
  rig.Start();
  rig.time.Pass(3600 * 1000);
  EXPECT_TRUE(rig.boxes.boxes.empty());
  EXPECT_TRUE(rig.log.entries.empty());
  EXPECT_EQ(rig.actions.redraws, 1200) << "and polls in every state";
}

TEST(Connected, LastsWhileSignsOfLifeComeWithin30Seconds) {
  LinkRig rig;
  rig.Connect();
  for (int i = 0; i < 20; ++i) {
    rig.time.Pass(29000);
    rig.port.Receive("y");
  }
  EXPECT_FALSE(rig.timerComPort.IsOn());
  EXPECT_TRUE(rig.log.entries.empty());
}

TEST(Connected, SearchesAfterAGoodbyeAndNeverAsks) {
  LinkRig rig;
  rig.Connect();
  rig.port.Receive("\n24\n");
  rig.time.Pass(600 * 1000);
  EXPECT_TRUE(rig.timerComPort.IsOn());
  EXPECT_EQ(rig.link.bLinkLossPending(), 0);
  EXPECT_TRUE(rig.boxes.boxes.empty());
}

TEST(Connected, BecomesALossSearchAtTheFirstTickAfter30SecondsOfSilence) {
  LinkRig rig;
  rig.Connect();
  rig.time.Pass(29000);
  EXPECT_TRUE(rig.log.entries.empty());
  rig.time.Pass(4000);
  EXPECT_EQ(rig.log.entries, std::vector<std::string>{"Break Condition Set"});
  EXPECT_TRUE(rig.timerComPort.IsOn());
  EXPECT_EQ(rig.link.bLinkLossPending(), 1);
  EXPECT_EQ(rig.Status(), "Beltpack Connected...") << "a loss search does not change the status";
}

TEST(Connected, ALogEntryThatFaultsBeepsOnceAndTheTickGoesOn) {
  LinkRig rig;
  rig.log.entriesLeft = 0;
  rig.LoseAfterSilence();
  EXPECT_EQ(rig.beeper.count, 1);
  EXPECT_EQ(rig.link.bLinkLossPending(), 1);
  EXPECT_EQ(rig.actions.redraws, 11);
}

TEST(LossSearch, BecomesConnectedAtASignOfLife) {
  LinkRig rig;
  rig.LoseAfterSilence();
  rig.port.Receive("B");
  EXPECT_FALSE(rig.timerComPort.IsOn());
  EXPECT_EQ(rig.link.bLinkLossPending(), 0);
  EXPECT_EQ(rig.Status(), "Beltpack Connected...");
  rig.time.Pass(20000);
  EXPECT_TRUE(rig.boxes.boxes.empty());
}

TEST(LossSearch, AsksAfter15MoreSecondsShowingTheTime45SecondsEarlier) {
  LinkRig rig;
  rig.LoseAfterSilence();
  rig.time.Pass(14000);
  EXPECT_TRUE(rig.boxes.boxes.empty());
  rig.boxes.answer = MessageAnswer::No;
  std::string lastHeard;
  rig.boxes.whileOpen = [&] {
    lastHeard = rig.dateFormat.General(rig.clock.wall - platform::Span(45.0));
  };
  rig.time.Pass(4000);
  ASSERT_EQ(rig.boxes.boxes.size(), 1U);
  const auto& box = rig.boxes.boxes[0];
  EXPECT_EQ(box.title, "Beltpack Comms Lost");
  EXPECT_EQ(box.icon, platform::MessageIcon::Question);
  EXPECT_EQ(box.buttons, platform::MessageButtons::YesNoDefaultNo);
  EXPECT_EQ(box.text, "Lost Communications with Beltpack at " + lastHeard +
                          "\r\n\r\nDo you wish to generate a report, then clear the results?");
}

TEST(LossSearch, AnsweredYesReportsThenClearsThenSearches) {
  LinkRig rig;
  rig.boxes.answer = MessageAnswer::Yes;
  rig.LoseAfterSilence();
  int clearsAtReport = -1;
  rig.actions.onReportCommand = [&] { clearsAtReport = rig.actions.clears; };
  rig.time.Pass(18000);
  EXPECT_EQ(rig.actions.reportCommands, 1);
  EXPECT_EQ(clearsAtReport, 0) << "the report comes before the clear";
  EXPECT_EQ(rig.actions.clears, 1);
  EXPECT_EQ(rig.link.bLinkLossPending(), 0);
  EXPECT_TRUE(rig.timerComPort.IsOn());
  EXPECT_EQ(rig.Status(), "Attempting To Connect To Beltpack...");
}

TEST(LossSearch, AnsweredNoKeepsTheResultsAndSearches) {
  LinkRig rig;
  rig.boxes.answer = MessageAnswer::No;
  rig.LoseAfterSilence();
  rig.time.Pass(18000);
  EXPECT_EQ(rig.actions.reportCommands, 0);
  EXPECT_EQ(rig.actions.clears, 0);
  EXPECT_EQ(rig.link.bLinkLossPending(), 0);
  EXPECT_TRUE(rig.timerComPort.IsOn());
  EXPECT_EQ(rig.Status(), "Attempting To Connect To Beltpack...");
}

TEST(LossSearch, AnsweredNoAsksAgainOnlyAfterTheBeltpackIsHeardAndLostAgain) {
  LinkRig rig;
  rig.boxes.answer = MessageAnswer::No;
  rig.LoseAfterSilence();
  rig.time.Pass(3600 * 1000);
  EXPECT_EQ(rig.boxes.boxes.size(), 1U);
  rig.port.Receive("B");
  rig.time.Pass(60 * 1000);
  EXPECT_EQ(rig.boxes.boxes.size(), 2U);
}

TEST(LossQuestion, LeavesThePollingRunningAndIsNeverAskedTwice) {
  LinkRig rig;
  rig.boxes.answer = MessageAnswer::No;
  rig.LoseAfterSilence();
  int redrawsMeanwhile = 0;
  std::string sentMeanwhile;
  rig.boxes.whileOpen = [&] {
    const int before = rig.actions.redraws;
    rig.port.TakeWritten();
    rig.time.Pass(60 * 1000);
    redrawsMeanwhile = rig.actions.redraws - before;
    sentMeanwhile = rig.port.TakeWritten();
  };
  rig.time.Pass(18000);
  EXPECT_EQ(rig.boxes.boxes.size(), 1U);
  EXPECT_EQ(redrawsMeanwhile, 20);
  EXPECT_NE(sentMeanwhile.find("rfps\r"), std::string::npos);
}

TEST(LossQuestion, IsNotAskedAgainWhileTheReportItLedToIsOpen) {
  LinkRig rig;
  rig.boxes.answer = MessageAnswer::Yes;
  rig.LoseAfterSilence();
  rig.actions.onReportCommand = [&] { rig.time.Pass(120 * 1000); };
  rig.time.Pass(18000);
  EXPECT_EQ(rig.boxes.boxes.size(), 1U);
  EXPECT_EQ(rig.actions.reportCommands, 1);
}

TEST(LossQuestion, IsFollowedByARedraw) {
  LinkRig rig;
  rig.boxes.answer = MessageAnswer::No;
  rig.LoseAfterSilence();
  int redrawsAtQuestion = 0;
  rig.boxes.whileOpen = [&] { redrawsAtQuestion = rig.actions.redraws; };
  while (rig.boxes.boxes.empty() && rig.time.Milliseconds() < 60000) {
    rig.time.Pass(100);
  }
  ASSERT_EQ(rig.boxes.boxes.size(), 1U);
  EXPECT_EQ(rig.actions.redraws, redrawsAtQuestion + 1);
}

TEST(LossQuestion, IsNotTriggeredBySettingTheClock) {
  LinkRig rig;
  rig.Connect();
  rig.time.wallAhead = 1.0;
  rig.time.Pass(10000);
  rig.time.wallAhead = -1.0;
  rig.time.Pass(10000);
  EXPECT_TRUE(rig.log.entries.empty());
  EXPECT_FALSE(rig.timerComPort.IsOn());
}

TEST(ForceSearch, SearchesFromAnyStateAndClears) {
  for (int state = 0; state < 3; ++state) {
    LinkRig rig;
    if (state == 0) {
      rig.Start();
    } else if (state == 1) {
      rig.Connect();
    } else {
      rig.LoseAfterSilence();
    }
    rig.rfpsTimer.SwitchOff();
    rig.link.mnuForceSearch_Click();
    EXPECT_TRUE(rig.timerComPort.IsOn());
    EXPECT_TRUE(rig.rfpsTimer.IsOn());
    EXPECT_EQ(rig.link.bLinkLossPending(), 0);
    EXPECT_EQ(rig.link.dtLastRx(), rig.clock.now);
    EXPECT_EQ(rig.actions.clears, 1);
    EXPECT_EQ(rig.Status(), "Attempting To Connect To Beltpack...");
  }
}

}  // namespace
}  // namespace kelvara::test
