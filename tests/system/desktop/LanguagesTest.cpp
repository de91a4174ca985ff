#include <filesystem>
#include <map>
#include <sstream>

#include "system/SiteTruth.h"
#include "system/desktop/BellListener.h"
#include "system/desktop/DesktopSession.h"

namespace kelvara::test {
namespace {

/// The program where the system's text is set to a language that the machine really has, its
/// decimal comma included.
class DesktopLanguagesTest : public DesktopSession,
                             public ::testing::WithParamInterface<const char*> {
 protected:
  DesktopLanguagesTest() : language(GetParam()), bell(*screen) {}

  /// Makes the language, which a machine need not have, in the test's own folder. False when its
  /// sources are not there.
  bool MakeLanguage() const {
    std::filesystem::create_directory(PathOf("languages"));
    if (language.rfind("C", 0) == 0) {
      return true;
    }
    ProcessRequest request;
    request.arguments = {"/usr/bin/localedef",
                         "-i",
                         language.substr(0, language.find('.')),
                         "-f",
                         "UTF-8",
                         "--no-archive",
                         PathOf("languages/" + language)};
    return RunProcess(request).exitCode == 0;
  }

  ProcessRequest Speaking(ProcessRequest request) const {
    request.environment["LOCPATH"] = PathOf("languages");
    request.environment["LC_ALL"] = language;
    return request;
  }

  /// What the machine's own programs take for the decimal point in the language.
  std::string DecimalPoint() const {
    ProcessRequest request = Speaking(Request({}));
    request.arguments = {"/usr/bin/locale", "decimal_point"};
    return RunProcess(request).output;
  }

  std::unique_ptr<DesktopProgram> StartSpeaking(const Arguments& arguments) const {
    return std::make_unique<DesktopProgram>(*screen, *bus, Speaking(Request(arguments)));
  }

  /// Runs kelvara-cli in the language and expects success. Returns standard output.
  std::string OutputSpeaking(const Arguments& arguments) const {
    const ProcessResult result = RunProcess(Speaking(CliRequest(arguments)));
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    return result.output;
  }

  /// What the console program, which speaks no language, converts a length to, by the names of the
  /// fields.
  std::map<std::string, std::string> Converted(const std::string& field,
                                               const std::string& value) const {
    const std::map<std::string, std::string> fields = {{"rfps", "RFPS Phase"},
                                                       {"aasync", "AA Sync Units"},
                                                       {"metres", "Length Metres"},
                                                       {"ohms", "Loop Res (Ohms)"},
                                                       {"delay", "Delay (us)"}};
    std::map<std::string, std::string> texts;
    std::istringstream lines(CliOutput({"convert", field, value}));
    for (std::string name, text; lines >> name >> text;) {
      texts[fields.at(name)] = text;
    }
    return texts;
  }

  void ExpectConverted(const DesktopProgram& program, const DesktopWindow& converter,
                       const std::string& field, const std::string& name,
                       const std::string& value) const {
    SCOPED_TRACE(field + " " + value);
    program.FillIn(converter, name, value);
    program.PressButton(converter, "Update from " + name);
    const auto texts = Converted(field, value);
    EXPECT_EQ(texts.size(), 4U);
    for (const auto& [other, text] : texts) {
      DesktopProgram::Await(
          text + " in the field \"" + other + "\"",
          [&, &wanted = text, &in = other] { return program.FieldText(converter, in) == wanted; });
    }
  }

  const std::string language;
  BellListener bell;
};

/// A report without its date, which has the form that the language gives it.
std::string WithoutDates(std::string html) {
  const std::string before = "<b>Date</b></td>\r\n<td>";
  const std::size_t place = html.find(before) + before.size();
  const std::string date = html.substr(place, html.find("</td>", place) - place);
  EXPECT_FALSE(date.empty());
  for (std::size_t at = html.find(date); at != std::string::npos; at = html.find(date)) {
    html.replace(at, date.size(), "DATE");
  }
  return html;
}

TEST_P(DesktopLanguagesTest, ReportGridAndLogOfATraceAreThoseOfTheConsoleProgram) {
  if (!MakeLanguage()) {
    GTEST_SKIP() << "the machine has no languages to make";
  }
  ASSERT_EQ(DecimalPoint(), language == "de_DE.UTF-8" ? ",\n" : ".\n");
  SimulatedBeltpack beltpack(CliRequest({"simulate", "--site", ExampleSitePath("site-4.txt")}));
  auto program = StartSpeaking({"--com", BeltpackAsPort(1), "--raw", PathOf("trace.txt")});
  program->Choose({"Options", "Display Format", "Metres"});
  Capture(*program, "log.txt");
  beltpack.WaitForCommands(2);
  AwaitReadings("log.txt", 1);
  beltpack.SetFault("silent:always");
  beltpack.WaitForCommands(beltpack.Commands().size() + 1);
  const GridText grid = program->Grid();
  program->Choose({"Tools", "Generate AA Cable Length Report..."});
  const DesktopWindow dialog = program->Open("Generate Reoprt");
  program->FillIn(dialog, "File", PathOf("report.html"));
  program->FillIn(dialog, "Site", "Harbour Theatre");
  program->PressButton(dialog, "Generate Report");
  program->WaitUntilClosed(dialog);
  program->Press(program->MainWindow(), {"alt+f", "e"});
  ExpectCleanEnd(*program);

  EXPECT_GE(FilledCells(grid), 1U);
  EXPECT_EQ(grid, ReplayedGrid("trace.txt", {"--units", "metres"}));
  const std::string report = Read("report.html");
  const Arguments replay = {"replay",   PathOf("trace.txt"),   "--units", "metres",
                            "--report", PathOf("report.html"), "--site",  "Harbour Theatre",
                            "--log",    PathOf("replayed.log")};
  OutputSpeaking(replay);
  EXPECT_EQ(report, Read("report.html"));
  const std::vector<std::string> logged = CapturedReadings("log.txt");
  EXPECT_EQ(logged, CapturedReadings("replayed.log"));
  // The console program of a machine that speaks no language makes the same of it.
  std::filesystem::remove(PathOf("replayed.log"));
  CliOutput(replay);
  EXPECT_EQ(WithoutDates(report), WithoutDates(Read("report.html")));
  EXPECT_EQ(logged, CapturedReadings("replayed.log"));
}

TEST_P(DesktopLanguagesTest, TheConverterTakesAndGivesNumbersWithAPoint) {
  if (!MakeLanguage()) {
    GTEST_SKIP() << "the machine has no languages to make";
  }
  ASSERT_EQ(DecimalPoint(), language == "de_DE.UTF-8" ? ",\n" : ".\n");
  auto program = StartSpeaking({"--demo"});
  program->Choose({"Tools", "Converter"});
  const DesktopWindow converter = program->Open("Converter");
  ExpectConverted(*program, converter, "rfps", "RFPS Phase", "100.5");
  EXPECT_EQ(program->FieldText(converter, "Length Metres"), "2914.500");
  ExpectConverted(*program, converter, "ohms", "Loop Res (Ohms)", ".5");
  ExpectConverted(*program, converter, "delay", "Delay (us)", "1.25");

  const std::string metres = program->FieldText(converter, "Length Metres");
  const int beeps = bell.Count();
  EXPECT_EQ(beeps, 0);
  program->FillIn(converter, "RFPS Phase", "100,5");
  program->PressButton(converter, "Update from RFPS Phase");
  DesktopProgram::Await("a beep", [&] { return bell.Count() > beeps; });
  EXPECT_EQ(program->FieldText(converter, "Length Metres"), metres);
  EXPECT_EQ(program->FieldText(converter, "RFPS Phase"), "100,5");
  program->RequestClose(program->MainWindow());
  ExpectCleanEnd(*program);
}

INSTANTIATE_TEST_SUITE_P(Languages, DesktopLanguagesTest,
                         ::testing::Values("C", "de_DE.UTF-8", "en_US.UTF-8"),
                         [](const auto& tested) {
                           const std::string name = tested.param;
                           return name.substr(0, name.find('.'));
                         });

}  // namespace
}  // namespace kelvara::test
