#include <gtest/gtest.h>

#include "sim/BeltpackRig.h"
#include "sim/PseudoTerminal.h"
#include "sim/TerminalUser.h"

namespace kelvara::sim {
namespace {

using test::IsWholeReport;
using test::TerminalUser;

/// A beltpack that is connected to a terminal.
class PseudoTerminalBeltpackTest : public ::testing::Test, public test::BeltpackRig {
 protected:
  PseudoTerminalBeltpackTest() { terminal.Open(); }

  /// Sends a command as a program would, and lets three seconds pass by the beltpack's clock.
  std::string AskThrough(const TerminalUser& user, const std::string& command) {
    EXPECT_TRUE(user.Send(command + "\r"));
    EXPECT_TRUE(test::WaitForInput(terminal.Descriptor()));
    PassOn(beltpack, terminal, nowMs);
    nowMs += 3000;
    PassOn(beltpack, terminal, nowMs);
    return user.Take();
  }

  test::TestFolder folder;
  const std::string link = folder / "beltpack";
  PseudoTerminal terminal{link};
};

TEST_F(PseudoTerminalBeltpackTest, AnswersCommandsThroughTheTerminal) {
  const TerminalUser user(link);
  EXPECT_TRUE(IsWholeReport(AskThrough(user, "rfps")));
  EXPECT_EQ(AskThrough(user, "cho"), "cho ok\r\n");
}

TEST_F(PseudoTerminalBeltpackTest, TheTerminalExistsOnlyWhileTheBeltpackIsPresent) {
  const TerminalUser before(link);
  EXPECT_FALSE(PassOn(beltpack, terminal, nowMs));
  beltpack.Unplug();
  EXPECT_FALSE(PassOn(beltpack, terminal, nowMs));
  EXPECT_TRUE(before.SeesHangUp());
  EXPECT_FALSE(TerminalUser(link).IsOpen());
  EXPECT_EQ(terminal.Descriptor(), -1);
  beltpack.Plug();
  EXPECT_TRUE(PassOn(beltpack, terminal, nowMs));
  EXPECT_FALSE(PassOn(beltpack, terminal, nowMs));
  EXPECT_EQ(AskThrough(TerminalUser(link), "cho"), "cho ok\r\n");
}

TEST_F(PseudoTerminalBeltpackTest, AHangUpRemovesTheTerminalForAWhile) {
  SetFault("hang-up:once");
  const TerminalUser before(link);
  ASSERT_TRUE(before.Send("rfps\r"));
  ASSERT_TRUE(test::WaitForInput(terminal.Descriptor()));
  EXPECT_FALSE(PassOn(beltpack, terminal, nowMs));
  EXPECT_TRUE(before.SeesHangUp());
  nowMs = beltpack.NextDue().value();
  EXPECT_TRUE(PassOn(beltpack, terminal, nowMs));
  EXPECT_EQ(beltpack.NextDue(), std::nullopt);
  EXPECT_TRUE(IsWholeReport(AskThrough(TerminalUser(link), "rfps")));
}

}  // namespace
}  // namespace kelvara::sim
