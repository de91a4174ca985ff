#include <filesystem>
#include <map>
#include <sstream>

#include "system/desktop/BellListener.h"
#include "system/desktop/DesktopSession.h"

namespace kelvara::test {
namespace {

/// Runs the program in an installed language with a decimal comma.
class DesktopLanguagesTest : public DesktopSession {
 protected:
  /// Builds the language in the test's folder, as a machine need not have it. False if its sources
  /// are missing.
  bool MakeLanguage() const {
    std::filesystem::create_directory(PathOf("languages"));
    ProcessRequest request;
    request.arguments = {
        "/usr/bin/localedef",           "-i", "de_DE", "-f", "UTF-8", "--no-archive",
        PathOf("languages/de_DE.UTF-8")};
    return RunProcess(request).exitCode == 0;
  }

  ProcessRequest InGerman(ProcessRequest request) const {
    request.environment["LOCPATH"] = PathOf("languages");
    request.environment["LC_ALL"] = "de_DE.UTF-8";
    return request;
  }

  /// The decimal point in the language according to the machine's own programs.
  std::string DecimalPoint() const {
    ProcessRequest request = InGerman(Request({}));
    request.arguments = {"/usr/bin/locale", "decimal_point"};
    return RunProcess(request).output;
  }

  /// The results of the console program, which ignores the language, by the names of the fields.
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

  BellListener bell{*screen};
};

TEST_F(DesktopLanguagesTest, TheConverterReadsAndWritesNumbersWithADecimalPoint) {
  if (!MakeLanguage()) {
    GTEST_SKIP() << "the machine needs the sources of the languages (the package locales)";
  }
  ASSERT_EQ(DecimalPoint(), ",\n");
  auto program = std::make_unique<DesktopProgram>(*screen, *bus, InGerman(Request({"--demo"})));
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

}  // namespace
}  // namespace kelvara::test
