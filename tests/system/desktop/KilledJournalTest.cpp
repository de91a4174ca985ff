#include <algorithm>
#include <csignal>
#include <filesystem>
#include <random>
#include <thread>

#include "link/ReportCollector.h"
#include "support/ReplayedTrace.h"
#include "support/TextFile.h"
#include "system/desktop/DesktopSession.h"

namespace kelvara::test {
namespace {

using std::chrono::milliseconds;

/// Programs that are killed at random moments, each with a beltpack and a data folder of its own.
class KilledJournalTest : public DesktopSession {
 protected:
  struct Session {
    std::string folder;
    std::unique_ptr<SimulatedBeltpack> beltpack;
    std::unique_ptr<Process> program;
    std::chrono::steady_clock::time_point end;
  };

  Session Begin(const std::string& name) const {
    Session session;
    session.folder = PathOf(name);
    std::filesystem::create_directory(session.folder);
    ProcessRequest simulate = CliRequest({"simulate"});
    simulate.folder = session.folder;
    session.beltpack = std::make_unique<SimulatedBeltpack>(simulate);
    ProcessRequest request =
        Request({"--com", "1=" + session.folder + "/" + SimulatedBeltpack::kPort});
    request.environment["XDG_DATA_HOME"] = session.folder;
    session.program = std::make_unique<Process>(request);
    return session;
  }

  /// The journals of a session, one after the other.
  static std::string Journals(const Session& session) {
    std::string text;
    const std::filesystem::path folder = session.folder + "/CorvanaSync/sessions";
    if (std::filesystem::exists(folder)) {
      for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        text += ReadTextFile(entry.path().string());
      }
    }
    return text;
  }

  /// Expects every report that had come whole to be in the journal, once.
  void ExpectNothingLost(const Session& session) {
    const std::string journal = Journals(session);
    const std::vector<ReceivedCommand> commands = session.beltpack->Commands();
    int asked = 0;
    for (const ReceivedCommand& command : commands) {
      asked += command.text == "rfps" ? 1 : 0;
    }
    // A report has come whole before the next command is sent.
    const bool isLastOpen = !commands.empty() && commands.back().text == "rfps";
    const int whole = ReplayedTrace(journal).model.ReportCount();
    EXPECT_GE(whole, asked - (isLastOpen ? 1 : 0)) << journal;
    EXPECT_LE(whole, asked) << journal;
    EXPECT_EQ(journal.find("\x01!end\x02"), std::string::npos);
    withReports_ += whole > 0 ? 1 : 0;
    const std::size_t last = journal.rfind("\x01rfps\x02");
    if (isLastOpen && last != std::string::npos) {
      const auto lines =
          std::count(journal.begin() + static_cast<std::ptrdiff_t>(last), journal.end(), '\n');
      withinAReport_ += lines > 0 && lines < link::kRfpsReportLines ? 1 : 0;
    }
  }

  int withReports_ = 0;
  int withinAReport_ = 0;
};

TEST_F(KilledJournalTest, HoldsEveryWholeReportOnceWhenKilledAtRandomMoments) {
  constexpr int kWaves = 4;
  constexpr int kSessions = 25;
  std::mt19937 random(25);
  for (int wave = 0; wave < kWaves; ++wave) {
    std::vector<Session> sessions;
    for (int number = 0; number < kSessions; ++number) {
      sessions.push_back(Begin(std::to_string(wave) + "-" + std::to_string(number)));
    }
    for (Session& session : sessions) {
      session.beltpack->WaitForCommands(1);
    }
    const auto start = std::chrono::steady_clock::now();
    for (Session& session : sessions) {
      session.end = start + milliseconds(std::uniform_int_distribution<int>(0, 8000)(random));
    }
    std::sort(sessions.begin(), sessions.end(),
              [](const Session& one, const Session& other) { return one.end < other.end; });
    for (Session& session : sessions) {
      std::this_thread::sleep_until(session.end);
      session.program->Signal(SIGKILL);
      EXPECT_EQ(session.program->Finish().signal, SIGKILL);
    }
    for (const Session& session : sessions) {
      ExpectNothingLost(session);
    }
  }
  EXPECT_GT(withReports_, kWaves * kSessions / 2);
  EXPECT_GT(withinAReport_, 0);
}

TEST_F(KilledJournalTest, ASessionThatEndsInOrderSaysSo) {
  Session session = Begin("ended");
  session.beltpack->WaitForCommands(2);
  session.program->Signal(SIGTERM);
  EXPECT_EQ(session.program->Finish().exitCode, 0);
  EXPECT_TRUE(Journals(session).ends_with("\x01!end\x02"));
}

TEST_F(KilledJournalTest, NoJournalIsKeptWhereNoneIsWantedNorInADemo) {
  SimulatedBeltpack beltpack(CliRequest({"simulate"}));
  for (const Arguments& arguments :
       {Arguments{"--no-journal", "--com", BeltpackAsPort(1)}, Arguments{"--demo"}}) {
    ProcessRequest request = Request(arguments);
    Arguments traced = {"--raw", PathOf("trace.txt")};
    request.arguments.insert(request.arguments.end(), traced.begin(), traced.end());
    Process program(request);
    DesktopProgram::Await("a line in the trace", [&] {
      return Exists("trace.txt") && Read("trace.txt").find('\n') != std::string::npos;
    });
    program.Signal(SIGTERM);
    EXPECT_EQ(program.Finish().exitCode, 0);
    std::filesystem::remove(PathOf("trace.txt"));
    EXPECT_FALSE(Exists(".local/share/CorvanaSync/sessions"));
  }
}

}  // namespace
}  // namespace kelvara::test
