#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "support/Process.h"
#include "support/TemporaryFolder.h"
#include "support/TextFile.h"

namespace kelvara::test {

/// Runs the built kelvara-cli in a fresh folder, in the C locale and in UTC.
class CliTest : public ::testing::Test {
 protected:
  using Arguments = std::vector<std::string>;

  ProcessRequest Request(const Arguments& arguments) const {
    ProcessRequest request;
    request.arguments = {KELVARA_CLI};
    request.arguments.insert(request.arguments.end(), arguments.begin(), arguments.end());
    request.environment = environment;
    request.folder = folder.Path();
    return request;
  }

  ProcessResult Run(const Arguments& arguments, const std::string& input = "") const {
    ProcessRequest request = Request(arguments);
    request.input = input;
    return RunProcess(request);
  }

  /// Runs and expects success with nothing on standard error. Returns standard output.
  std::string Output(const Arguments& arguments, const std::string& input = "") const {
    const ProcessResult result = Run(arguments, input);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.errors, "");
    return result.output;
  }

  void Write(const std::string& name, const std::string& text) const {
    WriteTextFile(folder.PathOf(name), text);
  }
  std::string Read(const std::string& name) const { return ReadTextFile(folder.PathOf(name)); }
  bool Exists(const std::string& name) const {
    return std::filesystem::exists(folder.PathOf(name));
  }

  /// Expects an exit code and one line on standard error that names what is wrong.
  static void ExpectComplaint(const ProcessResult& result, int exitCode, const std::string& named) {
    const std::string start = "kelvara-cli: ";
    EXPECT_EQ(result.exitCode, exitCode);
    EXPECT_EQ(result.errors.substr(0, start.size()), start) << result.errors;
    EXPECT_EQ(result.errors.find('\n'), result.errors.size() - 1) << result.errors;
    EXPECT_NE(result.errors.find(named, start.size()), std::string::npos) << result.errors;
  }

  TemporaryFolder folder;
  std::map<std::string, std::string> environment = {
      {"PATH", "/usr/bin:/bin"}, {"HOME", folder.Path()}, {"LANG", "C"}, {"TZ", "UTC0"}};
};

}  // namespace kelvara::test
