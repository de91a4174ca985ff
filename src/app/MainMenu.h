#pragma once

#include <QAction>
#include <QMenuBar>
#include <array>

#include "platform/MemoryMenuBar.h"
#include "platform/MenuBar.h"

namespace kelvara::app {

/// The main window's menus: built from the table of menu lines, in the states that hold before the
/// stored settings are applied.
class MainMenu : public platform::MenuBar {
 public:
  /// Fills the menu bar. Each entry is a QAction, and each submenu a QMenu, by its own name.
  explicit MainMenu(QMenuBar& menuBar);

  bool IsChecked(platform::MenuEntry entry) const override;
  void SetChecked(platform::MenuEntry entry, bool checked) override;
  bool IsEnabled(platform::MenuEntry entry) const override;
  void SetEnabled(platform::MenuEntry entry, bool enabled) override;
  bool IsVisible(platform::MenuEntry entry) const override;
  void SetVisible(platform::MenuEntry entry, bool visible) override;

  /// The action of an entry, by its name; null when there is none.
  QAction* Action(const char* name) const;

 private:
  QAction& Of(platform::MenuEntry entry) const;

  QMenuBar& menuBar_;
  std::array<QAction*, platform::kMenuEntryCount> actions_{};
};

}  // namespace kelvara::app
