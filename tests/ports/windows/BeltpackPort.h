#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <string>

#include "ports/PortDevice.h"
#include "ports/PortFixture.h"
#include "support/EventLoop.h"

namespace kelvara::test {

/// How many lines a report has.
inline constexpr int kReportLines = 29;
/// The simulation sends a report as slowly as a line of 19200 baud.
inline constexpr int kLongestAnswerMilliseconds = 1000;

/// A port whose COM1 is the COM port that the environment variable KELVARA_TEST_COM names, such as
/// COM7. Behind it must be a simulated beltpack, such as "kelvara-cli simulate --control". What is
/// appended to the file that KELVARA_TEST_CONTROL names must reach the simulation as its standard
/// input.
class BeltpackPortTest : public PortTest {
 protected:
  void SetUp() override {
    ASSERT_NE(com_, "") << "KELVARA_TEST_COM must name a COM port with a simulated beltpack";
    table_.Assign({1, com_});
    // The test before may have unplugged it and plugged it in again.
    ASSERT_TRUE(RunUntil([this] { return ports::LookAt(com_).IsPresent(); }))
        << "there is no device on " << com_;
    port_.SetReceiveNotification([this] { received_ += port_.Input(kEverything); });
  }

  /// Whether the beltpack answers a command with a whole report.
  bool ReadsReport() {
    port_.DiscardInput();
    received_.clear();
    port_.Output("rfps\r");
    return RunUntil([this] { return LinesReceived() >= kReportLines; }) &&
           LinesReceived() == kReportLines && received_.find("100ec") != std::string::npos;
  }

  std::ptrdiff_t LinesReceived() const {
    return std::count(received_.begin(), received_.end(), '\n');
  }

  /// Gives the simulation a command.
  static void Control(const char* command) {
    const std::string file = FromEnvironment("KELVARA_TEST_CONTROL");
    std::ofstream stream(file, std::ios::app | std::ios::binary);
    stream << command << '\n' << std::flush;
    ASSERT_TRUE(stream) << "KELVARA_TEST_CONTROL must name the simulation's file of commands";
  }

  static std::string FromEnvironment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
  }

  const std::string com_ = FromEnvironment("KELVARA_TEST_COM");
  std::string received_;
};

}  // namespace kelvara::test
