#include <algorithm>
#include <regex>

#include "system/SiteTruth.h"
#include "system/desktop/DesktopSession.h"

namespace kelvara::test {
namespace {

/// A session from the start to the report, at a site of four antennas.
class WholeSessionTest : public DesktopSession {
 protected:
  WholeSessionTest() : beltpack(CliRequest({"simulate", "--site", ExampleSitePath("site-4.txt")})) {
    program = Start({"--com", BeltpackAsPort(1), "--raw", PathOf("trace.txt")});
  }

  void ChooseOptions() const {
    program->Choose({"Options", "Display Log", "On"});
    program->Choose({"Options", "Display Format", "Metres"});
    program->Choose({"Options", "RPN Display Base", "Hex"});
    program->Choose({"Options", "Display FPS", "On"});
  }

  /// Chooses a file in a file chooser by typing its full path.
  void ChooseFile(const std::string& title, const std::string& button,
                  const std::string& name) const {
    const DesktopWindow chooser = program->Open(title);
    program->FillIn(chooser, "File name:", PathOf(name));
    program->PressButton(chooser, button);
    program->WaitUntilClosed(chooser);
  }

  void CaptureToChosenFile(const std::string& name) const {
    program->Choose({"Tools", "Log Data To File..."});
    const DesktopWindow dialog = program->Open("Capture Sync Reports To File");
    program->PressButton(dialog, "Browse...");
    ChooseFile("Select a file to log to", "Open", name);
    EXPECT_EQ(program->FieldText(dialog, "File"), PathOf(name));
    program->PressButton(dialog, "Start");
    program->WaitUntilClosed(dialog);
  }

  /// Lets the beltpack answer `count` commands, then waits until the grid has been redrawn.
  void TakeReports(std::size_t count) {
    beltpack.WaitForCommands(count);
    beltpack.SetFault("silent:always");
    beltpack.WaitForCommands(count + 1);
  }

  void ExportResults(const std::string& name) const {
    program->OpenGridMenu();
    program->Press(program->MainWindow(), {"Down", "Return"});
    ChooseFile("Select a file to write to", "Save", name);
    DesktopProgram::Await("the exported results", [&] { return Exists(name); });
  }

  void WriteReport(const std::string& name) const {
    program->Choose({"Tools", "Generate AA Cable Length Report..."});
    const DesktopWindow dialog = program->Open("Generate Reoprt");
    program->FillIn(dialog, "File", PathOf(name));
    program->FillIn(dialog, "Site", "Harbour Theatre");
    program->FillIn(dialog, "Tester", "R. Marlow");
    program->FillIn(dialog, "Notes", "All doors closed");
    program->PressButton(dialog, "Generate Report");
    program->WaitUntilClosed(dialog);
  }

  void ExpectSettings(const std::vector<std::string>& lines) const {
    const std::string settings = "\n" + Settings();
    for (const std::string& line : lines) {
      EXPECT_NE(settings.find("\n" + line + "\n"), std::string::npos) << line << "\n" << settings;
    }
  }

  /// Expects the log to be its start entry and the last readings of the trace, in complete lines.
  void ExpectLogOfTrace(const std::string& log) const {
    const std::vector<std::string> lines = CapturedLines(log);
    ASSERT_FALSE(lines.empty());
    EXPECT_NE(lines.front().find(", Log To File Started"), std::string::npos) << lines.front();
    const std::vector<std::string> logged = CapturedReadings(log);
    EXPECT_EQ(logged.size(), lines.size() - 1);
    EXPECT_GE(logged.size(), 2U);
    const std::vector<std::string> replayed = CapturedReadings("replayed.log");
    ASSERT_GE(replayed.size(), logged.size());
    EXPECT_TRUE(std::equal(logged.rbegin(), logged.rend(), replayed.rbegin()))
        << ::testing::PrintToString(logged) << ::testing::PrintToString(replayed);
    const std::regex form("[0-9A-F]{2}\\[[0-9A-F]\\]->[0-9A-F]{2}\\[[0-9A-F]\\]=-?[0-9]+");
    for (const std::string& reading : logged) {
      EXPECT_TRUE(std::regex_match(reading, form)) << reading;
    }
  }

  SimulatedBeltpack beltpack;
  std::unique_ptr<DesktopProgram> program;
};

/// The text after the first line, which contains the time.
std::string WithoutFirstLine(const std::string& text) { return text.substr(text.find('\n')); }

TEST_F(WholeSessionTest, TheGridFillsTheLogIsCapturedAndTheReportIsCorrect) {
  ChooseOptions();
  CaptureToChosenFile("readings.txt");
  TakeReports(3);
  const GridText grid = program->Grid();
  const std::string logBox = program->LogText();
  ExportResults("results.csv");
  WriteReport("report.html");
  DesktopProgram::Await("the opened report", [&] { return Exists("opened.txt"); });
  program->Press(program->MainWindow(), {"alt+f", "e"});
  ExpectCleanEnd(*program);

  const Arguments options = {"--units", "metres", "--rpn", "hex", "--fps", "on"};
  EXPECT_EQ(grid, ReplayedGrid("trace.txt", options));
  EXPECT_EQ(grid.size(), 5U);
  EXPECT_GE(FilledCells(grid), 3U);

  const std::string report = Read("report.html");
  Arguments replay = {"replay",  PathOf("trace.txt"),   "--report", PathOf("report.html"),
                      "--site",  "Harbour Theatre",     "--tester", "R. Marlow",
                      "--notes", "All doors closed",    "--csv",    PathOf("replayed.csv"),
                      "--log",   PathOf("replayed.log")};
  replay.insert(replay.end(), options.begin(), options.end());
  EXPECT_EQ(CliOutput(replay), "Reports: 3\nAAs: 4\n");
  EXPECT_EQ(report, Read("report.html"));
  EXPECT_EQ(WithoutFirstLine(Read("results.csv")), WithoutFirstLine(Read("replayed.csv")));
  ExpectLogOfTrace("readings.txt");
  std::string logFile = Read("readings.txt");
  logFile.erase(std::remove(logFile.begin(), logFile.end(), '\r'), logFile.end());
  EXPECT_NE(logBox.find(logFile), std::string::npos) << logBox;

  EXPECT_EQ(Read("opened.txt"), "file://" + PathOf("report.html") + "\n");
  EXPECT_EQ(Read("bin/rfields.ds"), "Harbour Theatre\r\nR. Marlow\r\n 1 \r\nAll doors closed\r\n");
  ExpectSettings({"DisplayLog=True", "RFPSUnits=2", "RPNUnits=1", "FPSDisplay=True",
                  "LastFile=" + PathOf("readings.txt"), "LastReportFile=" + PathOf("report.html")});
}

using FileNamesTest = DesktopSession;

TEST_F(FileNamesTest, NeedNotBeText) {
  Write("site\xE9.txt", "1 0 90 50\n2 1 90 100\n");
  Write(kSettingsFile, "[Settings]\nLastReportFile=" + PathOf("report\xE9.html") + "\n");
  auto program = Start({"--site", PathOf("site\xE9.txt"), "--raw", PathOf("trace\xE9.txt")});
  DesktopProgram::Await("a report", [&] { return program->GridRows() > 1; });
  program->Choose({"Tools", "Generate AA Cable Length Report..."});
  const DesktopWindow dialog = program->Open("Generate Reoprt");
  program->PressButton(dialog, "Generate Report");
  program->WaitUntilClosed(dialog);
  DesktopProgram::Await("the opened report", [&] { return Exists("opened.txt"); });
  program->RequestClose(program->MainWindow());
  ExpectCleanEnd(*program);
  EXPECT_NE(Read("trace\xE9.txt"), "");
  EXPECT_TRUE(Read("report\xE9.html").ends_with("</html>\r\n"));
  EXPECT_EQ(Read("opened.txt"), "file://" + PathOf("report%E9.html") + "\n");
}

}  // namespace
}  // namespace kelvara::test
