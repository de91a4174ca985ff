#include <algorithm>
#include <csignal>
#include <functional>
#include <thread>

#include "support/PseudoTerminal.h"
#include "support/RecordedReports.h"
#include "system/desktop/DesktopSession.h"

namespace kelvara::test {
namespace {

constexpr int kMostAntennas = 51;

/// A beltpack that reports every antenna of a full site as fast as it is polled.
class FastBeltpack {
 public:
  const std::string& Device() const { return terminal_.Device(); }

  /// Answers the commands received so far; false if there were none.
  bool Answer() {
    const std::string commands = terminal_.ReadAll();
    if (commands.find("rfps\r") != std::string::npos && firstRpn_ < kMostAntennas) {
      const int count = std::min(kNeighbours, kMostAntennas - firstRpn_);
      terminal_.Write(CrowdedReport(0, firstRpn_, count));
      firstRpn_ += count;
    }
    return !commands.empty();
  }

  bool HasReportedAll() const { return firstRpn_ == kMostAntennas; }

 private:
  /// As many as fit in a report.
  static constexpr int kNeighbours = 9;

  PseudoTerminal terminal_;
  int firstRpn_ = 1;
};

/// Sessions at a full site, each on its own screen, whose user acts in the middle of a redraw. The
/// redraw lets events run, so a tick sends its command then; the program is stopped there until the
/// user's act is waiting for it.
class RedrawTest : public DesktopSession {
 protected:
  struct Session {
    std::unique_ptr<FastBeltpack> beltpack = std::make_unique<FastBeltpack>();
    std::unique_ptr<VirtualScreen> screen;
    std::unique_ptr<DesktopProgram> program;
    std::function<void()> act;
  };

  Session Begin() const {
    Session session;
    session.screen = std::make_unique<VirtualScreen>(PathOf("run"));
    session.program = StartOn(*session.screen, {"--com", "1=" + session.beltpack->Device()});
    return session;
  }

  static void AwaitFullGrids(std::vector<Session>& sessions) {
    constexpr Process::Duration kFill{40000};
    const auto isFull = [](const Session& session) {
      return session.beltpack->HasReportedAll() && session.program->GridRows() == kMostAntennas + 1;
    };
    DesktopProgram::Await(
        "grids of a full site",
        [&] {
          for (Session& session : sessions) {
            session.beltpack->Answer();
          }
          return std::all_of(sessions.begin(), sessions.end(), isFull);
        },
        kFill);
  }

  /// Changes the units, so that the next redraw changes every reading, then presses the keys that
  /// open a menu, if any.
  static void Prepare(const Session& session, const std::vector<std::string>& keys) {
    session.program->Choose({"Options", "Display Format", "AA Sync Units"});
    session.program->Press(session.program->MainWindow(), keys);
    session.beltpack->Answer();
  }

  /// Runs the act of each session in the middle of its next redraw. The programs run in steps much
  /// shorter than a redraw and are checked between steps.
  static void ActInRedraws(std::vector<Session>& sessions) {
    constexpr std::chrono::microseconds kStep{20};
    const auto deadline = std::chrono::steady_clock::now() + DesktopProgram::kPatience;
    std::size_t left = sessions.size();
    while (left > 0 && std::chrono::steady_clock::now() < deadline) {
      for (Session& session : sessions) {
        if (!session.act) {
          continue;
        }
        session.program->Signal(SIGCONT);
        std::this_thread::sleep_for(kStep);
        session.program->Signal(SIGSTOP);
        if (session.beltpack->Answer()) {
          session.act();
          session.act = nullptr;
          session.program->Signal(SIGCONT);
          --left;
        }
      }
    }
    EXPECT_EQ(left, 0U) << "sessions that sent no command";
  }
};

TEST_F(RedrawTest, TheProgramCanBeClosedAndClearedDuringARedraw) {
  std::vector<Session> sessions;
  for (int count = 0; count < 3; ++count) {
    sessions.push_back(Begin());
  }
  AwaitFullGrids(sessions);

  Session& closed = sessions[0];
  Session& left = sessions[1];
  Session& cleared = sessions[2];
  Prepare(closed, {});
  closed.act = [&closed, window = closed.program->MainWindow()] {
    closed.program->RequestClose(window);
  };
  // "Exit" is the last entry of its menu; the clear command is the first with its letter.
  Prepare(left, {"alt+f", "Up"});
  left.act = [&left] { left.screen->Press({"Return"}); };
  Prepare(cleared, {"alt+f", "c"});
  cleared.act = [&cleared] { cleared.screen->Press({"Return"}); };
  ActInRedraws(sessions);

  ExpectCleanEnd(*closed.program);
  ExpectCleanEnd(*left.program);
  DesktopProgram::Await("an empty grid", [&] { return cleared.program->GridRows() == 1; });
  EXPECT_FALSE(cleared.program->IsEnabled({"File", "Clear Sync Grid & Results"}));
  cleared.program->Press(cleared.program->MainWindow(), {"alt+f", "e"});
  ExpectCleanEnd(*cleared.program);
}

}  // namespace
}  // namespace kelvara::test
