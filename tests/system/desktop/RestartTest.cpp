#include <algorithm>
#include <csignal>
#include <utility>

#include "system/desktop/DesktopSession.h"

namespace kelvara::test {
namespace {

/// A program that is killed in the middle of a capture and started again.
class RestartTest : public DesktopSession {
 protected:
  void ChoosePort(const DesktopProgram& program) const {
    program.Press(program.MainWindow(), {"alt+f", "s"});
    const DesktopWindow dialog = program.Open("Select Serial Port");
    // From COM1 down to COM4, then on to the rate.
    program.Press(dialog, {"Down", "Down", "Down", "Tab"});
    program.Press(dialog, {"ctrl+a", "9", "6", "0", "0"});
    program.PressButton(dialog, "OK");
    program.WaitUntilClosed(dialog);
  }
};

TEST_F(RestartTest, SettingsAndReadingsSurviveAKill) {
  SimulatedBeltpack beltpack(CliRequest({"simulate"}));
  const Arguments arguments = {"--com",           BeltpackAsPort(1), "--com",
                               BeltpackAsPort(4), "--raw",           PathOf("trace.txt")};
  auto program = Start(arguments);
  program->Choose({"Options", "Display Log", "On"});
  program->Choose({"Options", "Display Format", "AA Sync Units"});
  program->Choose({"Options", "RPN Display Base", "Hex"});
  program->Choose({"Options", "Display FPS", "On"});
  ChoosePort(*program);
  Capture(*program, "log.txt");
  AwaitReadings("log.txt", 1);
  const std::string settings = Settings();
  program->Signal(SIGKILL);
  EXPECT_EQ(program->Finish().signal, SIGKILL);

  EXPECT_EQ(Settings(), settings);
  EXPECT_EQ(settings,
            "[Settings]\nDisplayLog=True\nRFPSUnits=1\nRPNUnits=1\nFPSDisplay=True\nComPort=4\n"
            "Baudrate=9600\nLastFile=" +
                PathOf("log.txt") + "\n");
  const std::vector<std::string> readings = CapturedReadings("log.txt");
  const std::string trace = Read("trace.txt");

  program = Start(arguments);
  DesktopProgram::Await("the link's start", [&] { return Holds(*program, beltpack.Device()); });
  EXPECT_TRUE(program->OtherWindows().empty());
  for (const auto& [group, entry] :
       {std::pair{"Display Log", "On"}, std::pair{"Display Format", "AA Sync Units"},
        std::pair{"RPN Display Base", "Hex"}, std::pair{"Display FPS", "On"}}) {
    EXPECT_TRUE(program->IsChecked({"Options", group, entry})) << group;
  }
  DesktopProgram::Await("readings in the log box",
                        [&] { return program->LogText().find("->") != std::string::npos; });
  program->Press(program->MainWindow(), {"alt+t", "l"});
  const DesktopWindow dialog = program->Open("Capture Sync Reports To File");
  EXPECT_EQ(program->FieldText(dialog, "File"), PathOf("log.txt"));
  program->Press(dialog, {"Return"});
  program->WaitUntilClosed(dialog);
  program->RequestClose(program->MainWindow());
  ExpectCleanEnd(*program);

  EXPECT_EQ(Settings(), settings);
  // Both files are continued.
  const std::vector<std::string> after = CapturedReadings("log.txt");
  EXPECT_TRUE(std::equal(readings.begin(), readings.end(), after.begin()));
  EXPECT_NE(CapturedLines("log.txt").back().find(", Log To File Started"), std::string::npos);
  EXPECT_EQ(Read("trace.txt").substr(0, trace.size()), trace);
  EXPECT_GT(Read("trace.txt").size(), trace.size());
}

}  // namespace
}  // namespace kelvara::test
