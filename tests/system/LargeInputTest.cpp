#include <gtest/gtest.h>

#include <fstream>

#include "support/Golden.h"
#include "support/RecordedReports.h"
#include "system/CliTest.h"

namespace kelvara::test {
namespace {

class LargeInputTest : public CliTest {
 protected:
  /// Writes a file of repeated text. Writes it in pieces because the peak memory of a program that
  /// the test starts includes the test's own memory.
  void WriteRepeated(const std::string& name, const std::string& start, const std::string& text,
                     std::size_t size, const std::string& end) const {
    std::ofstream file(folder.PathOf(name), std::ios::binary);
    file << start;
    for (std::size_t written = 0; written < size; written += text.size()) {
      file << text;
    }
    file << end << std::flush;
    ASSERT_TRUE(file.good());
  }

  std::int64_t PeakOfASmallFile() const {
    Write("small.txt", OneNeighbourReport(1, 2, -11));
    const std::int64_t peak = Run({"replay", "small.txt"}).peakKilobytes;
    EXPECT_GT(peak, 0);
    return peak;
  }

  static constexpr std::size_t kMebibyte = std::size_t{1} << 20U;
  static constexpr std::int64_t kSpareKilobytes = 16384;
};

TEST_F(LargeInputTest, ALineOf100MegabytesIsDroppedInLittleMemory) {
  const std::string report = OneNeighbourReport(1, 2, -11);
  WriteRepeated("line.txt", report + CrLf("rfps"), std::string(10000, 'x'), 100000000,
                std::string(28, '\n') + report + report);
  const std::int64_t small = PeakOfASmallFile();
  const ProcessResult result = Run({"replay", "line.txt"});
  ExpectComplaint(result, 0, "line.txt");
  EXPECT_EQ(result.output, "Reports: 3\nAAs: 2\n");
  EXPECT_LT(result.peakKilobytes, small + kSpareKilobytes);
}

TEST_F(LargeInputTest, AWholeFileOf100MegabytesInOneLineIsOneReport) {
  WriteRepeated("line.txt", CrLf("rfps") + CrLf(SyncLine(1)) + NeighbourLine(2, -11),
                std::string(10000, 'x'), 100000000, "");
  EXPECT_EQ(Output({"replay", "--whole", "line.txt"}), "Reports: 1\nAAs: 2\n");
}

TEST_F(LargeInputTest, AWholeFileOfHundredThousandsOfLinesIsOneReport) {
  WriteRepeated("lines.txt", CrLf("rfps") + CrLf(SyncLine(1)), CrLf("x"), std::size_t{3} << 20U,
                CrLf(NeighbourLine(2, -11)));
  EXPECT_EQ(Output({"replay", "--whole", "lines.txt"}), "Reports: 1\nAAs: 2\n");
}

TEST_F(LargeInputTest, ATraceIsReadOnAfterALineOf100Megabytes) {
  const std::string report = OneNeighbourReport(1, 2, -11);
  WriteRepeated("trace.txt", "\x01rfps\x02", std::string(10000, 'x'), 100000000,
                "\n\x01rfps\x02" + report);
  const std::int64_t small = PeakOfASmallFile();
  const ProcessResult result = Run({"replay", "trace.txt"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.output, "Reports: 1\nAAs: 2\n");
  EXPECT_LT(result.peakKilobytes, small + kSpareKilobytes);
}

TEST_F(LargeInputTest, ALongSessionNeedsNoMoreMemoryThanAShortOne) {
  const std::string session = ReadTextFile(GoldenPath("four-antennas.session.txt"));
  const std::size_t copies = 40 * kMebibyte / session.size();
  WriteRepeated("long.txt", "", session, copies * session.size(), "");
  const std::int64_t small = PeakOfASmallFile();
  const ProcessResult result = Run({"replay", "long.txt"});
  EXPECT_EQ(result.output, "Reports: " + std::to_string(7 * copies) + "\nAAs: 4\n");
  EXPECT_EQ(result.errors, "");
  EXPECT_LT(result.peakKilobytes, small + kSpareKilobytes);
}

TEST_F(LargeInputTest, TheLargestReportIsReadAndOneThatIsAByteLargerIsDropped) {
  const std::string report = RecordedReport({SyncLine(1)});
  std::string largest = report;
  largest.insert(report.size() - 2, kMebibyte - report.size(), 'x');
  ASSERT_EQ(largest.size(), kMebibyte);
  Write("largest.txt", largest);
  EXPECT_EQ(Output({"replay", "largest.txt"}), "Reports: 1\nAAs: 1\n");
  Write("larger.txt", "x" + largest + report);
  const ProcessResult result = Run({"replay", "larger.txt"});
  ExpectComplaint(result, 0, "larger.txt");
  EXPECT_EQ(result.output, "Reports: 1\nAAs: 1\n");
}

TEST_F(LargeInputTest, ProgressIsShownOnlyOnATerminalAndForLargeFiles) {
  const std::string session = ReadTextFile(GoldenPath("four-antennas.session.txt"));
  WriteRepeated("large.txt", "", session, 17 * kMebibyte, "");
  WriteRepeated("medium.txt", "", session, 15 * kMebibyte, "");
  ProcessRequest request = Request({"replay", "large.txt"});
  request.errorsToTerminal = true;
  const ProcessResult result = RunProcess(request);
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_NE(result.errors.find("large.txt"), std::string::npos);
  EXPECT_EQ(result.errors.find('\n'), std::string::npos) << "progress is a single line";
  request.arguments.back() = "medium.txt";
  EXPECT_EQ(RunProcess(request).errors, "");
  Output({"replay", "large.txt"});
}

}  // namespace
}  // namespace kelvara::test
