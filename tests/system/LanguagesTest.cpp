#include <gtest/gtest.h>

#include <regex>

#include "support/Golden.h"
#include "system/CliTest.h"

namespace kelvara::test {
namespace {

/// Runs the program in installed languages, one of which has a decimal comma.
class LanguagesTest : public CliTest {
 protected:
  static constexpr const char* kLanguages[] = {"C", "C.UTF-8", "de_DE.UTF-8", "en_US.UTF-8"};

  /// Builds the languages in the test's folder, as a machine need not have them. False if their
  /// sources are missing.
  bool MakeLanguages() const {
    std::filesystem::create_directory(folder.PathOf("languages"));
    for (const std::string language : {"de_DE", "en_US"}) {
      ProcessRequest request;
      request.arguments = {"/usr/bin/localedef",
                           "-i",
                           language,
                           "-f",
                           "UTF-8",
                           "--no-archive",
                           folder.PathOf("languages/" + language + ".UTF-8")};
      if (RunProcess(request).exitCode != 0) {
        return false;
      }
    }
    return true;
  }

  void SetLanguage(const std::string& language) {
    environment["LOCPATH"] = folder.PathOf("languages");
    environment["LC_ALL"] = language;
  }

  /// The decimal point in the current language according to the machine's own programs.
  std::string DecimalPoint() const {
    ProcessRequest request;
    request.arguments = {"/usr/bin/locale", "decimal_point"};
    request.environment = environment;
    return RunProcess(request).output;
  }

  std::string ReadAndRemove(const std::string& name) const {
    std::string text = Read(name);
    std::filesystem::remove(folder.PathOf(name));
    return text;
  }

  /// Everything that the program writes for a recorded session, without the dates.
  std::string Replayed() const {
    std::string all =
        Output({"replay", GoldenPath("four-antennas.session.txt"), "--units", "metres", "--rpn",
                "hex", "--fps", "on", "--log", "log.txt", "--csv", "results.csv", "--report",
                "report.html", "--site", "B\xC3\xBChne", "--json", "results.json", "--grid"});
    all += std::regex_replace(ReadAndRemove("log.txt"), std::regex("(^|\n)[^\n]*M?, "), "\n");
    const std::string csv = ReadAndRemove("results.csv");
    all += csv.substr(csv.find("\r\n"));
    std::string html = ReadAndRemove("report.html");
    const std::string before = "<b>Date</b></td>\r\n<td>";
    const std::size_t place = html.find(before) + before.size();
    const std::string date = html.substr(place, html.find("</td>", place) - place);
    for (std::size_t at = html.find(date); at != std::string::npos; at = html.find(date)) {
      html.replace(at, date.size(), "DATE");
    }
    return all + html + ReadAndRemove("results.json");
  }

  std::string Converted() const {
    std::string all;
    for (const char* field : {"rfps", "aasync", "metres", "ohms", "delay"}) {
      for (const char* value : {"100.5", "-3", ".5", "1e2"}) {
        all += Output({"convert", field, value});
      }
      ExpectComplaint(Run({"convert", field, "100,5"}), 1, "100,5");
    }
    return all;
  }

  /// A live session on a fast clock, slow enough for a busy machine to keep up with: the same
  /// beltpack then says the same each time.
  std::string Recorded() const {
    std::string all = Output(
        {"record", "--demo", "--speed", "10", "--reports", "5", "--grid", "--raw", "trace.txt"});
    // The trace has the time before each command.
    static const std::regex time("\x01@[0-9]+\x02");
    return all + std::regex_replace(ReadAndRemove("trace.txt"), time, "@");
  }
};

TEST_F(LanguagesTest, EveryOutputExceptDatesIsTheSameInEveryLanguage) {
  if (!MakeLanguages()) {
    GTEST_SKIP() << "the machine needs the sources of the languages (the package locales)";
  }
  std::string replayed;
  std::string converted;
  std::string recorded;
  for (const std::string language : kLanguages) {
    SCOPED_TRACE(language);
    SetLanguage(language);
    ASSERT_EQ(DecimalPoint(), language == "de_DE.UTF-8" ? ",\n" : ".\n");
    const std::string replayedNow = Replayed();
    const std::string convertedNow = Converted();
    const std::string recordedNow = Recorded();
    replayed = replayed.empty() ? replayedNow : replayed;
    converted = converted.empty() ? convertedNow : converted;
    recorded = recorded.empty() ? recordedNow : recorded;
    EXPECT_EQ(replayedNow, replayed);
    EXPECT_EQ(convertedNow, converted);
    EXPECT_EQ(recordedNow, recorded);
  }
  EXPECT_NE(replayed.find("B\xC3\xBChne"), std::string::npos);
  EXPECT_NE(converted.find("metres 2914.500\n"), std::string::npos) << converted;
  EXPECT_NE(recorded.find("Reports: 5\n"), std::string::npos);
}

TEST_F(LanguagesTest, FileNamesAreTheSameInEveryLanguage) {
  if (!MakeLanguages()) {
    GTEST_SKIP() << "the machine needs the sources of the languages (the package locales)";
  }
  const std::string session = Golden("four-antennas.session.txt");
  Write("B\xC3\xBChne.txt", session);
  std::filesystem::create_directories(folder.PathOf("config/CorvanaSync"));
  Write("config/CorvanaSync/CorvanaSync.ini", "[Ports]\nCOM3=/dev/B\xC3\xBChne\n");
  environment["XDG_CONFIG_HOME"] = folder.PathOf("config");
  for (const std::string language : kLanguages) {
    SCOPED_TRACE(language);
    SetLanguage(language);
    Output({"replay", "B\xC3\xBChne.txt", "--csv", "Ergebnis \xE2\x82\xAC.csv"});
    EXPECT_FALSE(ReadAndRemove("Ergebnis \xE2\x82\xAC.csv").empty());
    ExpectComplaint(Run({"replay", "fehlt\xC3\xA4.txt"}), 1, "fehlt\xC3\xA4.txt");
    EXPECT_NE(Run({"ports"}).output.find("COM3 /dev/B\xC3\xBChne absent\n"), std::string::npos);
  }
}

}  // namespace
}  // namespace kelvara::test
