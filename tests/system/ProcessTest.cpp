#include "support/Process.h"

#include <gtest/gtest.h>
#include <signal.h>

#include "support/TemporaryFolder.h"

namespace kelvara::test {
namespace {

using std::chrono::milliseconds;

ProcessRequest Shell(const std::string& script) {
  ProcessRequest request;
  request.arguments = {"/bin/sh", "-c", script};
  request.environment = {{"PATH", "/usr/bin:/bin"}};
  return request;
}

TEST(ProcessTest, KeepsOutputErrorsAndExitCode) {
  const ProcessResult result = RunProcess(Shell("echo out; echo err >&2; exit 3"));
  EXPECT_EQ(result.output, "out\n");
  EXPECT_EQ(result.errors, "err\n");
  EXPECT_EQ(result.exitCode, 3);
  EXPECT_EQ(result.signal, 0);
  EXPECT_FALSE(result.timedOut);
}

TEST(ProcessTest, PassesMoreTextThanAPipeHolds) {
  ProcessRequest request = Shell("tee /dev/stderr");
  for (int line = 0; line < 100000; ++line) {
    request.input += std::to_string(line) + "\n";
  }
  const ProcessResult result = RunProcess(request);
  EXPECT_TRUE(result.output == request.input);
  EXPECT_TRUE(result.errors == request.input);
}

TEST(ProcessTest, UnreadInputIsNotAFault) {
  ProcessRequest request = Shell("exec <&-; echo done");
  request.input.assign(1000000, 'x');
  EXPECT_EQ(RunProcess(request).output, "done\n");
}

TEST(ProcessTest, RunsInItsFolderWithOnlyTheGivenEnvironment) {
  const TemporaryFolder folder;
  ProcessRequest request = Shell("pwd; echo \"$WORD $HOME\"");
  request.folder = folder.Path();
  request.environment["WORD"] = "a word";
  EXPECT_EQ(RunProcess(request).output, folder.Path() + "\na word \n");
}

TEST(ProcessTest, AProgramThatRunsTooLongIsKilled) {
  const ProcessResult result = RunProcess(Shell("echo begun; exec sleep 600"), milliseconds(300));
  EXPECT_TRUE(result.timedOut);
  EXPECT_EQ(result.signal, SIGKILL);
  EXPECT_EQ(result.exitCode, -1);
  EXPECT_EQ(result.output, "begun\n");
}

TEST(ProcessTest, AProgramThatClosesItsOutputIsAlsoKilled) {
  const ProcessResult result =
      RunProcess(Shell("exec >&- 2>&-; exec sleep 600"), milliseconds(300));
  EXPECT_TRUE(result.timedOut);
  EXPECT_EQ(result.signal, SIGKILL);
}

TEST(ProcessTest, AMissingProgramEndsWithExitCode127) {
  ProcessRequest request;
  request.arguments = {"/no/such/program"};
  EXPECT_EQ(RunProcess(request).exitCode, 127);
}

TEST(ProcessTest, LinesAreReadWhileTheProgramRuns) {
  Process process(Shell("echo one; echo two"));
  EXPECT_EQ(process.ReadLine(), "one");
  EXPECT_EQ(process.ReadLine(), "two");
  EXPECT_EQ(process.ReadLine(), std::nullopt);
  EXPECT_EQ(process.Finish().output, "one\ntwo\n");
}

TEST(ProcessTest, ASignalReachesARunningProgram) {
  Process process(Shell("echo begun; exec sleep 600"));
  EXPECT_EQ(process.ReadLine(), "begun");
  EXPECT_EQ(process.ReadLine(milliseconds(50)), std::nullopt);
  process.Signal(SIGTERM);
  const ProcessResult result = process.Finish();
  EXPECT_EQ(result.signal, SIGTERM);
  EXPECT_FALSE(result.timedOut);
}

TEST(ProcessTest, AFileSizeLimitOnlyFailsTheWrite) {
  const TemporaryFolder folder;
  ProcessRequest request = Shell("head -c 5000 /dev/zero > file; echo \"failed $?\"; wc -c < file");
  request.folder = folder.Path();
  request.fileSizeLimit = 1000;
  const ProcessResult result = RunProcess(request);
  EXPECT_EQ(result.output.substr(0, 7), "failed ");
  EXPECT_NE(result.output.substr(0, 9), "failed 0\n");
  EXPECT_EQ(std::stoi(result.output.substr(result.output.find('\n'))), 1000);
}

TEST(ProcessTest, MeasuresMemory) {
  const std::int64_t small = RunProcess(Shell("exec head -c 1 /dev/zero")).peakKilobytes;
  EXPECT_GT(small, 0);
  const std::int64_t large =
      RunProcess(Shell("exec dd if=/dev/zero of=/dev/null bs=100M count=1")).peakKilobytes;
  EXPECT_GE(large, 102400);
  EXPECT_GT(large, small + 51200);
}

}  // namespace
}  // namespace kelvara::test
