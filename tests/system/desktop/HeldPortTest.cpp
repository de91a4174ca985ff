#include "system/desktop/DesktopSession.h"

namespace kelvara::test {
namespace {

/// A second program is started while the first has the port open.
class HeldDesktopPortTest : public DesktopSession {
 protected:
  /// Expects the message that the port cannot be opened, then the port window. Closes both.
  void ExpectRefused(const DesktopProgram& program) const {
    const DesktopWindow message = program.Open("Kelvara");
    EXPECT_EQ(program.MessageText(message), "Could not open COM  3");
    EXPECT_THAT(program.Buttons(message), ::testing::UnorderedElementsAre("OK", "Cancel"));
    program.Press(message, {"Return"});
    program.WaitUntilClosed(message);
    const DesktopWindow dialog = program.Open("Select Serial Port");
    // Trying again does not help.
    program.PressButton(dialog, "OK");
    const DesktopWindow again = program.Open("Kelvara");
    EXPECT_EQ(program.MessageText(again), "Could not open COM  3");
    program.PressButton(again, "Cancel");
    program.WaitUntilClosed(again);
    program.PressButton(dialog, "Cancel");
    program.WaitUntilClosed(dialog);
  }
};

TEST_F(HeldDesktopPortTest, ASecondProgramIsRefusedAndTheFirstContinues) {
  Write(kSettingsFile, "[Settings]\nComPort=3\nBaudrate=19200\n");
  const std::string settings = Settings();
  SimulatedBeltpack beltpack(CliRequest({"simulate"}));
  auto first = Start({"--com", BeltpackAsPort(3)});
  DesktopProgram::Await("the link's start", [&] { return Holds(*first, beltpack.Device()); });
  auto second = Start({"--com", BeltpackAsPort(3)});
  ExpectRefused(*second);
  beltpack.WaitForCommands(2);
  second->RequestClose(second->MainWindow());
  ExpectCleanEnd(*second);

  DesktopProgram::Await("a grid", [&] { return FilledCells(first->Grid()) > 0; });
  first->RequestClose(first->MainWindow());
  ExpectCleanEnd(*first);
  EXPECT_EQ(Settings(), settings);
  for (const ReceivedCommand& command : beltpack.Commands()) {
    EXPECT_EQ(command.text, "rfps");
  }

  // The port is free as soon as the first program is closed.
  auto third = Start({"--com", BeltpackAsPort(3)});
  DesktopProgram::Await("the link's start", [&] { return Holds(*third, beltpack.Device()); });
  third->RequestClose(third->MainWindow());
  ExpectCleanEnd(*third);
}

}  // namespace
}  // namespace kelvara::test
