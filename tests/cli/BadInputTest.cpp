#include <gtest/gtest.h>

#include "cli/ConsoleTest.h"
#include "support/Golden.h"
#include "support/RecordedReports.h"
#include "support/System.h"

namespace kelvara::test {
namespace {

class BadInputTest : public ConsoleTest {
 protected:
  BadInputTest() { Write("good.txt", OneNeighbourReport(1, 2, -11)); }
};

TEST_F(BadInputTest, AMissingFileIsReported) {
  ExpectComplaint(Run({"replay", "missing.txt"}), 1, "missing.txt");
  ExpectComplaint(Run({"replay", "good.txt", "missing.txt"}), 1, "missing.txt");
  ExpectComplaint(Run({"replay", "--whole", "no/such/folder.txt"}), 1, "no/such/folder.txt");
}

TEST_F(BadInputTest, AFolderGivenAsAFileIsReported) {
  std::filesystem::create_directory(folder.PathOf("folder"));
  ExpectComplaint(Run({"replay", "folder"}), 1, "folder");
  ExpectComplaint(Run({"replay", "--whole", "good.txt", "folder"}), 1, "folder");
}

TEST_F(BadInputTest, AnEmptyFileNameIsReported) { ExpectComplaint(Run({"replay", ""}), 1, "\"\""); }

TEST_F(BadInputTest, AnOutputOverAnInputAndTwoOutputsToOneFileAreRefused) {
  std::filesystem::create_hard_link(folder.PathOf("good.txt"), folder.PathOf("linked.txt"));
  std::filesystem::create_directory(folder.PathOf("folder"));
  // On Windows, only an administrator may create symbolic links.
  if (kIsWindows) {
    std::filesystem::create_hard_link(folder.PathOf("good.txt"), folder.PathOf("symbolic.txt"));
  } else {
    std::filesystem::create_symlink("good.txt", folder.PathOf("symbolic.txt"));
  }
  Write("csv.txt", "older");
  const std::string good = Read("good.txt");
  for (const char* option : {"--log", "--report", "--csv", "--json"}) {
    for (const char* name :
         {"good.txt", "folder/../good.txt", "folder\\..\\good.txt", "linked.txt", "symbolic.txt"}) {
      ExpectWrong({"replay", "good.txt", option, name}, name);
    }
  }
  ExpectWrong({"replay", "good.txt", "--csv", "new.txt", "--json", "./new.txt"}, "./new.txt");
  ExpectWrong({"replay", "good.txt", "--csv", "csv.txt", "--log", "csv.txt"}, "csv.txt");
  ExpectWrong({"record", "--demo", "--for", "1", "--raw", "new.txt", "--csv", "new.txt"},
              "new.txt");
  EXPECT_EQ(Read("good.txt"), good);
  EXPECT_EQ(Read("csv.txt"), "older");
  EXPECT_FALSE(Exists("new.txt"));
}

TEST_F(BadInputTest, ADeviceAcceptsAnyNumberOfOutputs) {
  if (kIsWindows) {
    GTEST_SKIP() << "Windows has no files that are devices";
  }
  Output({"replay", "good.txt", "good.txt", "--csv", "/dev/null", "--json", "/dev/null"});
}

TEST_F(BadInputTest, ARecordThatCannotStartKeepsTheOlderTrace) {
  Write("older.trace", "older");
  ExpectComplaint(
      Run({"record", "--demo", "--for", "1", "--raw", "older.trace", "--log", "no/such/log.txt"}),
      1, "no/such/log.txt");
  EXPECT_EQ(Read("older.trace"), "older");
  ExpectComplaint(
      Run({"record", "--demo", "--for", "1", "--raw", "new.trace", "--log", "no/such/log.txt"}), 1,
      "no/such/log.txt");
  EXPECT_FALSE(Exists("new.trace"));
}

TEST_F(BadInputTest, ARecordWhoseTraceCannotBeCreatedKeepsTheLog) {
  Write("log.txt", "older");
  for (const char* log : {"log.txt", "new.txt"}) {
    ExpectComplaint(
        Run({"record", "--demo", "--for", "1", "--raw", "no/such/trace.txt", "--log", log}), 1,
        "no/such/trace.txt");
  }
  EXPECT_EQ(Read("log.txt"), "older");
  EXPECT_FALSE(Exists("new.txt"));
}

TEST_F(BadInputTest, AMissingFileLeavesEveryOutputUntouched) {
  Write("report.html", "older");
  const ConsoleResult result = Run({"replay", "good.txt", "missing.txt", "--report", "report.html",
                                    "--csv", "results.csv", "--log", "log.txt"});
  ExpectComplaint(result, 1, "missing.txt");
  EXPECT_EQ(Read("report.html"), "older");
  EXPECT_FALSE(Exists("results.csv"));
  EXPECT_FALSE(Exists("log.txt"));
}

TEST_F(BadInputTest, AnOutputThatCannotBeCreatedIsReported) {
  std::filesystem::create_directory(folder.PathOf("folder"));
  for (const char* option : {"--log", "--report", "--csv", "--json"}) {
    for (const char* path : {"no/such/out.txt", "folder", "good.txt/out.txt", ""}) {
      SCOPED_TRACE(std::string(option) + " \"" + path + "\"");
      ExpectComplaint(Run({"replay", "good.txt", option, path}), 1, path);
    }
  }
}

TEST_F(BadInputTest, AnOutputOnAFullDeviceIsReported) {
  for (const char* option : {"--log", "--report", "--csv", "--json"}) {
    SCOPED_TRACE(option);
    ExpectComplaint(Run({"replay", "good.txt", option, "/dev/full"}), 1, "/dev/full");
  }
}

TEST_F(BadInputTest, AFailureToWriteStandardOutputIsReported) {
  for (const Arguments& arguments :
       {Arguments{"replay", "good.txt"}, Arguments{"replay", "good.txt", "--grid"},
        Arguments{"replay", "good.txt", "--json", "-"}, Arguments{"convert", "rfps", "1"},
        Arguments{"record", "--demo", "--for", "0.01"}, Arguments{"--help"}, Arguments{"--version"},
        Arguments{"replay", "--help"}, Arguments{"record", "-h"}, Arguments{"convert", "--help"},
        Arguments{"ports", "--help"}, Arguments{"simulate", "--help"}}) {
    SCOPED_TRACE(::testing::PrintToString(arguments));
    std::istringstream in;
    std::ostream out(nullptr);
    std::ostringstream err;
    const int exitCode = cli::RunConsole(arguments, {in, out, err}, machine);
    ExpectComplaint({exitCode, "", err.str()}, 1, "standard output");
  }
}

TEST_F(BadInputTest, AFailureToReadStandardInputIsReported) {
  std::istringstream in("text");
  in.setstate(std::ios::badbit);
  std::ostringstream out;
  std::ostringstream err;
  const int exitCode = cli::RunConsole({"replay", "-"}, {in, out, err}, machine);
  ExpectComplaint({exitCode, out.str(), err.str()}, 1, "standard input");
}

TEST_F(BadInputTest, OutputsAlreadyWrittenAreKept) {
  const ConsoleResult result = Run({"replay", "good.txt", "--log", "log.txt", "--report",
                                    "report.html", "--csv", "/dev/full", "--json", "out.json"});
  ExpectComplaint(result, 1, "/dev/full");
  EXPECT_NE(Read("log.txt").find("Log To File Stopped"), std::string::npos);
  EXPECT_NE(Read("report.html").find("</html>"), std::string::npos);
}

TEST_F(BadInputTest, OneAntennaTooManyFailsTheReportAndWritesNoFile) {
  Write("many.txt", FiftyTwoAntennas());
  Write("older.html", "older");
  ExpectComplaint(Run({"replay", "many.txt", "--report", "report.html"}), 1, "report.html");
  EXPECT_FALSE(Exists("report.html"));
  ExpectComplaint(Run({"replay", "many.txt", "--report", "older.html"}), 1, "older.html");
  EXPECT_EQ(Read("older.html"), "older");
}

TEST_F(BadInputTest, OneAntennaTooManyFailsTheCsvAfterItsHeader) {
  Write("many.txt", FiftyTwoAntennas());
  const ConsoleResult result = Run({"replay", "many.txt", "--csv", "results.csv"});
  ExpectComplaint(result, 1, "results.csv");
  EXPECT_EQ(result.output, "Reports: 5\nAAs: 52\nAbandoned: 1\n");
  const std::string csv = Read("results.csv");
  EXPECT_EQ(csv.substr(0, 32), "File Created by Kelvara v1.1.0 o");
  EXPECT_EQ(csv.substr(csv.find('\n') + 1), "Units: RFPS\r\nRPN Units: Decimal\r\n\r\n");
}

TEST_F(BadInputTest, UnknownOptionsAreRefused) {
  ExpectWrong({"--nonsense"}, "--nonsense");
  ExpectWrong({"-x"}, "-x");
  ExpectWrong({"replay", "good.txt", "--nonsense"}, "--nonsense");
  ExpectWrong({"replay", "--nonsense", "good.txt"}, "--nonsense");
  ExpectWrong({"replay", "good.txt", "-x"}, "-x");
  ExpectWrong({"replay", "good.txt", "--gri"}, "--gri");
  ExpectWrong({"convert", "--nonsense", "rfps", "1"}, "--nonsense");
  ExpectWrong({"convert", "rfps", "1", "--grid"}, "--grid");
}

TEST_F(BadInputTest, MissingAndUnknownSubCommandsAreRefused) {
  ExpectWrong({}, "");
  ExpectWrong({"explode"}, "explode");
  ExpectWrong({"Replay", "good.txt"}, "Replay");
}

TEST_F(BadInputTest, AReplayWithoutFilesIsRefused) {
  ExpectWrong({"replay"}, "FILE");
  ExpectWrong({"replay", "--grid"}, "FILE");
}

TEST_F(BadInputTest, ValuesNotInTheListOfAnOptionAreRefused) {
  for (const char* option : {"--units", "--rpn", "--fps"}) {
    for (const char* value : {"feet", "", "RFPS", "DEC", "On", "-x", "0"}) {
      ExpectWrong({"replay", "good.txt", option, value}, option);
      ExpectWrong({"replay", "good.txt", option, value}, value);
    }
  }
}

TEST_F(BadInputTest, OptionsWithoutAValueAreRefused) {
  for (const char* option : {"--units", "--rpn", "--fps", "--log", "--report", "--site", "--tester",
                             "--notes", "--csv", "--json"}) {
    ExpectWrong({"replay", "good.txt", option}, option);
  }
}

TEST_F(BadInputTest, AWrongCommandLineTouchesNothing) {
  ExpectWrong({"replay", "good.txt", "--log", "log.txt", "--report", "report.html", "--units", "x"},
              "--units");
  EXPECT_FALSE(Exists("log.txt"));
  EXPECT_FALSE(Exists("report.html"));
}

}  // namespace
}  // namespace kelvara::test
