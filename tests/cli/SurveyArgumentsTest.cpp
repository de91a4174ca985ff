#include <gtest/gtest.h>

#include "cli/ConsoleTest.h"
#include "support/Golden.h"
#include "support/RecordedReports.h"

namespace kelvara::test {
namespace {

class SurveyArgumentsTest : public ConsoleTest {
 protected:
  /// Runs a survey that must fail with the exit code and leave no file behind.
  void ExpectRefused(Arguments arguments, int exitCode, const std::string& named) {
    SCOPED_TRACE(::testing::PrintToString(arguments));
    arguments.insert(arguments.begin(), "survey");
    arguments.insert(arguments.end(), {"--json", "survey.json", "--html", "survey.html"});
    const ConsoleResult result = Run(arguments);
    ExpectComplaint(result, exitCode, named);
    EXPECT_EQ(result.output, "");
    EXPECT_FALSE(Exists("survey.json"));
    EXPECT_FALSE(Exists("survey.html"));
  }

  const std::string session = GoldenPath("four-antennas.session.txt");
};

TEST_F(SurveyArgumentsTest, AFileIsRequired) { ExpectRefused({}, 2, "FILE"); }

TEST_F(SurveyArgumentsTest, ALengthNeedsAReferenceAndANumber) {
  ExpectRefused({session, "--length", "100"}, 2, "--reference");
  for (const std::string text : {"", "x", "1 m", "1,5", "inf", "nan", "1e7", "1e999", "0x10"}) {
    ExpectRefused({session, "--reference", "1", "--length=" + text}, 2, "--length");
  }
}

TEST_F(SurveyArgumentsTest, AReferenceIsAnRpnInDecimalThatIsThere) {
  for (const std::string text : {"", "x", "0x1", "-1", "1.0", "99999999999"}) {
    ExpectRefused({session, "--reference=" + text}, 2, "--reference");
  }
  ExpectRefused({session, "--reference", "9"}, 1, "9");
  ExpectRefused({session, "--reference", "70000"}, 1, "70000");
  EXPECT_EQ(Output({"survey", session, "--reference", "6"}),
            Output({"survey", "--reference", "06", session, "--length", "0"}));
  EXPECT_NE(Output({"survey", session, "--reference", "6", "--length", "-50"}).find(" -50  "),
            std::string::npos);
}

TEST_F(SurveyArgumentsTest, AResultsFileOfAnotherFormIsRefused) {
  for (const std::string text :
       {R"({)", R"({})", R"({"reports":1,"aas":[],"cells":{}})",
        R"({"reports":-1,"aas":[],"cells":[]})", R"({"reports":1.5,"aas":[],"cells":[]})",
        R"({"reports":1,"aas":[{"rpn":1,"fps":1}],"cells":[]})",
        R"({"reports":1,"aas":[{"rpn":1,"fps":1,"fpn":1},{"rpn":1,"fps":1,"fpn":1}],"cells":[]})",
        R"({"reports":1,"aas":[],"cells":[{"from":0,"to":1,"sum":1,"count":1,"max":1,"min":1}]})",
        R"({"summary":{"reports":1},"antennas":[]})"}) {
    Write("results.json", text);
    ExpectRefused({"results.json"}, 1, "results.json");
    ExpectRefused({session, "--compare", "results.json"}, 1, "results.json");
  }
}

TEST_F(SurveyArgumentsTest, ACellOfAnotherFormIsRefused) {
  const std::string start =
      R"({"reports":1,"aas":[{"rpn":1,"fps":1,"fpn":1},{"rpn":2,"fps":1,"fpn":1}],"cells":[)";
  const std::string good = R"({"from":0,"to":1,"sum":7,"count":2,"max":4,"min":3})";
  Write("good.json", start + good + "]}");
  Output({"survey", "good.json"});
  for (const std::string bad :
       {R"({"from":0,"to":2,"sum":7,"count":2,"max":4,"min":3})",
        R"({"from":-1,"to":1,"sum":7,"count":2,"max":4,"min":3})",
        R"({"from":1,"to":1,"sum":7,"count":2,"max":4,"min":3})",
        R"({"from":1,"to":0,"sum":7,"count":0,"max":4,"min":3})",
        R"({"from":1,"to":0,"sum":7,"count":2,"max":3,"min":4})",
        R"({"from":1,"to":0,"sum":2147483648,"count":2,"max":4,"min":3})",
        R"({"from":1,"to":0,"sum":7,"count":2,"max":32768,"min":3})",
        R"({"from":1,"to":0,"sum":"7","count":2,"max":4,"min":3})", R"(7)", R"(null)"}) {
    Write("bad.json", start + good + "," + bad + "]}");
    ExpectRefused({"bad.json"}, 1, "bad.json");
  }
  Write("twice.json", start + good + "," + good + "]}");
  ExpectRefused({"twice.json"}, 1, "twice.json");
}

TEST_F(SurveyArgumentsTest, ResultsCannotBeJoinedWithOtherFiles) {
  Output({"replay", session, "--json", "results.json"});
  ExpectRefused({"results.json", session}, 2, "results.json");
  ExpectRefused({session, "results.json"}, 2, "results.json");
}

TEST_F(SurveyArgumentsTest, AnOlderSurveyNeedsACommonAntenna) {
  Write("other.txt", OneNeighbourReport(30, 31, 4));
  ExpectRefused({session, "--compare", "other.txt"}, 1, "other.txt");
  Write("empty.txt", "");
  ExpectRefused({session, "--compare", "empty.txt"}, 1, "empty.txt");
  ExpectRefused({"empty.txt", "--compare", session}, 1, "four-antennas");
  ExpectRefused({"empty.txt", "--reference", "1"}, 1, "1");
}

TEST_F(SurveyArgumentsTest, AMissingFileIsReported) {
  ExpectRefused({"missing.txt"}, 1, "missing.txt");
  ExpectRefused({session, "--compare", "missing.txt"}, 1, "missing.txt");
}

TEST_F(SurveyArgumentsTest, StandardInputIsReadOnce) {
  ExpectRefused({"-", "--compare", "-"}, 2, "standard input");
}

TEST_F(SurveyArgumentsTest, NoInputIsOverwritten) {
  Write("session.txt", Read(session));
  ExpectWrong({"survey", "session.txt", "--json", "session.txt"}, "session.txt");
  ExpectWrong({"survey", session, "--compare", "session.txt", "--json", "./session.txt"},
              "session.txt");
  ExpectWrong({"survey", "session.txt", "--html", "session.txt"}, "session.txt");
  ExpectWrong({"survey", session, "--html", "one.out", "--json", "one.out"}, "one.out");
  EXPECT_EQ(Read("session.txt"), Read(session));
}

TEST_F(SurveyArgumentsTest, AFileThatCannotBeWrittenIsAFailure) {
  ExpectComplaint(Run({"survey", session, "--json", "no/such/survey.json"}), 1, "survey.json");
  ExpectComplaint(
      Run({"survey", session, "--html", "no/such/survey.html", "--json", "survey.json"}), 1,
      "survey.html");
  EXPECT_TRUE(Exists("survey.json"));
}

}  // namespace
}  // namespace kelvara::test
