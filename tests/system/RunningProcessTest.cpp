#include <gtest/gtest.h>

#include "support/Process.h"

namespace kelvara::test {
namespace {

using std::chrono::milliseconds;

ProcessRequest Shell(const std::string& script) {
  ProcessRequest request;
  request.arguments = {"/bin/sh", "-c", script};
  request.environment = {{"PATH", "/usr/bin:/bin"}};
  return request;
}

TEST(RunningProcessTest, InputThatStaysOpenTakesMoreUntilFinish) {
  ProcessRequest request = Shell("cat; echo end");
  request.input = "first\n";
  request.inputStaysOpen = true;
  Process process(request);
  EXPECT_EQ(process.ReadLine(), "first");
  process.Send("second\n");
  EXPECT_EQ(process.ReadLine(), "second");
  EXPECT_EQ(process.ReadLine(milliseconds(50)), std::nullopt);
  const ProcessResult result = process.Finish();
  EXPECT_EQ(result.output, "first\nsecond\nend\n");
  EXPECT_FALSE(result.timedOut);
}

TEST(RunningProcessTest, ErrorsAreReadWhileTheProgramRuns) {
  Process process(Shell("echo one two >&2; exec sleep 600"));
  EXPECT_TRUE(process.WaitForErrors("two"));
  EXPECT_FALSE(process.WaitForErrors("three", milliseconds(50)));
}

TEST(RunningProcessTest, WaitingForErrorsStopsAtTheirEnd) {
  Process process(Shell("echo one >&2"));
  EXPECT_FALSE(process.WaitForErrors("two"));
}

TEST(RunningProcessTest, MeasuresProcessorTime) {
  Process idle(Shell("echo begun; exec sleep 600"));
  EXPECT_EQ(idle.ReadLine(), "begun");
  EXPECT_FALSE(idle.WaitForErrors("never", milliseconds(300)));
  EXPECT_LT(idle.ProcessorTime(), milliseconds(100));
  Process busy(
      Shell("i=0; while [ $i -lt 200000 ]; do i=$((i+1)); done; echo done; exec sleep 600"));
  EXPECT_EQ(busy.ReadLine(), "done");
  EXPECT_GT(busy.ProcessorTime(), milliseconds(50));
}

}  // namespace
}  // namespace kelvara::test
