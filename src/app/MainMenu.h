#pragma once

#include <QAction>
#include <QMenuBar>

namespace kelvara::app {

/// The main window's menus, built from the tables of menu lines and of options.
class MainMenu {
 public:
  /// Fills the menu bar. Each entry is a QAction, and each submenu a QMenu, by its own name.
  explicit MainMenu(QMenuBar& menuBar);

  /// The action of an entry or submenu. There has to be one of that name.
  QAction& Entry(const char* name) const;

 private:
  QMenuBar& menuBar_;
};

}  // namespace kelvara::app
