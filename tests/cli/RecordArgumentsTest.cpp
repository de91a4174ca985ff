#include <gtest/gtest.h>

#include "cli/ConsoleTest.h"

namespace kelvara::test {
namespace {

class RecordArgumentsTest : public ConsoleTest {
 protected:
  /// Expects options of "record" to be refused as wrong, with nothing recorded or printed.
  void ExpectWrong(const Arguments& arguments) {
    SCOPED_TRACE(::testing::PrintToString(arguments));
    Arguments all = {"record", "--json", "results.json"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const ConsoleResult result = Run(all);
    ExpectComplaint(result, 2, "");
    EXPECT_EQ(result.output, "");
    EXPECT_FALSE(Exists("results.json"));
  }
};

TEST_F(RecordArgumentsTest, ExactlyOneSourceIsRequired) {
  ExpectWrong({"--reports", "1"});
  ExpectWrong({"--demo", "--com", "1", "--reports", "1"});
  ExpectWrong({"--demo-site", "site.txt", "--com", "1", "--reports", "1"});
  ExpectWrong({"--demo", "--port", "/dev/null", "--reports", "1"});
  ExpectWrong({"--com", "1", "--port", "/dev/null", "--reports", "1"});
  ExpectWrong({"--com", "1", "--port", "/dev/null", "--demo", "--reports", "1"});
}

TEST_F(RecordArgumentsTest, APortNumberIsFromOneToTwelve) {
  for (const char* number : {"0", "13", "-1", "COM1", "1.5", "", "65537"}) {
    ExpectWrong({"--reports", "1", "--com", number});
  }
}

TEST_F(RecordArgumentsTest, CountTimeAndRateArePositiveNumbers) {
  for (const char* number : {"0", "-1", "many", ""}) {
    ExpectWrong({"--demo", "--reports", number});
    ExpectWrong({"--demo", "--for", number});
    ExpectWrong({"--demo", "--reports", "1", "--baud", number});
  }
  ExpectWrong({"--demo", "--reports", "1.5"});
}

TEST_F(RecordArgumentsTest, OnlyTheDemosClockRunsFaster) {
  ExpectWrong({"--speed", "10", "--port", "/dev/null", "--reports", "1"});
  ExpectWrong({"--speed", "10", "--com", "1", "--reports", "1"});
  for (const char* speed : {"0", "-1", "fast", ""}) {
    ExpectWrong({"--demo", "--reports", "1", "--speed", speed});
  }
}

TEST_F(RecordArgumentsTest, ASiteFileThatCannotBeUsedIsNamedBeforeAnythingIsWritten) {
  Write("site.txt", "1 3 90 40 0 0\n2 3 90 95 120\n");
  for (const char* site : {"missing.txt", "site.txt"}) {
    const ConsoleResult result =
        Run({"record", "--demo-site", site, "--reports", "1", "--json", "results.json"});
    ExpectComplaint(result, 1, site);
    EXPECT_FALSE(Exists("results.json"));
  }
  ExpectComplaint(Run({"record", "--demo-site", "site.txt", "--reports", "1"}), 1, "line 2");
  ExpectWrong({"--demo-site", "site.txt", "--reports", "1", "--raw", "site.txt"});
}

TEST_F(RecordArgumentsTest, AnythingElseIsRefused) {
  ExpectWrong({"--demo", "--reports", "1", "extra"});
  ExpectWrong({"--demo", "--reports", "1", "--unknown"});
  ExpectWrong({"--demo", "--reports", "1", "--units", "feet"});
  ExpectWrong({"--demo", "--reports"});
  ExpectWrong({"--port"});
  ExpectWrong({"--demo", "--reports", "1", "--raw"});
}

TEST_F(RecordArgumentsTest, AnEmptyArgumentIsRefusedAnywhere) {
  ExpectWrong({"", "--demo", "--reports", "1"});
  ExpectWrong({"--demo", "", "--reports", "1"});
  ExpectWrong({"--demo", "", "-x"});
  ExpectWrong({"--demo", "--reports", "1", ""});
  ExpectWrong({"--demo", "--reports", "1", "--", ""});
}

TEST_F(RecordArgumentsTest, ATraceOrLogThatCannotBeOpenedEndsTheRecordImmediately) {
  for (const char* option : {"--raw", "--log"}) {
    SCOPED_TRACE(option);
    ExpectComplaint(Run({"record", "--demo", "--for", "30", "--json", "results.json", option,
                         "missing/file.txt"}),
                    1, "missing/file.txt");
    EXPECT_FALSE(Exists("results.json"));
  }
}

}  // namespace
}  // namespace kelvara::test
