#include <gtest/gtest.h>

#include <regex>
#include <sstream>

#include "cli/ConsoleTest.h"
#include "support/Golden.h"
#include "support/RecordedReports.h"

namespace kelvara::test {
namespace {

/// Checks the files that a replay writes. Of a date, only the form is checked.
class ReplayOutputsTest : public ConsoleTest {
 protected:
  /// Replaces each match of `form` and expects `count` of them.
  static std::string Replaced(const std::string& text, const std::string& form,
                              const std::string& placeholder, std::ptrdiff_t count) {
    const std::regex pattern(form);
    EXPECT_EQ(std::distance(std::sregex_iterator(text.begin(), text.end(), pattern), {}), count);
    return std::regex_replace(text, pattern, placeholder);
  }

  static constexpr const char* kDate = "\\d{4}-\\d\\d-\\d\\d";
  static constexpr const char* kStamp = "\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d";

  const std::string session = GoldenPath("four-antennas.session.txt");
  const std::string totals = "Reports: 7\nAAs: 4\n";
};

TEST_F(ReplayOutputsTest, TheLogFollowsTheDisplayOptions) {
  for (const std::string base : {"dec", "hex"}) {
    for (const std::string fps : {"on", "off"}) {
      std::string name = "log-four-antennas-" + base;
      name += "-fps-" + fps + ".txt";
      SCOPED_TRACE(name);
      EXPECT_EQ(Output({"replay", "--log", name, session, "--rpn", base, "--fps", fps}), totals);
      ExpectSameText(Replaced(Read(name), kStamp, "@STAMP@", 14), Golden(name));
    }
  }
}

TEST_F(ReplayOutputsTest, TheLogIsAppendedTo) {
  Write("log.txt", "kept\r\n");
  Output({"replay", session, "--log", "log.txt"});
  const std::string once = Read("log.txt");
  EXPECT_EQ(once.substr(0, 6), "kept\r\n");
  ExpectSameText(Replaced(once.substr(6), kStamp, "@STAMP@", 14),
                 Golden("log-four-antennas-dec-fps-off.txt"));
  Output({"replay", session, "--log", "log.txt"});
  EXPECT_EQ(Read("log.txt").substr(0, once.size()), once);
  EXPECT_EQ(Read("log.txt").size(), 6 + 2 * (once.size() - 6));
}

TEST_F(ReplayOutputsTest, TheLogOfSeveralFilesStartsAndStopsOnce) {
  Output({"replay", session, session, "--log", "log.txt"});
  const std::string log = Read("log.txt");
  EXPECT_EQ(log.find("Log To File Started"), log.rfind("Log To File Started"));
  EXPECT_EQ(log.find("Log To File Stopped"), log.rfind("Log To File Stopped"));
  EXPECT_EQ(log.substr(log.size() - 23), ", Log To File Stopped\r\n");
}

TEST_F(ReplayOutputsTest, TheLogOfAnEmptyFileHasTwoLines) {
  Write("empty.txt", "");
  Output({"replay", "--whole", "empty.txt", "--log", "log.txt"});
  EXPECT_EQ(Replaced(Read("log.txt"), kStamp, "@STAMP@", 2),
            CrLf("@STAMP@, Log To File Started") + CrLf("@STAMP@, Log To File Stopped"));
}

TEST_F(ReplayOutputsTest, AnAbandonedReportOfTooManyAntennasLogsNothing) {
  Write("crowded.txt", CrowdedReport(1, 2, 10));
  Output({"replay", "crowded.txt", "--log", "log.txt"});
  EXPECT_EQ(Read("log.txt").find("->"), std::string::npos);
}

TEST_F(ReplayOutputsTest, TheReportFollowsTheDisplayOptions) {
  for (const std::string fps : {"on", "off"}) {
    SCOPED_TRACE(fps);
    Write("report.html", std::string(200000, 'x'));
    EXPECT_EQ(
        Output({"replay", session, "--report", "report.html", "--site", "Dock & Crane <North>",
                "--tester", "A. \"Al\" Tester", "--notes", "  first line\r\n  second line   ",
                "--fps", fps, "--units", "metres", "--rpn", "hex"}),
        totals);
    ExpectSameText(
        Replaced(Read("report.html"), kDate, "@DATE@", 2),
        Golden("report-four-antennas-fps-" + fps + ".html", {{"@FILE@", "report.html"}}));
  }
}

TEST_F(ReplayOutputsTest, TheReportListsAFullModel) {
  Output({"replay", GoldenPath("fifty-one-antennas.session.txt"), "--report", "report.html",
          "--site", "Dock & Crane <North>", "--tester", "A. \"Al\" Tester", "--notes",
          "  first line\r\n  second line   ", "--fps", "on"});
  ExpectSameText(Replaced(Read("report.html"), kDate, "@DATE@", 2),
                 Golden("report-fifty-one-antennas-fps-on.html", {{"@FILE@", "report.html"}}));
}

TEST_F(ReplayOutputsTest, TheReportOfAnEmptyFileHasEmptyFieldsByDefault) {
  Write("empty.txt", "");
  Output({"replay", "--whole", "empty.txt", "--report", "report.html"});
  ExpectSameText(Replaced(Read("report.html"), kDate, "@DATE@", 2),
                 Golden("report-empty.html", {{"@FILE@", "report.html"}}));
}

TEST_F(ReplayOutputsTest, TheCsvFollowsTheDisplayOptions) {
  for (const std::string units : {"rfps", "aasync", "metres"}) {
    for (const std::string base : {"dec", "hex"}) {
      std::string name = "csv-four-antennas-" + units;
      name += "-" + base + ".csv";
      SCOPED_TRACE(name);
      Write(name, std::string(200000, 'x'));
      EXPECT_EQ(Output({"replay", "--units", units, "--rpn", base, "--fps", "on", session, "--csv",
                        name}),
                totals);
      ExpectSameText(Replaced(Read(name), kStamp, "@STAMP@", 1), Golden(name));
    }
  }
}

TEST_F(ReplayOutputsTest, TheCsvHoldsAFullAndAnEmptyModel) {
  Output({"replay", GoldenPath("fifty-one-antennas.session.txt"), "--units", "metres", "--rpn",
          "hex", "--csv", "many.csv"});
  ExpectSameText(Replaced(Read("many.csv"), kStamp, "@STAMP@", 1),
                 Golden("csv-fifty-one-antennas-metres-hex.csv"));
  Write("empty.txt", "");
  Output({"replay", "--whole", "empty.txt", "--csv", "none.csv"});
  ExpectSameText(Replaced(Read("none.csv"), kStamp, "@STAMP@", 1),
                 Golden("csv-empty-rfps-dec.csv"));
}

TEST_F(ReplayOutputsTest, TheDisplayIsRfpsDecimalWithoutFpsByDefault) {
  Output({"replay", session, "--csv", "plain.csv", "--log", "plain.txt"});
  ExpectSameText(Replaced(Read("plain.csv"), kStamp, "@STAMP@", 1),
                 Golden("csv-four-antennas-rfps-dec.csv"));
  ExpectSameText(Replaced(Read("plain.txt"), kStamp, "@STAMP@", 14),
                 Golden("log-four-antennas-dec-fps-off.txt"));
}

TEST_F(ReplayOutputsTest, AllOutputsCanBeWrittenTogether) {
  Output({"replay", "--log", "log.txt", "--report", "report.html", "--csv", "results.csv", "--json",
          "results.json", "--grid", session});
  for (const char* name : {"log.txt", "report.html", "results.csv", "results.json"}) {
    EXPECT_GT(Read(name).size(), 100U) << name;
  }
}

TEST_F(ReplayOutputsTest, PathsMayContainBackslashes) {
  std::filesystem::create_directory(folder.PathOf("results"));
  Output({"replay", session, "--report", "results\\report.html"});
  EXPECT_NE(Read("results/report.html").find(CrLf("<td>results\\report.html</td>")),
            std::string::npos);
}

class ReplayGridTest : public ReplayOutputsTest {
 protected:
  /// The table's lines, without the totals after them.
  std::vector<std::string> Table(Arguments arguments) {
    arguments.insert(arguments.begin(), {"replay", "--grid", session});
    std::istringstream output(Output(arguments));
    std::vector<std::string> lines;
    for (std::string line; std::getline(output, line);) {
      lines.push_back(line);
    }
    EXPECT_GE(lines.size(), 2U);
    EXPECT_EQ(lines[lines.size() - 2], "Reports: 7");
    EXPECT_EQ(lines[lines.size() - 1], "AAs: 4");
    lines.resize(lines.size() - 2);
    return lines;
  }

  static std::vector<std::string> Words(const std::string& line) {
    std::istringstream words(line);
    return {std::istream_iterator<std::string>(words), {}};
  }
};

TEST_F(ReplayGridTest, FollowsTheDisplayOptions) {
  using Row = std::vector<std::string>;
  const std::vector<std::string> table =
      Table({"--units", "aasync", "--rpn", "hex", "--fps", "on"});
  ASSERT_EQ(table.size(), 5U);
  EXPECT_EQ(Words(table[0]), (Row{"RPN", "01[3]", "06[A]", "02[3]", "64[F]"}));
  EXPECT_EQ(Words(table[1]), (Row{"01[3]", "2", "-3"}));
  EXPECT_EQ(Words(table[2]), (Row{"06[A]", "-2", "54"}));
  EXPECT_EQ(Words(table[3]), (Row{"02[3]", "3", "1"}));
  EXPECT_EQ(Words(table[4]), (Row{"64[F]"}));
}

TEST_F(ReplayGridTest, AlignsCellsWithTheirColumnHeading) {
  const std::vector<std::string> table = Table({});
  ASSERT_EQ(table.size(), 5U);
  // Each cell overlaps its column's heading by at least one character.
  const auto column = [&](const std::string& heading, const std::string& row,
                          const std::string& cell) {
    const std::size_t headingStart = table[0].find(heading);
    const std::size_t cellStart = row.find(cell);
    ASSERT_NE(headingStart, std::string::npos) << heading;
    ASSERT_NE(cellStart, std::string::npos) << cell;
    EXPECT_LT(cellStart, headingStart + heading.size()) << row;
    EXPECT_LT(headingStart, cellStart + cell.size()) << row;
  };
  column(" 06", table[1], " 8");
  column(" 02", table[1], " -12");
  column(" 01", table[2], " -8");
  column(" 100", table[2], " 242");
  column(" 01", table[3], " 14");
  column(" 06", table[3], " 4");
}

TEST_F(ReplayGridTest, PrintsOnlyTheCornerOfAnEmptyGrid) {
  Write("empty.txt", "");
  EXPECT_EQ(Output({"replay", "--whole", "empty.txt", "--grid"}), "RPN\nReports: 0\nAAs: 0\n");
}

}  // namespace
}  // namespace kelvara::test
