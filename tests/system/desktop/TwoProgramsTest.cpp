#include <algorithm>
#include <array>
#include <filesystem>
#include <future>
#include <regex>
#include <thread>

#include "system/desktop/BellListener.h"
#include "system/desktop/DesktopTest.h"

namespace kelvara::test {
namespace {

/// Two desktop programs of one user, each on a screen and with hands of its own.
class TwoDesktopsTest : public DesktopTest {
 protected:
  /// An option of two values, and what they are stored as.
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

  /// Chooses options by their keys, as fast as a hand can, on two screens at the same moment.
  void PressAtOnce(const std::vector<std::string>& keys,
                   const std::vector<std::string>& otherKeys) const {
    const DesktopWindow window = first->MainWindow();
    const DesktopWindow otherWindow = second->MainWindow();
    auto other = std::async(std::launch::async, [&] { second->Press(otherWindow, otherKeys); });
    first->Press(window, keys);
    other.get();
  }

  std::ptrdiff_t CountStored(const std::vector<std::string>& lines) const {
    const std::string settings = Settings();
    return std::count_if(lines.begin(), lines.end(), [&](const std::string& line) {
      return settings.find("\n" + line + "\n") != std::string::npos;
    });
  }

  void ExpectCleanEnds() const {
    for (DesktopProgram* const program : {first.get(), second.get()}) {
      program->RequestClose(program->MainWindow());
      ExpectCleanEnd(*program);
    }
  }

  static constexpr int kRounds = 50;
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

TEST_F(TwoDesktopsTest, ChangingSettingsInTurnKeepEachOthersKeys) {
  Choose(*first, kFps, 0);
  Choose(*second, kRpn, 0);
  Choose(*first, kLog, 0);
  Choose(*second, kFps, 1);
  Choose(*first, kRpn, 1);
  EXPECT_EQ(Settings(),
            "[Settings]\nComPort=3\nFPSDisplay=False\nRPNUnits=0\nDisplayLog=True\n\n"
            "[Ports]\nCOM3=/dev/ttyS3\n");
  // What one program has stored is no option of the other until that is started again.
  EXPECT_TRUE(first->IsChecked({"Options", "Display FPS", "On"}));
  EXPECT_FALSE(second->IsChecked({"Options", "Display Log", "On"}));
  ExpectCleanEnds();
  EXPECT_EQ(bell.Count() + otherBell.Count(), 0);
}

TEST_F(TwoDesktopsTest, ChangingSettingsAtOnceKeepTheFileWholeAndEachOthersKeys) {
  // Whoever looks at the file at any moment finds all that was there before, and whole lines.
  std::string torn;
  const std::regex form(
      "\\[Settings\\]\nComPort=3\n((FPSDisplay|DisplayLog)=True\n|RPNUnits=1\n|RFPSUnits=2\n)*"
      "\n\\[Ports\\]\nCOM3=/dev/ttyS3\n");
  std::jthread reader([&](const std::stop_token& stop) {
    while (!stop.stop_requested() && torn.empty()) {
      const std::string text = Settings();
      torn = std::regex_match(text, form) ? "" : "torn: " + text;
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  });
  const std::vector<std::string> lines = {"FPSDisplay=True", "DisplayLog=True", "RPNUnits=1",
                                          "RFPSUnits=2"};
  std::ptrdiff_t stored = 0;
  for (int round = 0; round < kRounds; ++round) {
    Write(kSettingsFile + std::string(".next"), kBefore);
    std::filesystem::rename(PathOf(kSettingsFile + std::string(".next")), PathOf(kSettingsFile));
    const int beeps = bell.Count() + otherBell.Count();
    PressAtOnce({"alt+o", "s", "o", "alt+o", "l", "o"}, {"alt+o", "b", "h", "alt+o", "f", "m"});
    // One that waits too long for the other gives up, and says so by a beep.
    DesktopProgram::Await("every option in the settings, or a beep for it", [&] {
      return CountStored(lines) + bell.Count() + otherBell.Count() - beeps >= 4;
    });
    stored += CountStored(lines);
  }
  reader.request_stop();
  reader.join();
  EXPECT_EQ(torn, "");
  EXPECT_GT(stored, kRounds) << "whoever waits in vain waits for one who stores";

  ExpectCleanEnds();
  for (const auto& file : std::filesystem::directory_iterator(PathOf("config/CorvanaSync"))) {
    EXPECT_EQ(file.path().string().find(".broken-"), std::string::npos) << file.path();
    EXPECT_EQ(file.path().string().find(".new"), std::string::npos) << file.path();
  }
}

}  // namespace
}  // namespace kelvara::test
