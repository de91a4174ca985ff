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

/// Runs the built desktop program on a separate screen, in a fresh folder, with fresh settings. The
/// folder holds:
///   bin/         the program, which writes its own files there
///   config/      the settings
///   run/         the files of the message bus and the screen
///   tools/       the only programs that it finds; one of them opens documents
///   opened.txt   the documents that were opened, one a line
class DesktopTest : public ::testing::Test {
 protected:
  using Arguments = std::vector<std::string>;

  DesktopTest();

  /// The request that starts the program.
  ProcessRequest Request(const Arguments& arguments) const;
  std::unique_ptr<DesktopProgram> Start(const Arguments& arguments) const;
  std::unique_ptr<DesktopProgram> StartOn(const VirtualScreen& where,
                                          const Arguments& arguments) const;

  /// The request that starts kelvara-cli in the same folder.
  ProcessRequest CliRequest(const Arguments& arguments) const;

  /// Runs kelvara-cli and expects success. Returns standard output.
  std::string CliOutput(const Arguments& arguments) const;

  /// The value of the option --com that assigns the simulated beltpack to a port number.
  std::string BeltpackAsPort(int port) const;

  std::string PathOf(const std::string& name) const { return folder.PathOf(name); }
  std::string Read(const std::string& name) const;
  void Write(const std::string& name, const std::string& text) const;
  bool Exists(const std::string& name) const;

  /// The content of the settings file; empty if there is none yet.
  std::string Settings() const;

  /// The complaints of a program on standard error, without the desktop library's warning that no
  /// program for documents was detected.
  static std::string Complaints(const ProcessResult& result);

  /// Expects the program to end with exit code 0 and without complaints.
  static void ExpectCleanEnd(DesktopProgram& program);

  static constexpr const char* kSettingsFile = "config/CorvanaSync/CorvanaSync.ini";

  TemporaryFolder folder;
  std::optional<AccessibleBus> bus;
  std::optional<VirtualScreen> screen;
};

}  // namespace kelvara::test
