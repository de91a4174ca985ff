#include <algorithm>
#include <ctime>
#include <filesystem>
#include <iomanip>
#include <regex>
#include <sstream>

#include "support/TextFile.h"
#include "system/desktop/DesktopSession.h"

namespace kelvara::test {
namespace {

/// Sessions whose beltpack can be unplugged, each with its log in a file.
class LinkLossTest : public DesktopSession {
 protected:
  struct Session {
    std::string name;
    std::unique_ptr<SimulatedBeltpack> beltpack;
    std::unique_ptr<VirtualScreen> screen;
    std::unique_ptr<DesktopProgram> program;
    std::size_t attempting = 0;  ///< The first panel's picture before the beltpack was heard.
    std::size_t connected = 0;   ///< The first panel's picture after the beltpack was heard.

    std::string Log() const { return name + "/log.txt"; }
    std::string Trace() const { return name + "/trace.txt"; }
  };

  /// Starts a session on its own screen and in its own folder.
  Session Begin(const std::string& name) {
    Session session;
    session.name = name;
    std::filesystem::create_directory(PathOf(name));
    ProcessRequest simulate = CliRequest({"simulate"});
    simulate.folder = PathOf(name);
    session.beltpack = std::make_unique<SimulatedBeltpack>(simulate);
    session.screen = std::make_unique<VirtualScreen>(PathOf(name));
    session.program =
        StartOn(*session.screen, {"--com", "1=" + PathOf(name) + "/" + SimulatedBeltpack::kPort,
                                  "--raw", PathOf(session.Trace())});
    DesktopProgram::Await("the link's start",
                          [&] { return Holds(*session.program, session.beltpack->Device()); });
    session.attempting = AwaitedPanel(session, 0);
    Capture(*session.program, session.Log());
    return session;
  }

  /// Waits until the first panel's picture differs from `before` and is stable, and returns it.
  std::size_t AwaitedPanel(const Session& session, std::size_t before) {
    std::size_t panel = before;
    DesktopProgram::Await("another text in the first panel", [&] {
      const std::size_t last = panel;
      panel = session.program->Panel(1);
      return panel == last && panel != before;
    });
    return panel;
  }

  static void AwaitPanel(const Session& session, std::size_t panel) {
    DesktopProgram::Await("the right text in the first panel",
                          [&] { return session.program->Panel(1) == panel; });
  }

  /// Waits for the first readings, unplugs the beltpack and waits until the program notices.
  void Unplug(Session& session) {
    AwaitReadings(session.Log(), 1);
    session.connected = AwaitedPanel(session, session.attempting);
    session.beltpack->Unplug();
    DesktopProgram::Await("the end of the device",
                          [&] { return !Holds(*session.program, session.beltpack->Device()); });
  }

  /// Plugs the beltpack in and waits until there are more than `readings` readings.
  void PlugBack(Session& session, std::size_t readings) {
    session.beltpack->Plug();
    AwaitReadings(session.Log(), readings + 1);
    AwaitPanel(session, session.connected);
  }

  /// Ends the program once its grid shows everything it read, and expects that to be everything
  /// that came over the line.
  void ExpectNothingLost(Session& session) {
    session.beltpack->SetFault("silent:always");
    const std::size_t commands = session.beltpack->Commands().size();
    session.beltpack->WaitForCommands(commands + 1);
    const GridText grid = session.program->Grid();
    session.program->Press(session.program->MainWindow(), {"alt+f", "e"});
    ExpectCleanEnd(*session.program);
    EXPECT_EQ(grid, ReplayedGrid(session.Trace()));
  }
};

TEST_F(LinkLossTest, ReadingsContinueAfterTheBeltpackIsUnpluggedAndPluggedInAndNoneIsLost) {
  Session session = Begin("session");
  Unplug(session);
  const std::vector<std::string> before = CapturedLines(session.Log());
  const std::size_t readings = CapturedReadings(session.Log()).size();
  // The program keeps working without the beltpack.
  session.program->Choose({"Options", "RPN Display Base", "Hex"});
  EXPECT_TRUE(session.program->IsChecked({"Options", "RPN Display Base", "Hex"}));
  session.program->Choose({"Options", "RPN Display Base", "Decimal"});
  PlugBack(session, readings);
  const std::vector<std::string> after = CapturedLines(session.Log());
  EXPECT_TRUE(std::equal(before.begin(), before.end(), after.begin()));
  ExpectNothingLost(session);
}

/// The program asks about a loss at the first tick 45 seconds after it last heard the beltpack.
class LinkLostTest : public LinkLossTest {
 protected:
  static constexpr Process::Duration kUntilAsked{70000};
  static constexpr int kMostSecondsLate = 8;

  DesktopWindow Question(const Session& session) const {
    DesktopWindow question{};
    DesktopProgram::Await(
        "the question about the loss",
        [&] {
          for (const DesktopWindow& window : session.screen->WindowsOf(session.program->Id())) {
            if (window.title == "Beltpack Comms Lost") {
              question = window;
              return true;
            }
          }
          return false;
        },
        kUntilAsked);
    return question;
  }

  static std::time_t SecondsOf(const std::string& text) {
    std::tm time{};
    std::istringstream(text) >> std::get_time(&time, "%Y-%m-%d %H:%M:%S");
    return ::timegm(&time);
  }

  /// Expects the question to name the time of the last reading and to offer a report.
  void ExpectQuestion(const Session& session, const DesktopWindow& question) const {
    const std::regex form(
        "Lost Communications with Beltpack at ([-0-9]+ [:0-9]+)\r\n\r\n"
        "Do you wish to generate a report, then clear the results\\?");
    const std::string text = session.program->MessageText(question);
    std::smatch match;
    ASSERT_TRUE(std::regex_match(text, match, form)) << text;
    const std::vector<std::string> lines = CapturedLines(session.Log());
    const std::string last = lines.at(lines.size() - 2);
    EXPECT_NE(last.find("->"), std::string::npos) << last;
    const std::time_t shown = SecondsOf(match[1]);
    const std::time_t heard = SecondsOf(last.substr(0, last.find(", ")));
    EXPECT_GT(heard, 0) << last;
    EXPECT_GE(shown, heard) << text << last;
    EXPECT_LE(shown, heard + kMostSecondsLate) << text << last;
    EXPECT_NE(lines.back().find(", Break Condition Set"), std::string::npos) << lines.back();
  }
};

TEST_F(LinkLostTest, TheUserIsAskedAndWhatTheUserKeepsIsNotLost) {
  Session kept = Begin("kept");
  Session reported = Begin("reported");
  Session left = Begin("left");
  Unplug(kept);
  Unplug(reported);
  Unplug(left);

  const DesktopWindow question = Question(kept);
  ExpectQuestion(kept, question);
  EXPECT_EQ(kept.program->Panel(1), kept.connected);
  const GridText grid = kept.program->Grid();
  EXPECT_GE(FilledCells(grid), 1U);
  kept.program->PressButton(question, "No");
  kept.program->WaitUntilClosed(question);
  EXPECT_EQ(kept.program->Grid(), grid);
  AwaitPanel(kept, kept.attempting);

  const DesktopWindow other = Question(reported);
  ExpectQuestion(reported, other);
  reported.program->PressButton(other, "Yes");
  const DesktopWindow dialog = reported.program->Open("Generate Reoprt");
  reported.program->FillIn(dialog, "File", PathOf("report.html"));
  reported.program->PressButton(dialog, "Generate Report");
  reported.program->WaitUntilClosed(dialog);
  DesktopProgram::Await("an empty grid", [&] { return reported.program->Grid().size() == 1; });
  AwaitPanel(reported, reported.attempting);
  const std::string report = Read("report.html");
  const std::string trace = Read(reported.Trace());
  WriteTextFile(PathOf("before.txt"), trace.substr(0, trace.rfind("\x01!clear\x02")));
  CliOutput({"replay", PathOf("before.txt"), "--report", PathOf("report.html")});
  EXPECT_EQ(report, Read("report.html"));

  // A user who closes the question keeps the results and can exit.
  const DesktopWindow unanswered = Question(left);
  left.program->RequestClose(unanswered);
  left.program->WaitUntilClosed(unanswered);
  EXPECT_EQ(FilledCells(left.program->Grid()), FilledCells(ReplayedGrid(left.Trace())));
  left.program->RequestClose(left.program->MainWindow());
  ExpectCleanEnd(*left.program);

  const std::size_t readings = CapturedReadings(kept.Log()).size();
  PlugBack(kept, readings);
  ExpectNothingLost(kept);
  reported.program->RequestClose(reported.program->MainWindow());
  ExpectCleanEnd(*reported.program);
}

}  // namespace
}  // namespace kelvara::test
