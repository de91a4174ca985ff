#include <gtest/gtest.h>

#include "cli/ConsoleTest.h"
#include "support/Golden.h"
#include "support/RecordedReports.h"
#include "support/System.h"

namespace kelvara::test {
namespace {

using ReplayStreamTest = ConsoleTest;

TEST_F(ReplayStreamTest, AStreamEndsWithItsTotals) {
  EXPECT_EQ(Output({"replay", GoldenPath("four-antennas.session.txt")}), "Reports: 7\nAAs: 4\n");
  EXPECT_EQ(Output({"replay", GoldenPath("fifty-one-antennas.session.txt")}),
            "Reports: 51\nAAs: 51\n");
}

TEST_F(ReplayStreamTest, AnEmptyFileContainsNoReport) {
  Write("empty.txt", "");
  const ConsoleResult result = Run({"replay", "empty.txt", "-"});
  ExpectComplaint(result, 0, "no report of an antenna is in \"empty.txt\", \"standard input\"\n");
  EXPECT_EQ(result.output, "Reports: 0\nAAs: 0\n");
}

TEST_F(ReplayStreamTest, FilesWithoutAntennasAreNotedOnceUnlessAnotherFileHasOne) {
  Write("lines.txt", RecordedReport({}) + RecordedReport({"no antenna"}));
  const ConsoleResult result = Run({"replay", "lines.txt"});
  ExpectComplaint(result, 0, "lines.txt");
  EXPECT_EQ(result.output, "Reports: 0\nAAs: 0\n");
  Write("report.txt", OneNeighbourReport(1, 2, -11));
  Output({"replay", "lines.txt", "report.txt"});
  Write("crowded.txt", CrowdedReport(1, 2, 10));
  Output({"replay", "crowded.txt", "lines.txt"});
}

TEST_F(ReplayStreamTest, AFileWrittenByKelvaraIsIdentified) {
  Output({"replay", GoldenPath("four-antennas.session.txt"), "--log", "out.log", "--report",
          "out.html", "--csv", "out.csv", "--json", "out.json"});
  for (const auto& [name, kind] : {std::pair("out.log", "(a log that Kelvara captured)"),
                                   std::pair("out.html", "(an HTML report that Kelvara wrote)"),
                                   std::pair("out.csv", "(CSV results that Kelvara wrote)"),
                                   std::pair("out.json", "(JSON results that Kelvara wrote)")}) {
    const std::string said =
        "kelvara-cli: no report of an antenna is in \"" + std::string(name) + "\" " + kind + "\n";
    const ConsoleResult result = Run({"replay", name});
    EXPECT_EQ(result.exitCode, 0);
    ASSERT_GE(result.errors.size(), said.size()) << result.errors;
    EXPECT_EQ(result.errors.substr(result.errors.size() - said.size()), said);
  }
}

TEST_F(ReplayStreamTest, FilesAreReadIntoOneModelInOrder) {
  Write("a.txt", OneNeighbourReport(1, 2, -11));
  Write("b.txt", OneNeighbourReport(3, 4, 5));
  const std::string forth = Output({"replay", "a.txt", "b.txt", "--json", "-"});
  const std::string back = Output({"replay", "b.txt", "a.txt", "--json", "-"});
  EXPECT_LT(forth.find("\"rpn\":1}"), forth.find("\"rpn\":3}"));
  EXPECT_GT(back.find("\"rpn\":1}"), back.find("\"rpn\":3}"));
}

TEST_F(ReplayStreamTest, AFileGivenTwiceCountsTwice) {
  const std::string path = GoldenPath("four-antennas.session.txt");
  EXPECT_EQ(Output({"replay", path, path}), "Reports: 14\nAAs: 4\n");
}

TEST_F(ReplayStreamTest, ADashIsStandardInput) {
  const std::string report = OneNeighbourReport(1, 2, -11);
  EXPECT_EQ(Output({"replay", "-"}, report), "Reports: 1\nAAs: 2\n");
  Write("a.txt", OneNeighbourReport(3, 4, 5));
  Write("b.txt", OneNeighbourReport(5, 6, 7));
  const std::string json = Output({"replay", "a.txt", "-", "b.txt", "--json", "-"}, report);
  EXPECT_LT(json.find("\"rpn\":3}"), json.find("\"rpn\":1}"));
  EXPECT_LT(json.find("\"rpn\":1}"), json.find("\"rpn\":5}"));
}

TEST_F(ReplayStreamTest, AnIncompleteReportIsDroppedWithANoteThatNamesTheFile) {
  Write("whole.txt", OneNeighbourReport(1, 2, -11));
  Write("cut.txt", OneNeighbourReport(1, 2, -11) + OneNeighbourReport(3, 4, 5).substr(0, 60));
  const ConsoleResult result = Run({"replay", "cut.txt", "whole.txt"});
  ExpectComplaint(result, 0, "cut.txt");
  EXPECT_EQ(result.output, "Reports: 2\nAAs: 2\n");
}

TEST_F(ReplayStreamTest, AFileWithoutLineEndsIsAnIncompleteReport) {
  Write("one-line.txt", "100ec5A301 Sync");
  const ConsoleResult result = Run({"replay", "one-line.txt"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.errors,
            "kelvara-cli: one-line.txt: the last report has fewer than 29 lines and was dropped\n"
            "kelvara-cli: no report of an antenna is in \"one-line.txt\"\n");
  EXPECT_EQ(result.output, "Reports: 0\nAAs: 0\n");
}

TEST_F(ReplayStreamTest, BytesAreReadUnchanged) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) {
    if (byte != '\n' && byte != '1') {
      bytes += static_cast<char>(byte);
    }
  }
  Write("binary.bin", RecordedReport({bytes, SyncLine(1), NeighbourLine(2, -11) + bytes}));
  EXPECT_EQ(Output({"replay", "binary.bin"}), "Reports: 1\nAAs: 2\n");
}

TEST_F(ReplayStreamTest, BareLineFeedsAlsoEndLines) {
  std::string text = OneNeighbourReport(1, 2, -11);
  std::erase(text, '\r');
  Write("unix.txt", text + text);
  EXPECT_EQ(Output({"replay", "unix.txt"}), "Reports: 2\nAAs: 2\n");
}

TEST_F(ReplayStreamTest, AReportWithTooManyAntennasIsAbandonedAndTheNextIsRead) {
  Write("crowded.txt", CrowdedReport(1, 2, 10) + OneNeighbourReport(1, 2, -11));
  EXPECT_EQ(Output({"replay", "crowded.txt"}), "Reports: 1\nAAs: 2\nAbandoned: 1\n");
}

TEST_F(ReplayStreamTest, TheFiftySecondAntennaIsCountedAndTheReplayContinues) {
  Write("many.txt", FiftyTwoAntennas() + OneNeighbourReport(0, 1, 9));
  EXPECT_EQ(Output({"replay", "many.txt"}), "Reports: 6\nAAs: 52\nAbandoned: 1\n");
}

TEST_F(ReplayStreamTest, EachWholeFileIsOneReport) {
  const std::string report = OneNeighbourReport(1, 2, -11);
  Write("twice.txt", report + report);
  Write("short.txt", CrLf("rfps") + CrLf(SyncLine(5)));
  EXPECT_EQ(Output({"replay", "--whole", "twice.txt"}), "Reports: 1\nAAs: 2\n");
  EXPECT_EQ(Output({"replay", "short.txt", "--whole", "twice.txt"}), "Reports: 2\nAAs: 3\n");
  EXPECT_EQ(Output({"replay", "--whole", "-"}, report), "Reports: 1\nAAs: 2\n");
}

TEST_F(ReplayStreamTest, ATraceGivenAsAWholeFileIsNotReadAsATrace) {
  Write("trace.txt", "\x01rfps\x02" + CrLf(SyncLine(5)));
  EXPECT_EQ(Output({"replay", "--whole", "trace.txt"}), "Reports: 1\nAAs: 1\n");
}

TEST_F(ReplayStreamTest, AnEmptyWholeFileAddsNothing) {
  Write("empty.txt", "");
  EXPECT_EQ(Output({"replay", "--whole", "empty.txt"}), "Reports: 0\nAAs: 0\n");
}

TEST_F(ReplayStreamTest, FileNamesAreTakenLiterally) {
  for (const char* name : {"a b.txt", "[x].txt", "a,b.txt", "{}", "%%", "\"q\"", "convert",
                           "r\xC3\xA9sultat.txt", "replay"}) {
    SCOPED_TRACE(name);
    if (kIsWindows && std::string_view(name).find('"') != std::string_view::npos) {
      continue;  // No file can have that name.
    }
    Write(name, OneNeighbourReport(1, 2, -11));
    EXPECT_EQ(Output({"replay", name, name}), "Reports: 2\nAAs: 2\n");
  }
}

}  // namespace
}  // namespace kelvara::test
