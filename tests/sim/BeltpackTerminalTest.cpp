#include "sim/BeltpackTerminal.h"

#include <gtest/gtest.h>

#include "sim/BeltpackRig.h"
#include "sim/TerminalUser.h"

namespace kelvara::sim {
namespace {

using test::IsWholeReport;
using test::TerminalUser;

class BeltpackTerminalTest : public ::testing::Test, public test::BeltpackRig {
 protected:
  /// Sends a command as a program would, and lets three seconds pass by the beltpack's clock.
  std::string AskThrough(const TerminalUser& user, const std::string& command) {
    EXPECT_TRUE(user.Send(command + "\r"));
    EXPECT_TRUE(test::WaitForInput(terminal.Descriptor()));
    terminal.Serve(nowMs);
    nowMs += 3000;
    terminal.Serve(nowMs);
    return user.Take();
  }

  test::TestFolder folder;
  const std::string link = folder / "beltpack";
  BeltpackTerminal terminal{beltpack, link};
};

TEST_F(BeltpackTerminalTest, AnswersWhatIsAskedThroughTheTerminal) {
  const TerminalUser user(link);
  EXPECT_TRUE(IsWholeReport(AskThrough(user, "rfps")));
  EXPECT_EQ(AskThrough(user, "cho"), "cho ok\r\n");
}

TEST_F(BeltpackTerminalTest, TheTerminalIsThereJustWhileTheBeltpackIs) {
  const TerminalUser before(link);
  EXPECT_FALSE(terminal.Serve(nowMs));
  beltpack.Unplug();
  EXPECT_FALSE(terminal.Serve(nowMs));
  EXPECT_TRUE(before.SeesHangUp());
  EXPECT_FALSE(TerminalUser(link).IsOpen());
  EXPECT_EQ(terminal.Descriptor(), -1);
  beltpack.Plug();
  EXPECT_TRUE(terminal.Serve(nowMs));
  EXPECT_FALSE(terminal.Serve(nowMs));
  EXPECT_EQ(AskThrough(TerminalUser(link), "cho"), "cho ok\r\n");
}

TEST_F(BeltpackTerminalTest, AHangUpTakesTheTerminalAwayAndTimeBringsItBack) {
  SetFault("hang-up:once");
  const TerminalUser before(link);
  ASSERT_TRUE(before.Send("rfps\r"));
  ASSERT_TRUE(test::WaitForInput(terminal.Descriptor()));
  EXPECT_FALSE(terminal.Serve(nowMs));
  EXPECT_TRUE(before.SeesHangUp());
  nowMs = beltpack.NextDue().value();
  EXPECT_TRUE(terminal.Serve(nowMs));
  EXPECT_EQ(beltpack.NextDue(), std::nullopt);
  EXPECT_TRUE(IsWholeReport(AskThrough(TerminalUser(link), "rfps")));
}

}  // namespace
}  // namespace kelvara::sim
