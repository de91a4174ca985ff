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

/// A running desktop program, operated and read as by its user. If something does not happen in
/// time, throws std::runtime_error with what was expected.
class DesktopProgram {
 public:
  DesktopProgram(const VirtualScreen& screen, const AccessibleBus& bus,
                 const ProcessRequest& request);

  pid_t Id() const { return process_.Id(); }

  /// Waits for a window with this title and gives it the keyboard focus. The main window and a
  /// message may have the same title; `dialog` asks for a window that belongs to another.
  DesktopWindow Open(const std::string& title, bool dialog = true) const;
  DesktopWindow MainWindow() const { return Open("Kelvara", false); }

  void WaitUntilClosed(const DesktopWindow& window) const;
  bool IsOpen(const DesktopWindow& window) const;

  /// Every window except the main window, the most recent first.
  std::vector<DesktopWindow> OtherWindows() const;

  /// Presses keys in a window.
  void Press(const DesktopWindow& window, const std::vector<std::string>& keys) const;

  /// Chooses an entry of the main window's menus with the mouse: {"Options", "Display Log", "On"}.
  void Choose(const std::vector<std::string>& entries) const;

  /// Opens the grid's context menu.
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

  /// The number of rows of the grid, including the header row.
  int GridRows() const;

  std::string LogText() const;

  /// What the notice line says; empty while it is hidden.
  std::string Notice() const;

  /// A hash of the picture of a panel of the status bar, counted from 1: the same for the same
  /// text. Nothing may cover the panel.
  std::size_t Panel(int number) const;

  bool IsChecked(const std::vector<std::string>& entries) const;
  bool IsEnabled(const std::vector<std::string>& entries) const;

  /// Asks a window to close, as the close button of its frame does.
  void RequestClose(const DesktopWindow& window) const { screen_.RequestClose(window.id); }

  void Signal(int number) const { process_.Signal(number); }
  ProcessResult Finish(Process::Duration limit = kPatience) { return process_.Finish(limit); }

  /// Longer than anything that a user waits for takes, even on a busy machine.
  static constexpr Process::Duration kPatience{15000};

  /// Waits until `holds` returns true. `what` names it in the failure.
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
  // The main window's controls do not change.
  mutable std::map<std::string, ScreenItem> mainControls_;
};

}  // namespace kelvara::test
