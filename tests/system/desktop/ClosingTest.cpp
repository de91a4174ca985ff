#include <csignal>
#include <filesystem>
#include <functional>

#include "system/desktop/DesktopSession.h"

namespace kelvara::test {
namespace {

/// A window other than the main window, and how to open it.
struct WindowCase {
  std::string title;
  std::string text;  ///< The text of a message; empty for other windows.
  std::function<void(const DesktopProgram&)> go;
};

const std::string kCapture = "Capture Sync Reports To File";
const std::string kReport = "Generate Reoprt";

void StartCaptureAs(const DesktopProgram& program, const std::string& name) {
  program.Choose({"Tools", "Log Data To File..."});
  const DesktopWindow dialog = program.Open(kCapture);
  program.FillIn(dialog, "File", name);
  program.PressButton(dialog, "Start");
}

void GenerateReportAs(const DesktopProgram& program, const std::string& name) {
  program.Choose({"Tools", "Generate AA Cable Length Report..."});
  const DesktopWindow dialog = program.Open(kReport);
  program.FillIn(dialog, "File", name);
  program.PressButton(dialog, "Generate Report");
}

/// Runs programs with the built-in beltpack but without help pages or a way to open documents.
class ClosingTest : public DesktopSession {
 protected:
  ClosingTest() {
    std::filesystem::remove_all(PathOf("bin/Help"));
    std::filesystem::remove(PathOf("tools/xdg-open"));
    Write("older.html", "an older report");
  }

  /// The windows that do not need readings.
  std::vector<WindowCase> WindowsWithoutReadings() const {
    const auto menu = [](const std::vector<std::string>& entries) {
      return [entries](const DesktopProgram& program) { program.Choose(entries); };
    };
    return {{"Report Can't Be Generated", "No phase information has been captured.",
             menu({"Tools", "Generate AA Cable Length Report..."})},
            {"About Kelvara", "", menu({"Help", "About Kelvara..."})},
            {"Kelvara Help",
             "Error occured while attempting to display " + PathOf("bin") + "\\Help\\index.htm",
             menu({"Help", "Help"})},
            {"Halden Group Communications Website", "Could not connect to the HGC Website.",
             menu({"Help", "Halden Group Comms Website"})},
            {"Converter", "", menu({"Tools", "Converter"})},
            {"Kelvara Debug", "", menu({"Options", "View Debug", "On"})},
            {"Select Serial Port", "", menu({"File", "Select COM Port..."})},
            {kCapture, "", menu({"Tools", "Log Data To File..."})},
            {"Select a file to log to", "",
             [](const DesktopProgram& program) {
               program.Choose({"Tools", "Log Data To File..."});
               program.PressButton(program.Open(kCapture), "Browse...");
             }},
            {"File Error", "Could not start Logging to specified file.",
             [this](const DesktopProgram& program) {
               StartCaptureAs(program, PathOf("no-such-folder/log.txt"));
             }},
            {"Select a file to write to", "", [](const DesktopProgram& program) {
               program.OpenGridMenu();
               program.Press(program.MainWindow(), {"Down", "Return"});
             }}};
  }

  /// The windows that need readings.
  std::vector<WindowCase> WindowsWithReadings() const {
    const auto generate = [](const std::string& name) {
      return [name](const DesktopProgram& program) { GenerateReportAs(program, name); };
    };
    return {
        {kReport, "",
         [](const DesktopProgram& program) {
           program.Choose({"Tools", "Generate AA Cable Length Report..."});
         }},
        {"Select a file to write to", "",
         [](const DesktopProgram& program) {
           program.Choose({"Tools", "Generate AA Cable Length Report..."});
           program.PressButton(program.Open(kReport), "Browse...");
         }},
        {"Generate Report",
         PathOf("older.html") + " already exists.\r\n\r\nDo you want to replace it?",
         generate(PathOf("older.html"))},
        {"File not specified", "A filename must be specified\r\nCan't generate report.",
         generate("")},
        {"Generate Report", "Error occured while generating report.\r\nCheck the filename and path",
         generate(PathOf("no-such-folder/report.html"))},
        {"Web Browser Error", "Could not open the HTML formatted report.",
         generate(PathOf("report.html"))}};
  }

  static void AwaitReadings(const DesktopProgram& program) {
    DesktopProgram::Await("a report", [&] { return program.GridRows() > 1; });
  }

  /// Closes every window except the main window with the close button of its frame.
  static void CloseOthers(const DesktopProgram& program) {
    for (auto others = program.OtherWindows(); !others.empty(); others = program.OtherWindows()) {
      program.RequestClose(others.front());
      program.WaitUntilClosed(others.front());
    }
  }
};

TEST_F(ClosingTest, EachWindowCanBeClosedByItsFrameAndTheProgramContinues) {
  auto program = Start({"--demo"});
  const auto visit = [&](const std::vector<WindowCase>& cases) {
    for (const WindowCase& windowCase : cases) {
      SCOPED_TRACE(windowCase.title);
      windowCase.go(*program);
      const DesktopWindow window = program->Open(windowCase.title);
      if (!windowCase.text.empty()) {
        EXPECT_EQ(program->MessageText(window), windowCase.text);
      }
      CloseOthers(*program);
      EXPECT_FALSE(program->IsOpen(window));
    }
  };
  visit(WindowsWithoutReadings());
  EXPECT_FALSE(program->IsChecked({"Options", "View Debug", "On"}));
  // The capture that could not start drops every report until it is stopped.
  DesktopProgram::Await("a dropped report", [&] {
    return program->Notice().rfind("Reports are being dropped: ", 0) == 0;
  });
  program->Press(program->MainWindow(), {"alt+n"});
  AwaitReadings(*program);
  visit(WindowsWithReadings());
  EXPECT_EQ(Read("older.html"), "an older report");
  program->RequestClose(program->MainWindow());
  ExpectCleanEnd(*program);
}

TEST_F(ClosingTest, TheEndOfTheProgramClosesItsOtherWindows) {
  const std::vector<std::function<void(const DesktopProgram&)>> ends = {
      [](const DesktopProgram& program) {
        program.Choose({"File", "Exit"});
      },
      [](const DesktopProgram& program) {
        program.Press(program.MainWindow(), {"alt+f", "e"});
      },
      [](const DesktopProgram& program) { program.RequestClose(program.MainWindow()); }};
  for (const auto& end : ends) {
    auto program = Start({"--demo"});
    program->Choose({"Tools", "Converter"});
    program->Open("Converter");
    program->Choose({"Options", "View Debug", "On"});
    program->Open("Kelvara Debug");
    EXPECT_EQ(program->OtherWindows().size(), 2U);
    end(*program);
    ExpectCleanEnd(*program);
  }
}

TEST_F(ClosingTest, APortThatCannotBeOpenedLeavesAProgramThatCanBeClosed) {
  const Arguments arguments = {"--com", "1=" + PathOf("no-such-device")};
  auto program = Start(arguments);
  const DesktopWindow message = program->Open("Kelvara");
  EXPECT_EQ(program->MessageText(message), "Could not open COM  1");
  program->RequestClose(message);
  program->WaitUntilClosed(message);
  const DesktopWindow dialog = program->Open("Select Serial Port");
  program->RequestClose(dialog);
  program->WaitUntilClosed(dialog);
  program->Press(program->MainWindow(), {"alt+f", "e"});
  ExpectCleanEnd(*program);
  EXPECT_EQ(Settings(), "");
}

/// Programs that the system terminates while they show a window.
class TerminationTest : public ClosingTest {
 protected:
  /// Expects the program to end as by Exit, with complete lines in its capture file.
  void ExpectTerminated(DesktopProgram& program, const std::string& log) const {
    program.Signal(SIGTERM);
    const ProcessResult result = program.Finish();
    EXPECT_FALSE(result.timedOut);
    EXPECT_EQ(result.signal, 0);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(Complaints(result), "");
    ASSERT_FALSE(CapturedLines(log).empty());
    EXPECT_NE(CapturedLines(log).front().find(", Log To File Started"), std::string::npos);
  }

  /// Whether opening the window leads through the capture window.
  static bool IsOfCapture(const WindowCase& windowCase) {
    return windowCase.title == kCapture || windowCase.title == "Select a file to log to" ||
           windowCase.title == "File Error";
  }
};

TEST_F(TerminationTest, EndsTheProgramWithAnyWindowOpen) {
  for (const WindowCase& windowCase : WindowsWithoutReadings()) {
    SCOPED_TRACE(windowCase.title);
    auto program = Start({"--demo"});
    if (!IsOfCapture(windowCase)) {
      Capture(*program, "log.txt");
    }
    windowCase.go(*program);
    program->Open(windowCase.title);
    ExpectTerminated(*program, "log.txt");
    EXPECT_EQ(Settings(), "[Settings]\nLastFile=" + PathOf("log.txt") + "\n");
  }
}

TEST_F(TerminationTest, EndsTheProgramWithAnyReportWindowOpen) {
  struct Run {
    std::unique_ptr<VirtualScreen> screen;
    std::unique_ptr<DesktopProgram> program;
    WindowCase windowCase;
    std::string log;
  };
  std::vector<Run> runs;
  for (const WindowCase& windowCase : WindowsWithReadings()) {
    auto where = std::make_unique<VirtualScreen>(PathOf("run"));
    auto program = StartOn(*where, {"--demo"});
    const std::string log = std::to_string(runs.size()) + ".txt";
    Capture(*program, log);
    runs.push_back({std::move(where), std::move(program), windowCase, log});
  }
  for (Run& run : runs) {
    SCOPED_TRACE(run.windowCase.title);
    AwaitReadings(*run.program);
    run.windowCase.go(*run.program);
    run.program->Open(run.windowCase.title);
    ExpectTerminated(*run.program, run.log);
    EXPECT_GE(CapturedReadings(run.log).size(), 1U);
  }
}

}  // namespace
}  // namespace kelvara::test
