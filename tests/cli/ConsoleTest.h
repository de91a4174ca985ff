#pragma once

#include <gtest/gtest.h>

#include <QLocale>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "cli/RunConsole.h"
#include "platform/MemorySettingsStore.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/QtDateFormat.h"
#include "platform/qt/QtFileSystem.h"
#include "ports/QtSerialPort.h"
#include "support/TemporaryFolder.h"
#include "support/TextFile.h"

namespace kelvara::test {

/// What a command line returned and printed.
struct ConsoleResult {
  int exitCode = -1;
  std::string output;
  std::string errors;
};

/// Runs command lines of kelvara-cli in this process, in a fresh folder, with real files and
/// clocks, the C locale's dates, no settings, and no Ctrl+C.
class ConsoleTest : public ::testing::Test {
 protected:
  using Arguments = std::vector<std::string>;

  ConsoleTest() { std::filesystem::current_path(folder.Path()); }
  ~ConsoleTest() override { std::filesystem::current_path(before_); }

  ConsoleResult Run(const Arguments& arguments, const std::string& input = "") {
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream err;
    const int exitCode = cli::RunConsole(arguments, {in, out, err}, machine);
    return {exitCode, out.str(), err.str()};
  }

  /// Runs and expects success with nothing on standard error. Returns standard output.
  std::string Output(const Arguments& arguments, const std::string& input = "") {
    const ConsoleResult result = Run(arguments, input);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.errors, "");
    return result.output;
  }

  static void Write(const std::string& name, const std::string& text) { WriteTextFile(name, text); }
  static std::string Read(const std::string& name) { return ReadTextFile(name); }
  static bool Exists(const std::string& name) { return std::filesystem::exists(name); }

  /// Expects an exit code and one line on standard error that names what is wrong.
  static void ExpectComplaint(const ConsoleResult& result, int exitCode, const std::string& named) {
    const std::string start = "kelvara-cli: ";
    EXPECT_EQ(result.exitCode, exitCode);
    EXPECT_EQ(result.errors.substr(0, start.size()), start) << result.errors;
    EXPECT_EQ(result.errors.find('\n'), result.errors.size() - 1) << result.errors;
    EXPECT_NE(result.errors.find(named, start.size()), std::string::npos) << result.errors;
  }

  /// Expects a command line to be refused as wrong, with nothing on standard output.
  void ExpectWrong(const Arguments& arguments, const std::string& named) {
    SCOPED_TRACE(::testing::PrintToString(arguments));
    const ConsoleResult result = Run(arguments);
    ExpectComplaint(result, 2, named);
    EXPECT_EQ(result.output, "");
  }

  TemporaryFolder folder;
  qt::QtFileSystem fileSystem;
  qt::QtDateFormat dateFormat{QLocale::c()};
  platform::MemorySettingsStore portSettings;
  cli::CommandMachine machine{
      .fileSystem = fileSystem,
      .dateFormat = dateFormat,
      .portSettings = portSettings,
      .makeClock = [](double speed) { return std::make_unique<qt::QtClock>(speed); },
      .makePort =
          [](const ports::PortTable& table) {
            return std::make_unique<ports::QtSerialPort>(table);
          },
      .adapterName = [](const std::string&) { return std::string(); },
      .atStop = [](const std::function<void()>&) { return nullptr; }};

 private:
  std::filesystem::path before_ = std::filesystem::current_path();
};

}  // namespace kelvara::test
