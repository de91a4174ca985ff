#include "sim/PseudoTerminal.h"

#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>

#include <array>
#include <csignal>
#include <fstream>

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

/// The state that a program can leave on a device for the next one.
struct LineState {
  explicit LineState(const TerminalUser& user) {
    ::ioctl(user.Descriptor(), TIOCGEXCL, &exclusive);
    ::tcgetattr(user.Descriptor(), &settings);
    isLocked = ::flock(user.Descriptor(), LOCK_EX | LOCK_NB) != 0;
  }

  bool operator==(const LineState& other) const {
    return exclusive == other.exclusive && isLocked == other.isLocked &&
           settings.c_iflag == other.settings.c_iflag &&
           settings.c_oflag == other.settings.c_oflag &&
           settings.c_cflag == other.settings.c_cflag &&
           settings.c_lflag == other.settings.c_lflag &&
           std::equal(std::begin(settings.c_cc), std::end(settings.c_cc),
                      std::begin(other.settings.c_cc));
  }

  int exclusive = 0;
  bool isLocked = false;
  termios settings{};
};

/// Takes exclusive use of the device and changes all its settings.
void Seize(const TerminalUser& user) {
  termios settings{};
  ::tcgetattr(user.Descriptor(), &settings);
  settings.c_iflag |= ICRNL | IXON;
  settings.c_oflag |= OPOST | ONLCR;
  settings.c_cflag |= PARENB | CSTOPB | CRTSCTS;
  settings.c_lflag |= ICANON | ECHO | ISIG;
  settings.c_cc[VMIN] = 7;
  ::cfsetspeed(&settings, B4800);
  EXPECT_EQ(::tcsetattr(user.Descriptor(), TCSANOW, &settings), 0);
  EXPECT_EQ(::flock(user.Descriptor(), LOCK_EX | LOCK_NB), 0);
  EXPECT_EQ(::ioctl(user.Descriptor(), TIOCEXCL), 0);
  EXPECT_EQ(::tcflow(user.Descriptor(), TCOOFF), 0);
}

/// Not 0 while the device refuses any other ordinary user.
int ExclusiveMode(const TerminalUser& user) {
  int exclusive = 0;
  ::ioctl(user.Descriptor(), TIOCGEXCL, &exclusive);
  return exclusive;
}

TEST_F(PseudoTerminalTest, IsResetWhenTheLastProgramIsKilled) {
  PseudoTerminal terminal;
  terminal.Open();
  const LineState fresh{TerminalUser(terminal.DeviceName())};
  terminal.Write("nobody reads this\r");
  const pid_t program = ::fork();
  if (program == 0) {
    const TerminalUser user(terminal.DeviceName());
    test::WaitForInput(user.Descriptor());
    Seize(user);
    ::raise(SIGKILL);
  }
  ASSERT_EQ(::waitpid(program, nullptr, 0), program);
  EXPECT_TRUE(test::WaitForInput(terminal.HandlesDescriptor()));
  terminal.Read();
  // Without the reset, an ordinary user could not open it.
  const TerminalUser next(terminal.DeviceName());
  ASSERT_TRUE(next.IsOpen());
  EXPECT_TRUE(LineState(next) == fresh);
  EXPECT_EQ(next.Take(), "");
  ASSERT_TRUE(next.Send("cho\r"));
  ASSERT_TRUE(test::WaitForInput(terminal.Descriptor()));
  EXPECT_EQ(terminal.Read(), "cho\r");
}

TEST_F(PseudoTerminalTest, KeepsItsSettingsWhileAProgramHasItOpen) {
  PseudoTerminal terminal;
  terminal.Open();
  const TerminalUser first(terminal.DeviceName());
  {
    const TerminalUser second(terminal.DeviceName());
    const TerminalUser third(terminal.DeviceName());
    Seize(first);
  }
  terminal.Write("answer\n");
  terminal.Read();
  EXPECT_NE(ExclusiveMode(first), 0);
  EXPECT_EQ(first.Take(), "answer\n");
}

TEST_F(PseudoTerminalTest, WritingNeverWaitsAndDropsWhatDoesNotFit) {
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

TEST_F(PseudoTerminalTest, AnythingButALinkIsNeverReplaced) {
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

TEST_F(PseudoTerminalTest, ALinkThatAnotherProgramMadeInItsPlaceIsLeftAlone) {
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

/// Where serial programs leave the lock file of a terminal.
fs::path LockFileOf(const PseudoTerminal& terminal) {
  return "/var/lock/LCK..pts_" + fs::path(terminal.DeviceName()).filename().string();
}

TEST_F(PseudoTerminalTest, ALockFileIsRemovedAfterTheProgramThatLeftIt) {
  PseudoTerminal terminal;
  terminal.Open();
  const fs::path lockFile = LockFileOf(terminal);
  for (const bool byClosing : {false, true}) {
    {
      const TerminalUser user(terminal.DeviceName());
      ASSERT_TRUE(user.IsOpen());
      std::ofstream(lockFile) << "1\n";
      if (!fs::exists(lockFile)) {
        GTEST_SKIP() << "needs to write to /var/lock";
      }
      terminal.Read();
      EXPECT_TRUE(fs::exists(lockFile)) << "the program is still there";
    }
    if (byClosing) {
      terminal.Close();
    } else {
      terminal.Read();
    }
    EXPECT_FALSE(fs::exists(lockFile)) << byClosing;
  }
}

TEST_F(PseudoTerminalTest, ATerminalWhoseLockFileCannotBeRemovedIsNotUsed) {
  PseudoTerminal terminal;
  terminal.Open();
  const std::string device = terminal.DeviceName();
  const fs::path lockFile = LockFileOf(terminal);
  terminal.Close();
  std::error_code error;
  // Nobody can remove a folder that is not empty as if it were a file.
  if (!fs::create_directories(lockFile / "inner", error)) {
    GTEST_SKIP() << "needs to write to /var/lock";
  }
  terminal.Open();
  EXPECT_NE(terminal.DeviceName(), device);
  fs::remove_all(lockFile);
}

}  // namespace
}  // namespace kelvara::sim
