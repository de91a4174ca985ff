#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <thread>

#include "system/desktop/DesktopTest.h"

namespace kelvara::test {
namespace {

using std::chrono::seconds;

/// How long the demo's beltpack takes to visit each of its antennas.
constexpr seconds kWalk{200};

constexpr const char* kMain = "Kelvara";
constexpr const char* kSettings =
    "[Settings]\nDisplayLog=True\nRFPSUnits=2\nFPSDisplay=True\n"
    "LastFile=/home/engineer/harbour/readings.txt\n"
    "LastReportFile=/home/engineer/harbour/report.html\n";
constexpr const char* kFields =
    "Harbour Theatre, Sampleford\r\nR. Marlow\r\n 1 \r\nAll antennas on, doors closed.\r\n";

/// A path given by the calling script in an environment variable.
std::string PathFrom(const char* name) {
  const char* const path = std::getenv(name);
  if (path == nullptr) {
    throw std::runtime_error("run this through scripts/help-pictures");
  }
  return path;
}

/// Makes the pictures of the help pages on an otherwise empty screen.
class HelpPictures : public DesktopTest {
 protected:
  HelpPictures() { screen->PointAt(VirtualScreen::kCorner); }

  void Save(QRect area, const std::string& name) const {
    // Waits until a new window is painted.
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    const std::string path = PathFrom("KELVARA_PICTURES") + "/" + name + ".png";
    screen->SavePicture(area, path);
    std::cout << path << std::endl;
  }

  void Save(const DesktopWindow& window, const std::string& name) const {
    Save(screen->AreaOf(window.id), name);
  }

  /// Opens a window by pressing keys in the main window.
  static DesktopWindow Show(const DesktopProgram& program, const std::vector<std::string>& keys,
                            const std::string& title) {
    program.Press(program.MainWindow(), keys);
    return program.Open(title);
  }

  static void Close(const DesktopProgram& program, const DesktopWindow& window) {
    program.Press(window, {"Escape"});
    program.WaitUntilClosed(window);
  }

  void SaveAndClose(const DesktopProgram& program, const DesktopWindow& window,
                    const std::string& name) const {
    Save(window, name);
    Close(program, window);
  }

  /// Saves every window that does not need readings.
  void SaveWindows(const DesktopProgram& program) const {
    Save(program.MainWindow(), "main-start");
    SaveAndClose(program, Show(program, {"alt+f", "s"}, "Select Serial Port"), "port-dialog");
    SaveAndClose(program, Show(program, {"alt+t", "l"}, "Capture Sync Reports To File"),
                 "capture-dialog");
    const DesktopWindow converter = Show(program, {"alt+t", "c"}, "Converter");
    program.Press(converter, {"9", "Return"});
    program.Press(converter, std::vector<std::string>(10, "Tab"));
    program.Press(converter, {"0", "A", "Return"});
    SaveAndClose(program, converter, "converter");
    SaveAndClose(program, Show(program, {"alt+h", "a"}, "About Kelvara"), "about");
    const DesktopWindow debug = Show(program, {"alt+o", "Up", "Right", "o"}, "Kelvara Debug");
    // Waits for a report.
    std::this_thread::sleep_for(seconds(7));
    SaveAndClose(program, debug, "debug");
  }

  /// Saves the filled grid and the windows that need readings.
  void SaveResults(const DesktopProgram& program) const {
    const DesktopWindow window = program.MainWindow();
    Save(window, "main");
    const QPoint corner = screen->AreaOf(window.id).topLeft();
    screen->PointAt(corner + QPoint(210, 157));
    std::this_thread::sleep_for(seconds(2));
    Save({corner + QPoint(0, 20), QSize(560, 220)}, "grid-tool-tip");
    screen->PointAt(VirtualScreen::kCorner);
    program.Press(window, {"alt+o", "f"});
    Save({corner, QSize(560, 220)}, "menu-options");
    program.Press(window, {"Escape", "Escape"});
    SaveAndClose(program, Show(program, {"alt+t", "g"}, "Generate Reoprt"), "report-dialog");
    SaveAndClose(program, Show(program, {"alt+s"}, "Survey"), "survey");
  }

  void WriteReport(const DesktopProgram& program) const {
    // Without the FPS the whole report fits into the picture.
    program.Press(program.MainWindow(), {"alt+o", "s", "f"});
    const DesktopWindow dialog = Show(program, {"alt+t", "g"}, "Generate Reoprt");
    program.FillIn(dialog, "File", PathOf("report.html"));
    program.Press(dialog, {"Return"});
    program.WaitUntilClosed(dialog);
    const std::string path = PathFrom("KELVARA_PICTURED_REPORT");
    std::filesystem::copy(PathOf("report.html"), path,
                          std::filesystem::copy_options::overwrite_existing);
  }
};

TEST_F(HelpPictures, ShowAMissingPort) {
  const auto program = Start({"--com", "1=/dev/ttyUSB0"});
  const DesktopWindow message = program->Open(kMain);
  Save(program->MainWindow(), "could-not-open");
  program->Press(message, {"Return"});
  Save(program->Open("Select Serial Port"), "port-absent");
}

TEST_F(HelpPictures, ShowASessionWithTheBuiltInBeltpack) {
  Write(kSettingsFile, kSettings);
  Write("bin/rfields.ds", kFields);
  const auto program = Start({"--demo"});
  const auto walkEnd = std::chrono::steady_clock::now() + kWalk;
  SaveWindows(*program);
  std::this_thread::sleep_until(walkEnd);
  SaveResults(*program);
  WriteReport(*program);
}

}  // namespace
}  // namespace kelvara::test
