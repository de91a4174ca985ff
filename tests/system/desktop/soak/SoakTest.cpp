#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <regex>
#include <thread>

#include "support/WaitUntil.h"
#include "system/SiteTruth.h"
#include "system/desktop/DesktopSession.h"
#include "system/desktop/soak/FailingLine.h"
#include "system/desktop/soak/ProcessWatch.h"
#include "system/desktop/soak/RestlessUser.h"

namespace kelvara::test {
namespace {

namespace fs = std::filesystem;

/// A value given by the calling script in an environment variable; empty if there is none.
std::string Asked(const char* name) {
  const char* const text = std::getenv(name);
  return text == nullptr ? "" : text;
}

std::string Listed(const std::map<std::string, int>& counts) {
  std::string text;
  for (const auto& [name, count] : counts) {
    text += (text.empty() ? "" : ", ") + name + ' ' + std::to_string(count);
  }
  return text;
}

int Median(std::vector<int> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

std::vector<int> Values(const ProcessWatch::Samples& samples, int ProcessSample::*member) {
  std::vector<int> values;
  for (const ProcessSample& sample : samples) {
    values.push_back(sample.*member);
  }
  return values;
}

/// Whether the runs occur in the whole, one after another.
bool AreRuns(const std::vector<std::vector<std::string>>& runs,
             const std::vector<std::string>& whole) {
  auto at = whole.begin();
  for (const std::vector<std::string>& run : runs) {
    at = std::search(at, whole.end(), run.begin(), run.end());
    if (at == whole.end() && !run.empty()) {
      return false;
    }
    at += static_cast<std::ptrdiff_t>(run.size());
  }
  return true;
}

/// Leaves a session, a review and a failing line to a restless user for minutes or hours, then
/// prints what must hold together with what was measured.
class SoakTest : public DesktopSession {
 protected:
  static constexpr const char* kTrace = "line.trace";
  static constexpr const char* kErrors = "errors.txt";
  static constexpr const char* kReviewErrors = "review-errors.txt";
  static constexpr int kMostGrowthKilobytes = 2048;
  /// The port and its lock, the log, the trace, the journal, standard error, and files being
  /// written.
  static constexpr int kMostFiles = 8;

  void TearDown() override {
    const std::string keep = Asked("KELVARA_SOAK_KEEP");
    if (keep.empty()) {
      return;
    }
    for (const fs::directory_entry& entry : fs::directory_iterator(folder.Path())) {
      if (entry.is_regular_file() || entry.path().filename() == "config") {
        fs::copy(entry, keep / entry.path().filename(), fs::copy_options::recursive);
      }
    }
  }

  static void Check(bool holds, const std::string& what) {
    std::cout << (holds ? "ok      " : "WRONG   ") << what << std::endl;
    EXPECT_TRUE(holds) << what;
  }

  /// The request that starts the program without a screen reader's bus, which would add to its
  /// memory, and with standard error in a file, as nothing reads a pipe for hours.
  ProcessRequest SoakRequest(const Arguments& arguments, const std::string& errors) const {
    ProcessRequest request = Request(arguments);
    request.environment["DBUS_SESSION_BUS_ADDRESS"] = "disabled:";
    const Arguments shell = {"/bin/sh", "-c", "exec \"$0\" \"$@\" 2>" + errors};
    request.arguments.insert(request.arguments.begin(), shell.begin(), shell.end());
    return request;
  }

  ProcessRequest ReviewRequest() const {
    CliOutput({"record", "--demo", "--speed", "1000", "--reports", "300", "--raw",
               PathOf("recorded.trace")});
    return SoakRequest({PathOf("recorded.trace")}, kReviewErrors);
  }

  static bool HasEndedWell(const ProcessResult& result) {
    return !result.timedOut && result.signal == 0 && result.exitCode == 0;
  }

  void CheckComplaints() const {
    const std::string complaints = Read(kErrors) + Read(kReviewErrors);
    Check(complaints.empty(), "the programs complained of nothing " + complaints);
  }

  /// The number of handles at rest in a quarter.
  static int FewestHandles(const ProcessWatch& watch, std::size_t quarter) {
    const std::vector<int> handles = Values(watch.Quarter(quarter), &ProcessSample::handles);
    return *std::min_element(handles.begin(), handles.end());
  }

  /// Waits for idle threads to end, which takes half a minute.
  static void LetThreadsEnd(ProcessWatch& watch) {
    constexpr std::chrono::seconds kLimit{40};
    const int before = FewestHandles(watch, 1);
    WaitUntil(
        [&] {
          watch.Look();
          return watch.All().back().handles <= before;
        },
        kLimit);
  }

  static void CheckWatch(const std::string& program, const ProcessWatch& watch) {
    std::vector<int> memory;
    std::string memories;
    for (std::size_t quarter = 0; quarter < 4; ++quarter) {
      memory.push_back(Median(Values(watch.Quarter(quarter), &ProcessSample::kilobytes)));
      memories += (quarter == 0 ? "" : ", ") + std::to_string(memory.back());
    }
    const std::vector<int> all = Values(watch.All(), &ProcessSample::kilobytes);
    Check(memory[3] - memory[1] <= kMostGrowthKilobytes,
          program + ": memory by quarters " + memories + " kB (the last at most " +
              std::to_string(kMostGrowthKilobytes) + " above the second), " +
              std::to_string(*std::max_element(all.begin(), all.end())) + " kB at most");
    const std::vector<int> files = Values(watch.All(), &ProcessSample::files);
    const int mostFiles = *std::max_element(files.begin(), files.end());
    Check(FewestHandles(watch, 3) <= FewestHandles(watch, 1) && mostFiles <= kMostFiles,
          program + ": handles at rest: " + std::to_string(FewestHandles(watch, 1)) +
              " in the second quarter, " + std::to_string(FewestHandles(watch, 3)) +
              " in the last; port and files: " + std::to_string(mostFiles) + " at most");
  }

  /// The phases of a log's readings, without the RPNs: their base may have changed.
  std::vector<std::string> Phases(const std::string& log) const {
    std::vector<std::string> phases;
    for (const std::string& reading : CapturedReadings(log)) {
      phases.push_back(reading.substr(reading.find('=') + 1));
    }
    return phases;
  }

  void CheckLogs(const std::vector<std::string>& logs) const {
    static const std::regex kEntry(
        "\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d, "
        "([0-9A-F]+(\\[\\w+\\])?->[0-9A-F]+(\\[\\w+\\])?=-?\\d+|[A-Z].+)");
    std::vector<std::vector<std::string>> live;
    std::size_t readings = 0;
    std::string odd;
    for (const std::string& log : logs) {
      for (const std::string& line : CapturedLines(log)) {
        odd = std::regex_match(line, kEntry) ? odd : line;
      }
      live.push_back(Phases(log));
      readings += live.back().size();
    }
    Check(!logs.empty() && odd.empty(),
          "every line of " + std::to_string(logs.size()) + " logs is whole " + odd);
    CliOutput({"replay", PathOf(kTrace), "--log", PathOf("replayed.txt"), "--json",
               PathOf("replayed.json")});
    const std::vector<std::string> replayed = Phases("replayed.txt");
    const int reports = ParsedResults(Read("replayed.json"))["reports"].toInt();
    Check(readings > 0 && AreRuns(live, replayed),
          std::to_string(readings) + " readings captured live are " + std::to_string(live.size()) +
              " unbroken runs of the " + std::to_string(replayed.size()) +
              " replayed from the trace of " + std::to_string(reports) + " reports");
  }

  /// The trace has a mark for each clear that was undone.
  void CheckUndos() const {
    const std::string trace = Read(kTrace);
    const std::string mark = "\x01!undo\x02";
    int undos = 0;
    for (std::size_t at = trace.find(mark); at != std::string::npos;
         at = trace.find(mark, at + 1)) {
      ++undos;
    }
    Check(undos > 0, std::to_string(undos) + " clears of results were undone");
  }

  void CheckReportsAndSettings(bool isReported) const {
    int written = 0;
    for (const std::string& name : RestlessUser::Reports()) {
      if (Exists(name)) {
        const std::string text = Read(name);
        Check(text.starts_with("<") && text.ends_with("</html>\r\n"),
              name + " is whole (" + std::to_string(text.size()) + " bytes)");
        ++written;
      }
    }
    Check((written > 0) == isReported, std::to_string(written) + " reports were written");
    const std::string settings = Settings();
    static const std::regex kSettings("((\\[\\w+\\]|\\w+=.*|)\n)*");
    Check(!settings.empty() && std::regex_match(settings, kSettings),
          "the settings of " + std::to_string(settings.size()) + " bytes are whole");
  }
};

TEST_F(SoakTest, NothingIsLostAndNothingGrowsUnderARestlessUserAndAFailingLine) {
  const std::string minutes = Asked("KELVARA_SOAK_MINUTES");
  const std::string seed = Asked("KELVARA_SOAK_SEED");
  ASSERT_FALSE(minutes.empty() || seed.empty()) << "run this through scripts/soak";
  const auto end = std::chrono::steady_clock::now() +
                   std::chrono::seconds(static_cast<int>(std::stod(minutes) * 60));
  const auto number = static_cast<unsigned>(std::stoul(seed));
  std::mt19937 chanceOfUser(number);
  std::mt19937 chanceOfLine(number + 1);
  SimulatedBeltpack beltpack(CliRequest({"simulate", "--seed", seed}));
  // The window opened last lies above the other.
  DesktopProgram review(*screen, *bus, ReviewRequest());
  review.MainWindow();
  DesktopProgram program(
      *screen, *bus, SoakRequest({"--com", BeltpackAsPort(1), "--raw", PathOf(kTrace)}, kErrors));
  // Opened after the programs have started, which would inherit it.
  std::ofstream journal(PathOf("actions.txt"));
  RestlessUser user(*screen, program, review, chanceOfUser, journal);
  FailingLine line(beltpack, chanceOfLine);
  ProcessWatch watch(program.Id(), folder.Path());
  ProcessWatch reviewWatch(review.Id(), folder.Path());
  try {
    user.StartLog();
    // Anything shown for the first time takes memory and handles that are kept.
    user.ActAll();
    while (std::chrono::steady_clock::now() < end) {
      user.Act();
      line.Turn();
      watch.Look();
      reviewWatch.Look();
      std::this_thread::sleep_for(std::chrono::milliseconds(500));
    }
    line.Repair();
    user.AnswerBoxes();
    watch.Look();
    LetThreadsEnd(watch);
    LetThreadsEnd(reviewWatch);
    review.RequestClose(review.MainWindow());
    user.Exit();
  } catch (...) {
    screen->SavePicture({QPoint(0, 0), VirtualScreen::kSize}, PathOf("screen.png"));
    std::cout << "The program's standard error:\n" << Read(kErrors);
    throw;
  }
  const ProcessResult result = program.Finish(DesktopProgram::kPatience);
  std::cout << "User:   " << Listed(user.Counts()) << "\nLine:   " << Listed(line.Counts())
            << std::endl;
  const ProcessResult resultOfReview = review.Finish(DesktopProgram::kPatience);
  Check(HasEndedWell(result), "Exit ends the program");
  Check(HasEndedWell(resultOfReview), "closing its window ends the review");
  CheckComplaints();
  CheckWatch("session", watch);
  CheckWatch("review", reviewWatch);
  CheckUndos();
  CheckLogs(user.Logs());
  CheckReportsAndSettings(user.Counts().contains("report to a file"));
}

}  // namespace
}  // namespace kelvara::test
