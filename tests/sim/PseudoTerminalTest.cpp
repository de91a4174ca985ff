#include "sim/PseudoTerminal.h"

#include <gtest/gtest.h>

#include "sim/TerminalUser.h"
#include "support/Faults.h"
#include "support/TextFile.h"

namespace kelvara::sim {
namespace {

using test::TerminalUser;
namespace fs = std::filesystem;

class PseudoTerminalTest : public ::testing::Test {
 protected:
  test::TestFolder folder;
  const std::string link = folder / "beltpack";
};

TEST_F(PseudoTerminalTest, IsClosedUntilItIsOpened) {
  PseudoTerminal terminal;
  EXPECT_FALSE(terminal.IsOpen());
  EXPECT_EQ(terminal.DeviceName(), "");
  EXPECT_EQ(terminal.Descriptor(), -1);
  EXPECT_EQ(terminal.Read(), "");
  terminal.Write("nobody");
  terminal.Open();
  EXPECT_TRUE(terminal.IsOpen());
  EXPECT_TRUE(fs::is_character_file(terminal.DeviceName()));
}

TEST_F(PseudoTerminalTest, EveryByteGoesThroughUnchangedBothWays) {
  PseudoTerminal terminal;
  terminal.Open();
  const TerminalUser user(terminal.DeviceName());
  ASSERT_TRUE(user.IsOpen());
  std::string all;
  for (int byte = 0; byte < 256; ++byte) {
    all += static_cast<char>(byte);
  }
  ASSERT_TRUE(user.Send(all));
  ASSERT_TRUE(test::WaitForInput(terminal.Descriptor()));
  EXPECT_EQ(terminal.Read(), all);
  terminal.Write(all);
  EXPECT_EQ(user.Take(), all);
}

TEST_F(PseudoTerminalTest, TheFarEndDoesNotEcho) {
  PseudoTerminal terminal;
  terminal.Open();
  terminal.Write("answer\r\n");
  constexpr int kLongEnoughMs = 100;
  EXPECT_FALSE(test::WaitForInput(terminal.Descriptor(), kLongEnoughMs));
  EXPECT_EQ(terminal.Read(), "");
}

TEST_F(PseudoTerminalTest, UsersMayComeAndGo) {
  PseudoTerminal terminal;
  terminal.Open();
  for (int round = 0; round < 3; ++round) {
    const TerminalUser user(terminal.DeviceName());
    ASSERT_TRUE(user.Send("cho\r"));
    ASSERT_TRUE(test::WaitForInput(terminal.Descriptor()));
    EXPECT_EQ(terminal.Read(), "cho\r");
    terminal.Write("ok");
    EXPECT_EQ(user.Take(), "ok");
  }
}

TEST_F(PseudoTerminalTest, WritingNeverWaitsAndWhatDoesNotFitIsLost) {
  PseudoTerminal terminal;
  terminal.Open();
  const std::string much(100000, 'x');
  for (int round = 0; round < 20; ++round) {
    terminal.Write(much);
  }
  const TerminalUser user(terminal.DeviceName());
  EXPECT_GT(user.Take().size(), 1000U);
}

TEST_F(PseudoTerminalTest, MakesTheLinkAndRemovesIt) {
  {
    PseudoTerminal terminal(link);
    EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
    terminal.Open();
    EXPECT_EQ(fs::read_symlink(link), terminal.DeviceName());
    EXPECT_TRUE(TerminalUser(link).IsOpen());
  }
  EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
}

TEST_F(PseudoTerminalTest, AnOldLinkIsReplaced) {
  fs::create_symlink("/nowhere/at/all", link);
  PseudoTerminal terminal(link);
  terminal.Open();
  EXPECT_EQ(fs::read_symlink(link), terminal.DeviceName());
}

TEST_F(PseudoTerminalTest, WhatIsNoLinkIsNeverReplaced) {
  test::WriteTextFile(link, "precious");
  {
    PseudoTerminal terminal(link);
    EXPECT_EQ(test::FaultOf([&] { terminal.Open(); }), base::FaultKind::File);
    EXPECT_FALSE(terminal.IsOpen());
  }
  EXPECT_EQ(test::ReadTextFile(link), "precious");

  fs::create_directory(folder / "folder");
  PseudoTerminal other(folder / "folder");
  EXPECT_EQ(test::FaultOf([&] { other.Open(); }), base::FaultKind::File);
  EXPECT_TRUE(fs::is_directory(folder / "folder"));
}

TEST_F(PseudoTerminalTest, ALinkThatCannotBeMadeIsAFileFault) {
  PseudoTerminal terminal(folder / "missing" / "beltpack");
  EXPECT_EQ(test::FaultOf([&] { terminal.Open(); }), base::FaultKind::File);
  EXPECT_FALSE(terminal.IsOpen());
}

TEST_F(PseudoTerminalTest, ALinkThatSomebodyElseMadeInItsPlaceIsLeftAlone) {
  PseudoTerminal terminal(link);
  terminal.Open();
  fs::remove(link);
  fs::create_symlink("/dev/null", link);
  terminal.Close();
  EXPECT_EQ(fs::read_symlink(link), "/dev/null");
}

TEST_F(PseudoTerminalTest, ClosingHangsUpAndOpeningAgainServesTheSameLink) {
  PseudoTerminal terminal(link);
  terminal.Open();
  const TerminalUser before(link);
  EXPECT_FALSE(before.SeesHangUp());
  terminal.Close();
  EXPECT_TRUE(before.SeesHangUp());
  EXPECT_FALSE(TerminalUser(link).IsOpen());
  terminal.Open();
  const TerminalUser after(link);
  ASSERT_TRUE(after.Send("cho\r"));
  ASSERT_TRUE(test::WaitForInput(terminal.Descriptor()));
  EXPECT_EQ(terminal.Read(), "cho\r");
  EXPECT_TRUE(before.SeesHangUp());
}

}  // namespace
}  // namespace kelvara::sim
