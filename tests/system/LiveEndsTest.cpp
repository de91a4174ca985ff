#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <memory>

#include "support/PseudoTerminal.h"
#include "system/LiveOutputs.h"
#include "system/SimulatedBeltpack.h"
#include "system/SiteTruth.h"

namespace kelvara::test {
namespace {

/// A way to end a record: by options or by a signal.
struct End {
  const char* name;
  std::vector<std::string> options;
  int signal;
};

/// Starts a record that shows a status line, which the test reads.
std::unique_ptr<Process> StartRecord(const CliFixture& fixture, const std::string& port,
                                     const std::vector<std::string>& ending) {
  std::vector<std::string> options = {"--port", port};
  options.insert(options.end(), ending.begin(), ending.end());
  ProcessRequest request = fixture.Request(RecordOfAll(options));
  request.errorsToTerminal = true;
  return std::make_unique<Process>(request);
}

/// Waits until the status line contains a text, sends the signal unless it is 0, and waits for the
/// end.
ProcessResult EndWhenItShows(Process& record, const std::string& text, int signal) {
  EXPECT_TRUE(record.WaitForErrors(text)) << "no " << text;
  if (signal != 0) {
    record.Signal(signal);
  }
  return record.Finish();
}

/// A record with a beltpack on its port.
struct Session {
  explicit Session(const End& way) : end(way) {}

  CliFixture fixture;
  End end;
  SimulatedBeltpack beltpack{fixture.Request({"simulate"})};
  std::unique_ptr<Process> record = StartRecord(fixture, SimulatedBeltpack::kPort, end.options);
};

TEST(LiveEndsTest, ARecordWritesItsOutputsHoweverItEnds) {
  const std::vector<End> ends = {{"count", {"--reports", "1"}, 0},
                                 {"time", {"--for", "5"}, 0},
                                 {"count before time", {"--for", "60", "--reports", "1"}, 0},
                                 {"time before count", {"--reports", "9", "--for", "5"}, 0},
                                 {"Ctrl+C", {}, SIGINT},
                                 {"request to end", {}, SIGTERM},
                                 {"hang-up of the terminal", {}, SIGHUP}};
  std::vector<std::unique_ptr<Session>> sessions;
  for (const End& end : ends) {
    sessions.push_back(std::make_unique<Session>(end));
  }
  const SiteAntennas site = ExampleSiteAntennas("site-12.txt");
  for (const auto& session : sessions) {
    SCOPED_TRACE(session->end.name);
    const ProcessResult result =
        EndWhenItShows(*session->record, "Reports: 1", session->end.signal);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_FALSE(result.timedOut);
    EXPECT_EQ(result.output.substr(0, 16), "Reports: 1\nAAs: ");
    const QJsonObject results = ParsedResults(ExpectWholeOutputs(session->fixture));
    EXPECT_EQ(results["reports"].toInt(), 1);
    ExpectTrueReadings(results, site);
  }
}

TEST(LiveEndsTest, ARecordThatHeardNothingWritesEmptyResults) {
  const std::vector<End> ends = {{"time", {"--for", "0.3"}, 0},
                                 {"Ctrl+C", {"--reports", "5"}, SIGINT},
                                 {"request to end", {}, SIGTERM}};
  for (const End& end : ends) {
    SCOPED_TRACE(end.name);
    const CliFixture fixture;
    PseudoTerminal silentPort;
    const auto record = StartRecord(fixture, silentPort.Device(), end.options);
    const ProcessResult result =
        EndWhenItShows(*record, "Attempting To Connect To Beltpack...", end.signal);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, "Reports: 0\nAAs: 0\n");
    EXPECT_EQ(ParsedResults(ExpectWholeOutputs(fixture))["reports"].toInt(-1), 0);
    EXPECT_EQ(silentPort.ReadAll(), "");
  }
}

TEST(LiveEndsTest, ARecordContinuesAfterItsTerminalWhenHangUpsAreIgnored) {
  const CliFixture fixture;
  ProcessRequest request = fixture.Request(
      {"record", "--demo", "--speed", "300", "--reports", "400", "--csv", "results.csv"});
  const std::vector<std::string> shell = {"/bin/sh", "-c", "trap '' HUP INT; exec \"$0\" \"$@\""};
  request.arguments.insert(request.arguments.begin(), shell.begin(), shell.end());
  request.errorsToTerminal = true;
  Process record(request);
  EXPECT_TRUE(record.WaitForErrors("Reports: 1"));
  record.Signal(SIGHUP);
  record.Signal(SIGINT);
  const ProcessResult result = record.Finish();
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.output.substr(0, 13), "Reports: 400\n");
  EXPECT_TRUE(std::filesystem::exists(fixture.PathOf("results.csv")));
}

TEST(LiveEndsTest, ASecondCtrlCEndsARecordWhoseOutputIsNotRead) {
  const CliFixture fixture;
  const std::string pipe = fixture.PathOf("nobody-reads");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  ProcessRequest request =
      fixture.Request({"record", "--demo", "--speed", "300", "--reports", "1", "--csv", pipe});
  request.errorsToTerminal = true;
  Process record(request);
  EXPECT_TRUE(record.WaitForErrors("Reports: 1"));
  // Signals in too quick succession merge into one.
  for (int given = 0; given < 3; ++given) {
    record.Signal(SIGINT);
    EXPECT_EQ(record.ReadLine(Process::Duration(100)), std::nullopt);
  }
  const ProcessResult result = record.Finish(Process::Duration(10000));
  EXPECT_FALSE(result.timedOut);
  EXPECT_EQ(result.signal, SIGINT);
}

}  // namespace
}  // namespace kelvara::test
