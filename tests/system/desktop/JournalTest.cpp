#include <csignal>
#include <filesystem>

#include "support/TextFile.h"
#include "system/desktop/DesktopSession.h"

namespace kelvara::test {
namespace {

/// Programs with a beltpack and a data folder of their own.
class DesktopJournalTest : public DesktopSession {
 protected:
  struct Session {
    std::string folder;
    std::unique_ptr<SimulatedBeltpack> beltpack;
    std::unique_ptr<Process> program;
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
};

TEST_F(DesktopJournalTest, ASessionThatEndsInOrderSaysSo) {
  Session session = Begin("ended");
  session.beltpack->WaitForCommands(2);
  session.program->Signal(SIGTERM);
  EXPECT_EQ(session.program->Finish().exitCode, 0);
  EXPECT_TRUE(Journals(session).ends_with("\x01!end\x02"));
}

TEST_F(DesktopJournalTest, NoJournalIsKeptWhereNoneIsWantedNorInADemo) {
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
