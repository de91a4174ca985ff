#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "support/Process.h"
#include "system/desktop/AccessibleBus.h"
#include "system/desktop/ScreenReader.h"
#include "system/desktop/VirtualScreen.h"

namespace kelvara::test {

/// The desktop program at work, its user's hands on it and eyes upon it. What does not happen in
/// time is thrown as a failure that says what was to be seen.
class DesktopProgram {
 public:
  DesktopProgram(const VirtualScreen& screen, const AccessibleBus& bus,
                 const ProcessRequest& request);

  pid_t Id() const { return process_.Id(); }

  /// Waits for a window of this title and gives it the keyboard. The main window and a message may
  /// have the same; `dialog` asks for one that stands over another.
  DesktopWindow Open(const std::string& title, bool dialog = true) const;
  DesktopWindow MainWindow() const { return Open("Kelvara", false); }

  void WaitUntilClosed(const DesktopWindow& window) const;
  bool IsOpen(const DesktopWindow& window) const;

  /// Every window but the main window, the last that came up first.
  std::vector<DesktopWindow> OtherWindows() const;

  /// Presses keys in a window.
  void Press(const DesktopWindow& window, const std::vector<std::string>& keys) const;

  /// Chooses an entry of the main window's menus with the mouse: {"Options", "Display Log", "On"}.
  void Choose(const std::vector<std::string>& entries) const;

  /// Opens the menu that belongs to the grid.
  void OpenGridMenu() const;

  /// Presses a button of a window with the mouse.
  void PressButton(const DesktopWindow& window, const std::string& name) const;

  /// Replaces the text of a field.
  void FillIn(const DesktopWindow& window, const std::string& field, const std::string& text) const;
  std::string FieldText(const DesktopWindow& window, const std::string& field) const;

  /// The text of a message.
  std::string MessageText(const DesktopWindow& message) const;

  /// The names of a window's buttons, in reading order.
  std::vector<std::string> Buttons(const DesktopWindow& window) const;

  /// The texts of the grid, row by row.
  std::vector<std::vector<std::string>> Grid() const;

  /// How many rows the grid has, the one of its headings included.
  int GridRows() const;

  std::string LogText() const;

  /// What a panel of the status bar looks like, counted from 1: a number that is the same for the
  /// same text. Nothing may stand over it.
  std::size_t Panel(int number) const;

  bool IsChecked(const std::vector<std::string>& entries) const;
  bool IsEnabled(const std::vector<std::string>& entries) const;

  /// Asks a window to close, as the box in its frame does.
  void RequestClose(const DesktopWindow& window) const { screen_.RequestClose(window.id); }

  void Signal(int number) const { process_.Signal(number); }
  ProcessResult Finish(Process::Duration limit = kPatience) { return process_.Finish(limit); }

  /// Longer than anything takes that a user waits for, on a machine with much else to do.
  static constexpr Process::Duration kPatience{15000};

  /// Waits until something holds.
  static void Await(const std::string& what, const std::function<bool()>& holds,
                    Process::Duration limit = kPatience);

 private:
  ScreenReader Reader() const;
  ScreenItem Seen(const DesktopWindow& window) const;
  ScreenItem Control(const DesktopWindow& window, const std::string& role,
                     const std::string& name) const;
  ScreenItem MenuEntry(const std::vector<std::string>& entries) const;
  void ClickOn(const ScreenItem& item, int button = 1) const;

  const VirtualScreen& screen_;
  const AccessibleBus& bus_;
  Process process_;
  mutable std::optional<QString> name_;
  // The main window's controls stay what they are.
  mutable std::map<std::string, ScreenItem> mainControls_;
};

}  // namespace kelvara::test
