#pragma once

#include <QAction>
#include <QMenuBar>

namespace kelvara::app {

/// The main window's menus, built from the tables of menu lines and of options.
class MainMenu {
 public:
  /// Fills the menu bar: a QAction for each entry and a QMenu for each submenu, named after it.
  explicit MainMenu(QMenuBar& menuBar);

  /// The action of the entry or submenu of that name, which must exist.
  QAction& Entry(const char* name) const;

 private:
  QMenuBar& menuBar_;
};

}  // namespace kelvara::app
