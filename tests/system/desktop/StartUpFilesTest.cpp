#include <filesystem>

#include "system/desktop/DesktopSession.h"

namespace kelvara::test {
namespace {

/// Starts the program with one of its own files damaged or missing.
class DesktopStartUpFilesTest : public DesktopSession {
 protected:
  /// Expects the link to start without any message, and the menus to work.
  static void ExpectUsable(const DesktopProgram& program, const SimulatedBeltpack& beltpack) {
    DesktopProgram::Await("the link's start", [&] { return Holds(program, beltpack.Device()); });
    program.MainWindow();
    EXPECT_TRUE(program.OtherWindows().empty());
    program.Choose({"Options", "Display FPS", "On"});
    DesktopProgram::Await("the option", [&] {
      return program.IsChecked({"Options", "Display FPS", "On"});
    });
  }
};

TEST_F(DesktopStartUpFilesTest, BrokenSettingsAreSetAsideAndTheLinkStarts) {
  const std::string broken = "[Settings]\nRFPSUnits=2\nComPo";
  Write(kSettingsFile, broken);
  SimulatedBeltpack beltpack(CliRequest({"simulate"}));
  auto program = Start({"--com", BeltpackAsPort(1)});
  ExpectUsable(*program, beltpack);
  EXPECT_TRUE(program->IsChecked({"Options", "Display Format", "RFPS Units"}));
  program->RequestClose(program->MainWindow());
  ExpectCleanEnd(*program);
  EXPECT_EQ(Settings(), "[Settings]\nFPSDisplay=True\n");
  EXPECT_EQ(Read(std::string(kSettingsFile) + ".broken-1"), broken);
}

TEST_F(DesktopStartUpFilesTest, MissingHelpIsReportedWithItsPath) {
  std::filesystem::remove_all(PathOf("bin/Help"));
  SimulatedBeltpack beltpack(CliRequest({"simulate"}));
  auto program = Start({"--com", BeltpackAsPort(1)});
  ExpectUsable(*program, beltpack);
  program->Press(program->MainWindow(), {"F1"});
  const DesktopWindow message = program->Open("Kelvara Help");
  EXPECT_EQ(program->MessageText(message),
            "Error occured while attempting to display " + PathOf("bin") + "\\Help\\index.htm");
  EXPECT_EQ(program->Buttons(message), std::vector<std::string>{"OK"});
  program->Press(message, {"Return"});
  program->WaitUntilClosed(message);
  EXPECT_FALSE(Exists("opened.txt"));
  // Restored help is found without a restart.
  Write("bin/Help/index.htm", "");
  program->Press(program->MainWindow(), {"F1"});
  DesktopProgram::Await("the opened page", [&] { return Exists("opened.txt"); });
  program->RequestClose(program->MainWindow());
  ExpectCleanEnd(*program);
}

}  // namespace
}  // namespace kelvara::test
