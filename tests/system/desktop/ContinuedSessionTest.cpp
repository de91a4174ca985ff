#include <algorithm>
#include <csignal>
#include <cstdlib>
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

/// Desktop programs that are killed at random moments and started again, each with a beltpack and a
/// data folder of its own.
class ContinuedSessionTest : public DesktopSession {
 protected:
  struct Station {
    std::string folder;
    std::unique_ptr<SimulatedBeltpack> beltpack;
    std::unique_ptr<DesktopProgram> program;
    std::chrono::steady_clock::time_point end;
    std::size_t commandsBefore = 0;
    int reports = 0;
  };

  Station Prepare(const std::string& name) const {
    Station station;
    station.folder = PathOf(name);
    std::filesystem::create_directory(station.folder);
    ProcessRequest simulate = CliRequest({"simulate"});
    simulate.folder = station.folder;
    station.beltpack = std::make_unique<SimulatedBeltpack>(simulate);
    return station;
  }

  void Start(Station& station) const {
    ProcessRequest request =
        Request({"--com", "1=" + station.folder + "/" + SimulatedBeltpack::kPort});
    request.environment["XDG_DATA_HOME"] = station.folder;
    station.commandsBefore = station.beltpack->Commands().size();
    station.program = std::make_unique<DesktopProgram>(*screen, *bus, request);
  }

  /// Presses the button of the notice that offers the last session. If there is none to be offered,
  /// waits for the first command, so that there will be one soon.
  void Continue(Station& station) {
    if (station.reports == 0) {
      station.beltpack->WaitForCommands(station.commandsBefore + 1);
      return;
    }
    const DesktopWindow window = station.program->MainWindow();
    std::string notice;
    DesktopProgram::Await("the offer of the last session", [&] {
      notice = station.program->Notice();
      return !notice.empty();
    });
    const std::string count = std::to_string(station.reports);
    EXPECT_EQ(notice.rfind("The last session was cut off at ", 0), 0U) << notice;
    EXPECT_NE(notice.find(" (" + count + (count == "1" ? " report, " : " reports, ")),
              std::string::npos)
        << notice << ", not " << count;
    station.program->Press(window, {"alt+n"});
    DesktopProgram::Await("the end of the offer",
                          [&] { return station.program->Notice().empty(); });
    ++continued_;
  }

  /// Expects that of this run, every report that had come whole has been added to the journal,
  /// once.
  void ExpectNothingLost(Station& station) {
    const std::vector<ReceivedCommand> commands = station.beltpack->Commands();
    int asked = 0;
    for (std::size_t i = station.commandsBefore; i < commands.size(); ++i) {
      asked += commands[i].text == "rfps" ? 1 : 0;
    }
    // A report has come whole before the next command is sent.
    const bool isLastOpen =
        commands.size() > station.commandsBefore && commands.back().text == "rfps";
    int reports = 0;
    std::string journal;
    for (const auto& entry : std::filesystem::directory_iterator(JournalFolder(station.folder))) {
      journal = ReadTextFile(entry.path().string());
      EXPECT_EQ(journal.find("\x01!end\x02"), std::string::npos);
      reports += ReplayedTrace(journal).model.ReportCount();
    }
    EXPECT_GE(reports - station.reports, asked - (isLastOpen ? 1 : 0)) << journal;
    EXPECT_LE(reports - station.reports, asked) << journal;
    station.reports = reports;
    const std::size_t last = journal.rfind("\x01rfps\x02");
    if (isLastOpen && last != std::string::npos) {
      const auto lines =
          std::count(journal.begin() + static_cast<std::ptrdiff_t>(last), journal.end(), '\n');
      withinAReport_ += lines > 0 && lines < link::kRfpsReportLines ? 1 : 0;
    }
  }

  /// The folder of a station's journals, made if the program had not made it.
  static std::string JournalFolder(const std::string& folder) {
    std::string sessions = folder + "/CorvanaSync/sessions";
    std::filesystem::create_directories(sessions);
    return sessions;
  }

  int continued_ = 0;
  int withinAReport_ = 0;
};

TEST_F(ContinuedSessionTest, HoldsEveryWholeReportOnceAfterEachOfManyKills) {
  constexpr int kStations = 25;
  constexpr int kLongestMilliseconds = 7000;
  // A soak takes its time.
  const int rounds = std::getenv("KELVARA_SOAK_MINUTES") != nullptr ? 8 : 2;
  std::mt19937 random(25);
  std::vector<Station> stations;
  for (int number = 0; number < kStations; ++number) {
    stations.push_back(Prepare(std::to_string(number)));
  }
  for (int round = 0; round < rounds; ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
    for (Station& station : stations) {
      Start(station);
    }
    for (Station& station : stations) {
      Continue(station);
    }
    const auto start = std::chrono::steady_clock::now();
    std::vector<Station*> order;
    for (Station& station : stations) {
      station.end =
          start + milliseconds(std::uniform_int_distribution<int>(0, kLongestMilliseconds)(random));
      order.push_back(&station);
    }
    std::sort(order.begin(), order.end(),
              [](const Station* one, const Station* other) { return one->end < other->end; });
    for (Station* const station : order) {
      std::this_thread::sleep_until(station->end);
      station->program->Signal(SIGKILL);
      EXPECT_EQ(station->program->Finish().signal, SIGKILL);
    }
    for (Station& station : stations) {
      ExpectNothingLost(station);
    }
  }
  EXPECT_GT(continued_, (rounds - 1) * kStations / 2);
  EXPECT_GT(withinAReport_, 0);
}

}  // namespace
}  // namespace kelvara::test
