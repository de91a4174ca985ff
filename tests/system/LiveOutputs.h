#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/Process.h"
#include "support/TextFile.h"
#include "system/CliFixture.h"

namespace kelvara::test {

/// The command line of a record that writes every output, with `options` before the output options.
inline std::vector<std::string> RecordOfAll(const std::vector<std::string>& options) {
  std::vector<std::string> arguments = {"record"};
  arguments.insert(arguments.end(), options.begin(), options.end());
  arguments.insert(arguments.end(),
                   {"--log", "log.txt", "--report", "report.html", "--csv", "results.csv", "--json",
                    "results.json", "--raw", "trace.txt"});
  return arguments;
}

/// Expects the outputs of such a record to be complete, and its trace to replay to the same
/// results. Returns the JSON results.
inline std::string ExpectWholeOutputs(const CliFixture& fixture) {
  const auto endsWith = [](const std::string& text, const std::string& end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
  };
  EXPECT_TRUE(endsWith(ReadTextFile(fixture.PathOf("log.txt")), ", Log To File Stopped\r\n"));
  EXPECT_TRUE(endsWith(ReadTextFile(fixture.PathOf("report.html")), "</html>\r\n"));
  EXPECT_FALSE(ReadTextFile(fixture.PathOf("results.csv")).empty());
  const ProcessResult replay =
      RunProcess(fixture.Request({"replay", "trace.txt", "--json", "-", "--csv", "replayed.csv"}));
  EXPECT_EQ(replay.exitCode, 0);
  std::string results = ReadTextFile(fixture.PathOf("results.json"));
  EXPECT_EQ(replay.output, results);
  return results;
}

}  // namespace kelvara::test
