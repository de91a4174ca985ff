#include <gtest/gtest.h>

#include "support/ReplayedTrace.h"
#include "support/WaitUntil.h"
#include "system/CliTest.h"

namespace kelvara::test {
namespace {

/// Live sessions whose folder disappears or whose disk fills up.
class LostFolderTest : public CliTest {
 protected:
  static constexpr const char* kSpeed = "200";

  /// The readings in a log, without their time stamps. Ignores an incomplete last line.
  static std::vector<std::string> Readings(const std::string& log) {
    std::vector<std::string> readings;
    for (std::size_t start = 0; start < log.size(); start = log.find('\n', start) + 1) {
      const std::size_t end = log.find("\r\n", start);
      if (end == std::string::npos) {
        break;
      }
      const std::string line = log.substr(start, end - start);
      if (line.find("->") != std::string::npos) {
        readings.push_back(line.substr(line.find(", ") + 2));
      }
    }
    return readings;
  }

  static bool EndsWith(const std::string& text, const std::string& end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
  }
};

TEST_F(LostFolderTest, ARecordWhoseFolderDisappearsContinuesAndKeepsItsOtherFiles) {
  std::filesystem::create_directory(folder.PathOf("stick"));
  Process record(
      Request({"record", "--demo", "--speed", kSpeed, "--reports", "300", "--log", "log.txt",
               "--report", "stick/report.html", "--csv", "results.csv", "--raw", "stick/trace"}));
  ASSERT_TRUE(WaitUntil([&] { return Exists("stick/trace") && Read("stick/trace").size() > 1000; },
                        Process::kPatience));
  std::filesystem::remove_all(folder.PathOf("stick"));
  const ProcessResult result = record.Finish();
  EXPECT_EQ(result.exitCode, 1);
  for (const char* complaint :
       {"stick/report.html\"", "stick/trace\": the file has been removed"}) {
    EXPECT_NE(result.errors.find(complaint), std::string::npos) << result.errors;
  }
  EXPECT_EQ(result.output, "Reports: 300\nAAs: 12\n");
  EXPECT_FALSE(Exists("stick"));
  EXPECT_TRUE(EndsWith(Read("results.csv"), "\r\n"));
  EXPECT_GE(Readings(Read("log.txt")).size(), 300U);
}

TEST_F(LostFolderTest, ARecordWhoseDiskFillsUpKeepsWhatFitsAndNamesEachFile) {
  ProcessRequest request =
      Request({"record", "--demo", "--speed", kSpeed, "--for", "400", "--log", "log.txt",
               "--report", "report.html", "--csv", "results.csv", "--raw", "trace.txt"});
  constexpr std::size_t kCapacity = 3000;
  request.fileSizeLimit = kCapacity;
  const ProcessResult result = RunProcess(request);
  EXPECT_EQ(result.exitCode, 1);
  for (const char* name : {"log.txt", "report.html", "trace.txt"}) {
    EXPECT_NE(result.errors.find(name), std::string::npos) << result.errors;
  }
  EXPECT_EQ(Read("report.html").size(), kCapacity);
  EXPECT_EQ(Read("trace.txt").size(), kCapacity);
  EXPECT_LE(Read("log.txt").size(), kCapacity);
  EXPECT_TRUE(EndsWith(Read("log.txt"), "\r\n")) << "an entry that does not fit is removed";
  // The log agrees with the line: the trace, which is cut as well, begins with the same readings.
  const std::vector<std::string> traced = ReplayedTrace(Read("trace.txt")).log.entries;
  const std::vector<std::string> logged = Readings(Read("log.txt"));
  const std::size_t both = std::min(traced.size(), logged.size());
  EXPECT_GT(both, 10U);
  EXPECT_TRUE(std::equal(traced.begin(), traced.begin() + static_cast<std::ptrdiff_t>(both),
                         logged.begin()));
  EXPECT_EQ(Read("report.html").substr(0, 9), "<!DOCTYPE");
  EXPECT_TRUE(EndsWith(Read("results.csv"), "\r\n"));
  EXPECT_NE(result.output.find("Abandoned: "), std::string::npos) << result.output;
}

}  // namespace
}  // namespace kelvara::test
