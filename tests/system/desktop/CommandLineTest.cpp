#include <filesystem>

#include "system/desktop/DesktopTest.h"

namespace kelvara::test {
namespace {

class CommandLineTest : public DesktopTest {
 protected:
  ProcessResult Run(const Arguments& arguments) const {
    return RunProcess(Request(arguments), DesktopProgram::kPatience);
  }

  /// Expects the program to end before it shows a window, with one line on standard error that
  /// names what is wrong.
  void ExpectComplaint(const Arguments& arguments, int exitCode, const std::string& named) const {
    ExpectComplaint(Request(arguments), exitCode, named);
  }
  void ExpectComplaint(const ProcessRequest& request, int exitCode,
                       const std::string& named) const {
    SCOPED_TRACE(::testing::PrintToString(request.arguments));
    const ProcessResult result = RunProcess(request, DesktopProgram::kPatience);
    EXPECT_FALSE(result.timedOut);
    EXPECT_EQ(result.exitCode, exitCode);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors.rfind("kelvara: ", 0), 0U) << result.errors;
    EXPECT_EQ(result.errors.find('\n'), result.errors.size() - 1) << result.errors;
    EXPECT_NE(result.errors.find(named), std::string::npos) << result.errors;
    EXPECT_EQ(Settings(), "");
  }
};

TEST_F(CommandLineTest, AWrongCommandLineIsRefusedInOneLine) {
  ExpectComplaint({"--unknown"}, 2, "--unknown");
  ExpectComplaint({"-x"}, 2, "-x");
  ExpectComplaint({"one.trace", "two.trace"}, 2, "two.trace");
  for (const Arguments& live : std::vector<Arguments>{{"--demo"},
                                                      {"--site", "site.txt"},
                                                      {"--com", "1=device"},
                                                      {"--raw", "raw.trace"},
                                                      {"--no-journal"},
                                                      {"--test-report"}}) {
    Arguments arguments = live;
    arguments.emplace_back("one.trace");
    ExpectComplaint(arguments, 2, live[0]);
  }
  ExpectComplaint({"--com"}, 2, "--com");
  ExpectComplaint({"--site"}, 2, "--site");
  // The desktop library's own options are not accepted.
  ExpectComplaint({"-style", "fusion"}, 2, "-style");
}

TEST_F(CommandLineTest, AnUnusableFileIsReportedInOneLine) {
  ExpectComplaint({"--site", PathOf("no-such-site.txt")}, 1, "no-such-site.txt");
  Write("site.txt", "1 2 3\n");
  ExpectComplaint({"--site", PathOf("site.txt")}, 1, "line 1");
  ExpectComplaint({"--demo", "--raw", PathOf("no-such-folder/trace.txt")}, 1, "no-such-folder");
  EXPECT_FALSE(Exists("no-such-folder"));
}

TEST_F(CommandLineTest, TheVersionAndTheHelpNeedNoScreen) {
  ProcessRequest request = Request({"--version"});
  request.environment.erase("DISPLAY");
  const ProcessResult version = RunProcess(request);
  EXPECT_EQ(version.exitCode, 0);
  EXPECT_EQ(version.output, "Kelvara v1.1.0\n");
  EXPECT_EQ(version.errors, "");

  request.arguments.back() = "--help";
  const ProcessResult help = RunProcess(request);
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_EQ(help.errors, "");
  for (const char* const option : {"--demo", "--site", "--com", "--raw", "--no-journal",
                                   "--test-report", "--help", "--version"}) {
    EXPECT_NE(help.output.find(option), std::string::npos) << option;
  }
}

TEST_F(CommandLineTest, AFailureToPrintTheVersionOrHelpIsReported) {
  for (const char* const option : {"--version", "--help"}) {
    ProcessRequest request = Request({option});
    request.outputPath = "/dev/full";
    ExpectComplaint(request, 1, "standard output");
  }
}

TEST_F(CommandLineTest, WithoutADisplayTheConsoleProgramIsSuggested) {
  const std::string named = "no display can be opened; kelvara-cli";
  ProcessRequest request = Request({"--demo"});
  request.environment["DISPLAY"] = ":54321";
  ExpectComplaint(request, 1, named);
  request.environment.erase("DISPLAY");
  ExpectComplaint(request, 1, named);
  request.environment.erase("QT_QPA_PLATFORM");
  ExpectComplaint(request, 1, named);
  request.environment["WAYLAND_DISPLAY"] = "no-such-display";
  ExpectComplaint(request, 1, named);
}

TEST_F(CommandLineTest, AClosedStandardErrorDoesNotStopTheProgram) {
  ProcessRequest request = Request({"--test-report"});
  // The desktop library writes a warning when this folder is not set.
  request.environment.erase("XDG_RUNTIME_DIR");
  const ProcessResult withReader = RunProcess(request, DesktopProgram::kPatience);
  EXPECT_EQ(withReader.exitCode, 0);
  EXPECT_NE(withReader.errors, "");

  const Arguments throughShell = {
      "/bin/sh", "-c",
      "/usr/bin/mkfifo gone; (exec <gone) & exec 2>gone; wait; exec \"$0\" \"$@\""};
  request.arguments.insert(request.arguments.begin(), throughShell.begin(), throughShell.end());
  const ProcessResult withoutReader = RunProcess(request, DesktopProgram::kPatience);
  EXPECT_EQ(withoutReader.signal, 0);
  EXPECT_EQ(withoutReader.exitCode, 0);
  EXPECT_EQ(withoutReader.errors, "");
  const std::string opened = "file://" + PathOf("bin/test.html") + "\n";
  DesktopProgram::Await("two opened documents", [&] {
    return Exists("opened.txt") && Read("opened.txt") == opened + opened;
  });
}

class TestReportTest : public CommandLineTest {
 protected:
  /// A row of the report's table of cable lengths.
  static std::string LengthRow(const std::string& rpn, const std::string& port,
                               const std::string& metres) {
    std::string row = "<tr>\r\n";
    for (const std::string& cell : {std::string("00"), std::string("00"), rpn, port, metres}) {
      row += "<td width=75>";
      row += cell;
      row += "</td>\r\n";
    }
    return row + "</tr>\r\n";
  }
};

TEST_F(TestReportTest, IsWrittenBesideTheProgramAndOpenedThenTheProgramEnds) {
  Write("bin/test.html", "an older one");
  const ProcessResult result = Run({"--test-report"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "");

  const std::string report = Read("bin/test.html");
  for (const char* const text :
       {"<td>HGC</td>\r\n", "<td>Marro</td>\r\n",
        "<td>Test with automatically generated data</td>\r\n", "Kelvara v1.1.0"}) {
    EXPECT_NE(report.find(text), std::string::npos) << text;
  }
  // Delays of (3 + 10) / 2, 0, 10 and 10 give one step of 130 metres, none, two and two.
  const std::string lengths = LengthRow("0", "600", "130") + LengthRow("1", "606", "0") +
                              LengthRow("2", "612", "260") + LengthRow("3", "618", "260");
  EXPECT_NE(report.find(lengths), std::string::npos) << report;
  EXPECT_EQ(report.substr(report.size() - 9), "</html>\r\n");
  DesktopProgram::Await("the opened document", [&] { return Exists("opened.txt"); });
  EXPECT_EQ(Read("opened.txt"), "file://" + PathOf("bin/test.html") + "\n");
  EXPECT_EQ(Settings(), "");
}

TEST_F(TestReportTest, AFailureToWriteItIsShownAndSetsTheExitCode) {
  std::filesystem::create_directory(PathOf("bin/test.html"));
  auto program = Start({"--test-report"});
  const DesktopWindow message = program->Open("Generate Report");
  EXPECT_EQ(program->MessageText(message),
            "Error occured while generating report.\r\nCheck the filename and path");
  program->Press(message, {"Return"});
  const ProcessResult result = program->Finish(DesktopProgram::kPatience);
  EXPECT_FALSE(result.timedOut);
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.errors, "");
}

}  // namespace
}  // namespace kelvara::test
