#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>

#include "support/Golden.h"
#include "support/RecordedReports.h"
#include "system/CliTest.h"

namespace kelvara::test {
namespace {

/// What only a separate process has: an exit code, the system's standard streams, permissions and
/// limits.
class ProgramTest : public CliTest {
 protected:
  ProgramTest() { Write("good.txt", OneNeighbourReport(1, 2, -11)); }
};

TEST_F(ProgramTest, EndsWithTheExitCodeOfTheCommand) {
  EXPECT_EQ(Output({"replay", "good.txt"}), "Reports: 1\nAAs: 2\n");
  EXPECT_EQ(Output({"replay", "-"}, OneNeighbourReport(1, 2, -11)), "Reports: 1\nAAs: 2\n");
  ExpectComplaint(Run({"replay", "missing.txt"}), 1, "missing.txt");
  ExpectComplaint(Run({"replay", "--nonsense"}), 2, "--nonsense");
  ExpectComplaint(Run({}), 2, "");
}

TEST_F(ProgramTest, StandardInputMayBeAFile) {
  ProcessRequest request = Request({"replay", "-"});
  request.inputPath = GoldenPath("four-antennas.session.txt");
  EXPECT_EQ(RunProcess(request).output, "Reports: 7\nAAs: 4\n");
}

TEST_F(ProgramTest, AFileWithoutReadPermissionIsReported) {
  Write("secret.txt", OneNeighbourReport(1, 2, -11));
  std::filesystem::permissions(folder.PathOf("secret.txt"), std::filesystem::perms::none);
  ProcessRequest request = Request({"replay", "good.txt"});
  request.withoutRights = ::geteuid() == 0;
  if (RunProcess(request).exitCode == 127) {
    GTEST_SKIP() << "the program cannot be run without the superuser's rights from where it is";
  }
  request.arguments.push_back("secret.txt");
  ExpectComplaint(RunProcess(request), 1, "secret.txt");
}

TEST_F(ProgramTest, AFolderAsStandardInputIsReported) {
  ProcessRequest request = Request({"replay", "-"});
  request.inputPath = folder.Path();
  const ProcessResult result = RunProcess(request);
  ExpectComplaint(result, 1, "");
}

TEST_F(ProgramTest, ALimitOnReportsDoesNotCountAbandonedOnes) {
  ProcessRequest request = Request(
      {"record", "--demo", "--speed", "200", "--for", "300", "--reports", "8", "--log", "log.txt"});
  request.fileSizeLimit = 300;
  const ProcessResult result = RunProcess(request);
  EXPECT_EQ(result.exitCode, 1);
  int reports = 0;
  int antennas = 0;
  int abandoned = 0;
  ASSERT_EQ(std::sscanf(result.output.c_str(), "Reports: %d AAs: %d Abandoned: %d", &reports,
                        &antennas, &abandoned),
            3)
      << result.output;
  EXPECT_LT(reports, 8);
  EXPECT_GT(reports + abandoned, 8);
}

TEST_F(ProgramTest, AFullDeviceAsStandardOutputIsReported) {
  for (const Arguments& arguments :
       {Arguments{"replay", "good.txt"}, Arguments{"convert", "rfps", "1"}, Arguments{"--help"}}) {
    SCOPED_TRACE(::testing::PrintToString(arguments));
    ProcessRequest request = Request(arguments);
    request.outputPath = "/dev/full";
    ExpectComplaint(RunProcess(request), 1, "standard output");
  }
}

TEST_F(ProgramTest, ALogThatReachesItsSizeLimitAbandonsReportsAndFails) {
  std::string text;
  for (int report = 0; report < 10; ++report) {
    text += OneNeighbourReport(1, 2, -11);
  }
  Write("ten.txt", text);
  ProcessRequest request = Request({"replay", "ten.txt", "--log", "log.txt"});
  request.fileSizeLimit = 150;
  const ProcessResult result = RunProcess(request);
  ExpectComplaint(result, 1, "log.txt");
  EXPECT_LE(Read("log.txt").size(), 150U);
  EXPECT_EQ(Read("log.txt").find("Stopped"), std::string::npos);
  // The start entry and three entries of 33 bytes fit.
  EXPECT_EQ(result.output, "Reports: 3\nAAs: 2\nAbandoned: 7\n");
}

TEST_F(ProgramTest, AReportThatReachesItsSizeLimitFailsAndKeepsItsBeginning) {
  ProcessRequest request =
      Request({"replay", GoldenPath("fifty-one-antennas.session.txt"), "--report", "report.html"});
  request.fileSizeLimit = 40000;
  ExpectComplaint(RunProcess(request), 1, "report.html");
  const std::string html = Read("report.html");
  EXPECT_EQ(html.substr(0, 9), "<!DOCTYPE");
  EXPECT_LE(html.size(), 40000U);
}

}  // namespace
}  // namespace kelvara::test
