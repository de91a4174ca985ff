#include <gtest/gtest.h>

#include "cli/ConsoleTest.h"
#include "support/Golden.h"
#include "support/RecordedReports.h"

namespace kelvara::test {
namespace {

class ReplayArgumentsTest : public ConsoleTest {
 protected:
  std::string ReportField(const std::string& title) const {
    const std::string html = Read("report.html");
    const std::string start = "<td><b>" + title + "</b></td>\r\n<td>";
    const std::size_t place = html.find(start);
    if (place == std::string::npos) {
      return "no " + title;
    }
    const std::size_t value = place + start.size();
    return html.substr(value, html.find("</td>", value) - value);
  }

  const std::string session = GoldenPath("four-antennas.session.txt");
};

TEST_F(ReplayArgumentsTest, OptionsMayComeBeforeBetweenAndAfterFiles) {
  Write("a.txt", OneNeighbourReport(1, 2, -11));
  Write("b.txt", OneNeighbourReport(3, 10, 5));
  const std::string expected =
      Output({"replay", "--rpn", "hex", "--units", "metres", "--grid", "a.txt", "b.txt"});
  EXPECT_NE(expected.find("0A"), std::string::npos);
  EXPECT_EQ(Output({"replay", "a.txt", "b.txt", "--grid", "--units", "metres", "--rpn", "hex"}),
            expected);
  EXPECT_EQ(Output({"replay", "--grid", "a.txt", "--rpn", "hex", "b.txt", "--units", "metres"}),
            expected);
}

TEST_F(ReplayArgumentsTest, AValueMayBeginWithADash) {
  const std::vector<std::string> values = {"-x", "--grid", "--",     "-",
                                           "-1", "--help", "--site", "-h"};
  for (const std::string& value : values) {
    SCOPED_TRACE(value);
    EXPECT_EQ(Output({"replay", "--site", value, "--tester", value, session, "--notes", value,
                      "--report", "report.html"}),
              "Reports: 7\nAAs: 4\n");
    EXPECT_EQ(ReportField("Site"), value);
    EXPECT_EQ(ReportField("Tester"), value);
    EXPECT_EQ(ReportField("Notes"), value);
  }
}

TEST_F(ReplayArgumentsTest, TheOutputPathMayBeginWithADash) {
  Output({"replay", session, "--report", "-r.html", "--csv", "--grid", "--log", "-l", "--json",
          "--json"});
  for (const char* name : {"-r.html", "--grid", "-l", "--json"}) {
    EXPECT_TRUE(Exists(name)) << name;
  }
}

TEST_F(ReplayArgumentsTest, EverythingAfterTwoDashesIsAFile) {
  Write("a.txt", OneNeighbourReport(1, 2, -11));
  for (const char* name : {"--grid", "-x", "--", "[b].txt", "b.txt"}) {
    SCOPED_TRACE(name);
    Write(name, OneNeighbourReport(3, 10, 5));
    const std::string expected = "Reports: 2\nAAs: 4\n";
    EXPECT_EQ(Output({"replay", "--", "a.txt", name}), expected);
    EXPECT_EQ(Output({"replay", "a.txt", "--", name}), expected);
    EXPECT_EQ(Output({"replay", "--", name}), "Reports: 1\nAAs: 2\n");
  }
}

TEST_F(ReplayArgumentsTest, TextsAreTakenLiterally) {
  for (const std::string text :
       {"", "a,b", "[a,b]", "\"quoted\"", "'quoted'", "caf\xC3\xA9", "caf\xE9", "%%", "{a}", "a=b",
        "replay", "convert", "$HOME", "a\tb", "<b>&amp;"}) {
    SCOPED_TRACE(text);
    Output({"replay", "--site=" + text, session, "--report", "report.html", "--tester", text,
            "--notes=" + text});
    EXPECT_EQ(ReportField("Site"), text);
    EXPECT_EQ(ReportField("Tester"), text);
    EXPECT_EQ(ReportField("Notes"), text);
  }
}

TEST_F(ReplayArgumentsTest, NamesOfFilesNeedNotBeText) {
  Write("in\xFF.txt", OneNeighbourReport(1, 2, -11));
  EXPECT_EQ(Output({"replay", "in\xFF.txt", "--log", "log\xFF", "--report", "report\xFF", "--csv",
                    "csv\xFF", "--json", "json\xFF"}),
            "Reports: 1\nAAs: 2\n");
  const std::string recorded =
      Output({"record", "--demo", "--reports", "1", "--speed", "1000", "--raw", "raw\xFF"});
  EXPECT_EQ(Output({"replay", "raw\xFF"}), recorded);
  for (const char* name : {"log\xFF", "report\xFF", "csv\xFF", "json\xFF", "raw\xFF"}) {
    EXPECT_TRUE(Exists(name)) << name;
  }
}

TEST_F(ReplayArgumentsTest, ADashIsStandardInputAlsoAfterOptions) {
  EXPECT_EQ(Output({"replay", "--fps", "on", "-"}, OneNeighbourReport(1, 2, -11)),
            "Reports: 1\nAAs: 2\n");
}

TEST_F(ReplayArgumentsTest, HelpNamesEverySubCommandAndOption) {
  const std::string program = Output({"--help"});
  for (const char* word : {"replay", "convert", "--help", "--version"}) {
    EXPECT_NE(program.find(word), std::string::npos) << word;
  }
  const std::string replay = Output({"replay", "--help"});
  for (const char* word :
       {"FILE", "--whole", "--units", "rfps", "aasync", "metres", "--rpn", "dec", "hex", "--fps",
        "--log", "--report", "--site", "--tester", "--notes", "--csv", "--json", "--grid"}) {
    EXPECT_NE(replay.find(word), std::string::npos) << word;
  }
  const std::string convert = Output({"convert", "--help"});
  for (const char* word :
       {"FIELD", "VALUE", "rfps", "aasync", "metres", "ohms", "delay", "rpn", "rpndec", "port"}) {
    EXPECT_NE(convert.find(word), std::string::npos) << word;
  }
}

TEST_F(ReplayArgumentsTest, HelpDoesNothingElse) {
  Output({"replay", session, "--report", "report.html", "--help"});
  EXPECT_FALSE(Exists("report.html"));
}

TEST_F(ReplayArgumentsTest, TheVersionIsPrinted) {
  EXPECT_NE(Output({"--version"}).find("1.1.0"), std::string::npos);
}

}  // namespace
}  // namespace kelvara::test
