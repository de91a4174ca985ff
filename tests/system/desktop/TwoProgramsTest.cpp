#include <array>

#include "system/desktop/BellListener.h"
#include "system/desktop/DesktopTest.h"

namespace kelvara::test {
namespace {

/// Two desktop programs with the same settings, each on its own screen.
class TwoDesktopsTest : public DesktopTest {
 protected:
  /// An option with two values, and the lines that store them.
  struct Option {
    std::string group;
    std::array<std::string, 2> entries;
    std::array<std::string, 2> lines;
  };

  TwoDesktopsTest() : otherScreen(PathOf("run")), bell(*screen), otherBell(otherScreen) {
    Write(kSettingsFile, kBefore);
    first = Start({"--demo"});
    second = StartOn(otherScreen, {"--demo"});
    first->MainWindow();
    second->MainWindow();
  }

  static constexpr const char* kBefore = "[Settings]\nComPort=3\n\n[Ports]\nCOM3=/dev/ttyS3\n";

  bool IsStored(const std::string& line) const {
    return Settings().find("\n" + line + "\n") != std::string::npos;
  }

  void Choose(const DesktopProgram& program, const Option& option, std::size_t value) const {
    program.Choose({"Options", option.group, option.entries[value]});
    DesktopProgram::Await(option.lines[value], [&] { return IsStored(option.lines[value]); });
  }

  void ExpectCleanEnds() const {
    for (DesktopProgram* const program : {first.get(), second.get()}) {
      program->RequestClose(program->MainWindow());
      ExpectCleanEnd(*program);
    }
  }

  inline static const Option kFps = {
      "Display FPS", {"On", "Off"}, {"FPSDisplay=True", "FPSDisplay=False"}};
  inline static const Option kRpn = {
      "RPN Display Base", {"Hex", "Decimal"}, {"RPNUnits=1", "RPNUnits=0"}};
  inline static const Option kLog = {
      "Display Log", {"On", "Off"}, {"DisplayLog=True", "DisplayLog=False"}};

  VirtualScreen otherScreen;
  BellListener bell;
  BellListener otherBell;
  std::unique_ptr<DesktopProgram> first;
  std::unique_ptr<DesktopProgram> second;
};

TEST_F(TwoDesktopsTest, ChangingSettingsInTurnKeepsTheOtherProgramsKeys) {
  Choose(*first, kFps, 0);
  Choose(*second, kRpn, 0);
  Choose(*first, kLog, 0);
  Choose(*second, kFps, 1);
  Choose(*first, kRpn, 1);
  EXPECT_EQ(Settings(),
            "[Settings]\nComPort=3\nFPSDisplay=False\nRPNUnits=0\nDisplayLog=True\n\n"
            "[Ports]\nCOM3=/dev/ttyS3\n");
  // A program sees options stored by the other only after a restart.
  EXPECT_TRUE(first->IsChecked({"Options", "Display FPS", "On"}));
  EXPECT_FALSE(second->IsChecked({"Options", "Display Log", "On"}));
  ExpectCleanEnds();
  EXPECT_EQ(bell.Count() + otherBell.Count(), 0);
}

}  // namespace
}  // namespace kelvara::test
