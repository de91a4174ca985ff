#include <gtest/gtest.h>

#include <array>
#include <set>

#include "sim/Beltpack.h"
#include "sim/BeltpackRig.h"
#include "sim/LineDamage.h"

namespace kelvara::sim {
namespace {

using test::CountLines;
using test::IsWholeReport;

class BeltpackFaultsTest : public ::testing::Test, public test::BeltpackRig {
 protected:
  /// A beltpack that takes the same walk without faults.
  BeltpackRig sound;
};

TEST_F(BeltpackFaultsTest, NoneIsNoFault) {
  SetFault("none");
  EXPECT_EQ(Ask("rfps"), sound.Ask("rfps"));
}

TEST_F(BeltpackFaultsTest, SilentGivesNoAnswer) {
  SetFault("silent");
  EXPECT_EQ(Ask("rfps"), "");
  EXPECT_EQ(Ask("cho"), "");
  SetFault("none");
  EXPECT_TRUE(IsWholeReport(Ask("rfps")));
}

TEST_F(BeltpackFaultsTest, TwentyFourIsALineOfItsOwnAndThreeCommandsGoUnanswered) {
  SetFault("24:once");
  EXPECT_EQ(Ask("rfps"), "24\r\n");
  for (const char* command : {"rfps", "cho", "rfps"}) {
    EXPECT_EQ(Ask(command), "");
  }
  EXPECT_TRUE(IsWholeReport(Ask("rfps")));
}

TEST_F(BeltpackFaultsTest, TwentyFourAlwaysIsRepeatedAtTheNextCommandThatIsHeard) {
  SetFault("24");
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(Ask("rfps"), "24\r\n");
    EXPECT_EQ(Ask("rfps"), "");
    EXPECT_EQ(Ask("rfps"), "");
    EXPECT_EQ(Ask("rfps"), "");
  }
}

TEST_F(BeltpackFaultsTest, PartialBreaksOffSomewhere) {
  SetFault("partial");
  std::set<std::size_t> sizes;
  for (int poll = 0; poll < 200; ++poll) {
    const std::string whole = sound.Ask("rfps");
    const std::string partial = Ask("rfps");
    EXPECT_GE(partial.size(), 1U);
    EXPECT_LT(partial.size(), whole.size());
    EXPECT_EQ(partial, whole.substr(0, partial.size()));
    EXPECT_LT(CountLines(partial), 29U);
    sizes.insert(partial.size());
  }
  EXPECT_GT(sizes.size(), 100U);
}

TEST_F(BeltpackFaultsTest, LateAnswersAfterTheNextCommand) {
  SetFault("late");
  EXPECT_EQ(Ask("rfps"), "");
  EXPECT_TRUE(IsWholeReport(Ask("cho")));
  EXPECT_EQ(Ask("rfps"), "cho ok\r\n");
  SetFault("late:2");
  EXPECT_EQ(Ask("cho"), "cho ok\r\n");
  EXPECT_EQ(Ask("cho"), "");
  EXPECT_EQ(Ask("bho"), "cho ok\r\nbho ok\r\n");
}

TEST_F(BeltpackFaultsTest, AHeldAnswerIsDroppedWhenTheFaultIsChanged) {
  SetFault("late");
  EXPECT_EQ(Ask("rfps"), "");
  SetFault("none");
  EXPECT_EQ(Ask("cho"), "cho ok\r\n");
}

TEST_F(BeltpackFaultsTest, GarbledReplacesSomeBytes) {
  SetFault("garbled");
  for (int poll = 0; poll < 50; ++poll) {
    const std::string whole = sound.Ask("rfps");
    const std::string garbled = Ask("rfps");
    ASSERT_EQ(garbled.size(), whole.size());
    std::size_t replaced = 0;
    for (std::size_t index = 0; index < whole.size(); ++index) {
      replaced += garbled[index] != whole[index] ? 1 : 0;
    }
    EXPECT_GE(replaced, 1U);
    EXPECT_LE(replaced, whole.size() / 8);
  }
}

TEST_F(BeltpackFaultsTest, LostLineFeedsAreMissingAndNothingElse) {
  SetFault("lost-line-feeds");
  for (int poll = 0; poll < 50; ++poll) {
    std::string whole = sound.Ask("rfps");
    std::string damaged = Ask("rfps");
    EXPECT_LT(CountLines(damaged), 29U);
    std::erase(whole, '\n');
    std::erase(damaged, '\n');
    EXPECT_EQ(damaged, whole);
  }
}

TEST_F(BeltpackFaultsTest, FloodIsEndlessBytesOfEveryValueAtTheSpeedOfTheLine) {
  SetFault("flood");
  beltpack.Receive("rfps\r", nowMs);
  std::array<std::size_t, 256> counts{};
  std::size_t all = 0;
  for (int second = 1; second <= 600; ++second) {
    nowMs += 1000;
    for (const char byte : beltpack.TakeOutput(nowMs)) {
      ++counts.at(static_cast<unsigned char>(byte));
      ++all;
    }
    EXPECT_TRUE(beltpack.NextDue());
  }
  EXPECT_NEAR(static_cast<double>(all), 600 * 1920.0, 2000.0);
  for (const std::size_t count : counts) {
    EXPECT_GT(count, 1000U);
  }
}

TEST_F(BeltpackFaultsTest, AFloodContinuesUntilACommandThatTheRuleDoesNotAffect) {
  SetFault("flood");
  EXPECT_GT(Ask("rfps").size(), 5000U);
  EXPECT_GT(Ask("cho").size(), 5000U);
  SetFault("flood:once");
  EXPECT_EQ(Wait(), "");
  EXPECT_GT(Ask("cho").size(), 5000U);
  EXPECT_GT(Wait().size(), 5000U);
  EXPECT_EQ(Ask("cho"), "cho ok\r\n");
  EXPECT_EQ(Wait(), "");
}

TEST_F(BeltpackFaultsTest, AFloodThatIsNotTakenForADayIsBounded) {
  SetFault("flood");
  beltpack.Receive("rfps\r", nowMs);
  nowMs += std::int64_t{24} * 3600 * 1000;
  EXPECT_LE(beltpack.TakeOutput(nowMs).size(), std::size_t{65536});
  EXPECT_LE(Wait().size(), 6000U);
}

TEST_F(BeltpackFaultsTest, AfterAHangUpTheDeviceIsAwayForTenSeconds) {
  SetFault("hang-up:once");
  beltpack.Receive("rfps\rcho\r", nowMs);
  EXPECT_FALSE(beltpack.IsPresent(nowMs));
  EXPECT_EQ(beltpack.NextDue(), nowMs + 10000);
  EXPECT_EQ(Ask("cho"), "");
  EXPECT_EQ(Ask("cho"), "");
  EXPECT_EQ(Ask("cho"), "");
  EXPECT_FALSE(beltpack.IsPresent(nowMs + 999));
  EXPECT_TRUE(beltpack.IsPresent(nowMs + 1000));
  nowMs += 1000;
  EXPECT_EQ(Wait(), "");
  EXPECT_EQ(beltpack.NextDue(), std::nullopt);
  EXPECT_EQ(Ask("cho"), "cho ok\r\n");
}

TEST_F(BeltpackFaultsTest, PluggingInBringsBackADeviceThatHungUp) {
  SetFault("hang-up:once");
  EXPECT_EQ(Ask("rfps"), "");
  beltpack.Plug();
  EXPECT_EQ(Ask("cho"), "cho ok\r\n");
}

TEST_F(BeltpackFaultsTest, SlowSendsOneCharacterAtATimeAndTheWholeReportBeforeTheNextPoll) {
  SetFault("slow");
  for (int poll = 0; poll < 20; ++poll) {
    const std::string whole = sound.Ask("rfps");
    std::size_t mostAtOnce = 0;
    EXPECT_EQ(AskPatiently("rfps", mostAtOnce), whole);
    EXPECT_EQ(mostAtOnce, 1U);
  }
  beltpack.Receive("cho\r", nowMs);
  EXPECT_EQ(beltpack.NextDue(), nowMs + 43);
  EXPECT_EQ(beltpack.TakeOutput(nowMs + 43), "c");
  EXPECT_EQ(beltpack.NextDue(), nowMs + 45);
}

TEST(BeltpackFaultNamesTest, EveryFaultCanAffectOnlyEachThirdAnswerAndBeSwitchedOff) {
  for (const LineFaultName& faultName : kLineFaultNames) {
    test::BeltpackRig sound;
    test::BeltpackRig rig;
    rig.SetFault(std::string(faultName.name) + ":3");
    EXPECT_EQ(rig.Ask("rfps"), sound.Ask("rfps")) << faultName.name;
    EXPECT_EQ(rig.Ask("rfps"), sound.Ask("rfps")) << faultName.name;
    // A slow answer has the same bytes, later.
    const bool isSame = faultName.fault == LineFault::None || faultName.fault == LineFault::Slow;
    EXPECT_EQ(rig.Ask("rfps") == sound.Ask("rfps"), isSame) << faultName.name;
    rig.SetFault("none");
    rig.beltpack.Plug();
    EXPECT_EQ(rig.Ask("rfps"), sound.Ask("rfps")) << faultName.name;
  }
}

TEST_F(BeltpackFaultsTest, TheSameSeedDoesTheSameDamage) {
  test::BeltpackRig other;
  for (const LineFaultName& faultName : kLineFaultNames) {
    SetFault(faultName.name);
    other.SetFault(faultName.name);
    for (int poll = 0; poll < 5; ++poll) {
      EXPECT_EQ(Ask("rfps"), other.Ask("rfps")) << faultName.name;
    }
  }
}

TEST(LineDamageTest, ShortTextsAreDamagedAsFarAsPossible) {
  Random random(1);
  EXPECT_EQ(CutShort("", random), "");
  EXPECT_EQ(CutShort("a", random), "a");
  EXPECT_EQ(CutShort("ab", random), "a");
  EXPECT_EQ(Garbled("", random), "");
  EXPECT_NE(Garbled("a", random), "a");
  EXPECT_EQ(WithoutSomeLineFeeds("abc", random), "abc");
  EXPECT_EQ(WithoutSomeLineFeeds("abc\n", random), "abc");
}

}  // namespace
}  // namespace kelvara::sim
