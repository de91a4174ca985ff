#include <gtest/gtest.h>

#include "cli/ConsoleTest.h"
#include "support/Golden.h"
#include "support/RecordedReports.h"

namespace kelvara::test {
namespace {

using ReplayTraceTest = ConsoleTest;

const std::string kClear = "\x01!clear\x02";
const std::string kUndo = "\x01!undo\x02";

std::string Time(std::int64_t utcMilliseconds) {
  return "\x01@" + std::to_string(utcMilliseconds) + "\x02";
}

const std::string kRfps = "\x01rfps\x02";
const std::string kCho =
    "\x01"
    "cho\x02";
const std::string kBho =
    "\x01"
    "bho\x02";

TEST_F(ReplayTraceTest, ATraceGivesTheSameResultsAsItsStream) {
  const std::string session = ReadTextFile(GoldenPath("four-antennas.session.txt"));
  std::string trace = kCho;
  std::size_t start = 0;
  for (std::size_t place = 0, lines = 0; place < session.size(); ++place) {
    if (session[place] == '\n' && ++lines % 29 == 0) {
      trace += kRfps;
      trace += session.substr(start, place + 1 - start);
      trace += kCho;
      trace += CrLf("cho done");
      trace += kBho;
      start = place + 1;
    }
  }
  Write("trace.txt", trace);
  EXPECT_EQ(Output({"replay", "trace.txt", "--json", "-"}),
            Output({"replay", GoldenPath("four-antennas.session.txt"), "--json", "-"}));
}

TEST_F(ReplayTraceTest, CharactersOutsideAReportAreNotCollected) {
  const std::string other = OneNeighbourReport(5, 6, 7);
  Write("trace.txt", kCho + other + kRfps + OneNeighbourReport(1, 2, -11) + other + kBho + other);
  EXPECT_EQ(Output({"replay", "trace.txt"}), "Reports: 1\nAAs: 2\n");
}

TEST_F(ReplayTraceTest, AReportCutShortByTheNextRfpsIsDiscarded) {
  const std::string cut = OneNeighbourReport(5, 6, 7);
  Write("trace.txt", kRfps + cut.substr(0, cut.size() - 2) + kRfps + OneNeighbourReport(1, 2, -11));
  const ConsoleResult result = Run({"replay", "trace.txt"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.output, "Reports: 1\nAAs: 2\n");
}

TEST_F(ReplayTraceTest, OtherCommandsDoNotEmptyTheBuffer) {
  const std::string report = OneNeighbourReport(1, 2, -11);
  Write("trace.txt",
        kRfps + report.substr(0, 30) + kCho + report.substr(30, 9) + kBho + report.substr(39));
  EXPECT_EQ(Output({"replay", "trace.txt"}), "Reports: 1\nAAs: 2\n");
}

TEST_F(ReplayTraceTest, ADoubledMarkIsOneReceivedByte) {
  const std::string neighbour = NeighbourLine(2, -11);
  const std::string mark = "\x01\x01";
  std::string line = neighbour.substr(0, neighbour.size() - 10);
  // The received byte takes up one column: as two bytes or none, it would shift the phase.
  line += mark + neighbour.substr(neighbour.size() - 9);
  Write("trace.txt", kRfps + RecordedReport({SyncLine(1), line}));
  const std::string json = Output({"replay", "trace.txt", "--json", "-"});
  EXPECT_NE(json.find("\"sum\":-11,"), std::string::npos) << json;
}

TEST_F(ReplayTraceTest, ATraceAndAStreamMayBeReplayedTogether) {
  const std::string report = OneNeighbourReport(1, 2, -11);
  Write("trace.txt", kRfps + report);
  Write("stream.txt", report + report);
  EXPECT_EQ(Output({"replay", "trace.txt", "stream.txt", "trace.txt"}), "Reports: 4\nAAs: 2\n");
}

TEST_F(ReplayTraceTest, AFileWithALaterMarkIsAStream) {
  Write("stream.txt", "x" + kRfps + OneNeighbourReport(1, 2, -11));
  EXPECT_EQ(Output({"replay", "stream.txt"}), "Reports: 1\nAAs: 2\n");
}

TEST_F(ReplayTraceTest, ATraceCanComeFromStandardInput) {
  EXPECT_EQ(Output({"replay", "-"}, kRfps + OneNeighbourReport(1, 2, -11) + CrLf("stray")),
            "Reports: 1\nAAs: 2\n");
}

TEST_F(ReplayTraceTest, LogEntriesCarryTheTimesOfTheTrace) {
  const std::int64_t first = 1700000000000;
  const std::string report = OneNeighbourReport(1, 2, -11);
  Write("trace.txt", Time(first) + kRfps + report + Time(first + 3000) + kRfps + report);
  Write("stream.txt", report);
  ASSERT_EQ(Run({"replay", "trace.txt", "stream.txt", "--log", "log.txt"}).exitCode, 0);
  const qt::QtClock clock;
  const std::string log = Read("log.txt");
  std::vector<std::string> lines;
  for (std::size_t start = 0; start < log.size(); start = log.find('\n', start) + 1) {
    lines.push_back(log.substr(start, log.find(", ", start) - start));
  }
  ASSERT_EQ(lines.size(), 5U) << log;
  EXPECT_EQ(lines[1], dateFormat.General(clock.LocalTime(first)));
  EXPECT_EQ(lines[2], dateFormat.General(clock.LocalTime(first + 3000)));
  for (const std::size_t now : {0U, 3U, 4U}) {
    // A plain stream has no times, whatever was replayed before it.
    EXPECT_NE(lines[now], lines[1]);
    EXPECT_NE(lines[now], lines[2]);
  }
}

TEST_F(ReplayTraceTest, ClearsAndUndosAreRepeated) {
  const std::string first = kRfps + OneNeighbourReport(1, 2, -11);
  const std::string second = kRfps + OneNeighbourReport(3, 4, 5);
  Write("clear.txt", first + kClear + second);
  EXPECT_EQ(Output({"replay", "clear.txt"}), "Reports: 1\nAAs: 2\n");
  Write("undo.txt", first + kClear + second + kUndo);
  Write("whole.txt", first + second);
  EXPECT_EQ(Output({"replay", "undo.txt", "--json", "-"}),
            Output({"replay", "whole.txt", "--json", "-"}));
  EXPECT_EQ(Output({"survey", "undo.txt"}), Output({"survey", "whole.txt"}));
}

TEST_F(ReplayTraceTest, AnUndoThatCannotBeIsNotedAndChangesNothing) {
  Write("trace.txt", kRfps + OneNeighbourReport(1, 2, -11) + kUndo);
  const ConsoleResult result = Run({"replay", "trace.txt"});
  EXPECT_EQ(result.output, "Reports: 1\nAAs: 2\n");
  ExpectComplaint(result, 0, "No results have been cleared");
}

}  // namespace
}  // namespace kelvara::test
