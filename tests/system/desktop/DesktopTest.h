#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "support/Process.h"
#include "support/TemporaryFolder.h"
#include "system/desktop/AccessibleBus.h"
#include "system/desktop/DesktopProgram.h"
#include "system/desktop/VirtualScreen.h"

namespace kelvara::test {

/// Runs the built desktop program on a screen of its own, from a folder of its own, with fresh
/// settings. In that folder stand:
///   bin/         the program, where it writes its own files
///   config/      the settings
///   tools/       the only programs that it finds; its documents are opened by one of them
///   opened.txt   the documents that it opened so, a line each
class DesktopTest : public ::testing::Test {
 protected:
  using Arguments = std::vector<std::string>;

  DesktopTest();

  /// How the program is started.
  ProcessRequest Request(const Arguments& arguments) const;
  std::unique_ptr<DesktopProgram> Start(const Arguments& arguments) const;
  std::unique_ptr<DesktopProgram> StartOn(const VirtualScreen& where,
                                          const Arguments& arguments) const;

  /// How kelvara-cli is started in the same folder.
  ProcessRequest CliRequest(const Arguments& arguments) const;

  /// Runs kelvara-cli and expects success. Returns standard output.
  std::string CliOutput(const Arguments& arguments) const;

  /// What the option --com is given to let a port number stand for the simulated beltpack.
  std::string BeltpackAsPort(int port) const;

  std::string PathOf(const std::string& name) const { return folder.PathOf(name); }
  std::string Read(const std::string& name) const;
  void Write(const std::string& name, const std::string& text) const;
  bool Exists(const std::string& name) const;

  /// What stands in the settings; empty where there are none yet.
  std::string Settings() const;

  /// What a program has complained of, but for what the desktop library says of a machine on which
  /// nothing opens documents.
  static std::string Complaints(const ProcessResult& result);

  /// Expects the end that a user's command brings: exit code 0, and nobody has complained.
  static void ExpectCleanEnd(DesktopProgram& program);

  static constexpr const char* kSettingsFile = "config/CorvanaSync/CorvanaSync.ini";

  TemporaryFolder folder;
  std::optional<AccessibleBus> bus;
  std::optional<VirtualScreen> screen;
};

}  // namespace kelvara::test
