#include "app/MainMenu.h"

#include <QMenu>
#include <cstddef>
#include <vector>

#include "app/MainMenuTable.h"

namespace kelvara::app {

using platform::MenuEntry;

MainMenu::MainMenu(QMenuBar& menuBar) : menuBar_(menuBar) {
  const auto lines = MainMenuLines();
  std::vector<QMenu*> open;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const MenuLine& line = lines[i];
    open.resize(static_cast<std::size_t>(line.depth));
    if (line.name == nullptr) {
      open.back()->addSeparator();
      continue;
    }
    const bool hasSubmenu = i + 1 < lines.size() && lines[i + 1].depth > line.depth;
    const QString caption = QString::fromLatin1(line.caption);
    QAction* action = nullptr;
    if (hasSubmenu) {
      QMenu* const menu = open.empty() ? menuBar_.addMenu(caption) : open.back()->addMenu(caption);
      menu->setObjectName(QString::fromLatin1(line.name));
      open.push_back(menu);
      action = menu->menuAction();
    } else {
      action = open.back()->addAction(caption);
      action->setObjectName(QString::fromLatin1(line.name));
      action->setCheckable(line.checkable);
    }
    if (line.entry) {
      actions_.at(static_cast<std::size_t>(*line.entry)) = action;
    }
  }
  const platform::MemoryMenuBar initial;
  for (int i = 0; i < platform::kMenuEntryCount; ++i) {
    const auto entry = static_cast<MenuEntry>(i);
    SetChecked(entry, initial.IsChecked(entry));
    SetEnabled(entry, initial.IsEnabled(entry));
    SetVisible(entry, initial.IsVisible(entry));
  }
}

QAction* MainMenu::Action(const char* name) const {
  return menuBar_.findChild<QAction*>(QString::fromLatin1(name));
}

bool MainMenu::IsChecked(MenuEntry entry) const { return Of(entry).isChecked(); }

void MainMenu::SetChecked(MenuEntry entry, bool checked) { Of(entry).setChecked(checked); }

bool MainMenu::IsEnabled(MenuEntry entry) const { return Of(entry).isEnabled(); }

void MainMenu::SetEnabled(MenuEntry entry, bool enabled) { Of(entry).setEnabled(enabled); }

bool MainMenu::IsVisible(MenuEntry entry) const { return Of(entry).isVisible(); }

void MainMenu::SetVisible(MenuEntry entry, bool visible) { Of(entry).setVisible(visible); }

QAction& MainMenu::Of(MenuEntry entry) const {
  return *actions_.at(static_cast<std::size_t>(entry));
}

}  // namespace kelvara::app
