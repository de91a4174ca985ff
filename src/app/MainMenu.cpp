#include "app/MainMenu.h"

#include <QMenu>
#include <cstddef>
#include <string_view>
#include <vector>

#include "app/MainMenuTable.h"
#include "app/OptionTable.h"

namespace kelvara::app {
namespace {

QAction& AddEntry(QMenu& menu, const char* name, const char* caption) {
  QAction* const action = menu.addAction(QString::fromLatin1(caption));
  action->setObjectName(QString::fromLatin1(name));
  return *action;
}

/// The entries of an option's submenu; none if the group belongs to no option.
std::vector<const OptionEntry*> OptionsOf(std::string_view group) {
  std::vector<const OptionEntry*> entries;
  for (const OptionEntry& entry : OptionEntries()) {
    if (entry.group == group) {
      entries.push_back(&entry);
    }
  }
  return entries;
}

}  // namespace

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
    const std::vector<const OptionEntry*> options = OptionsOf(line.name);
    const bool opensSubmenu = i + 1 < lines.size() && lines[i + 1].depth > line.depth;
    if (!opensSubmenu && options.empty()) {
      AddEntry(*open.back(), line.name, line.caption);
      continue;
    }
    const QString caption = QString::fromLatin1(line.caption);
    QMenu* const menu = open.empty() ? menuBar_.addMenu(caption) : open.back()->addMenu(caption);
    menu->setObjectName(QString::fromLatin1(line.name));
    open.push_back(menu);
    for (const OptionEntry* const option : options) {
      QAction& action = AddEntry(*menu, option->name, option->caption);
      action.setCheckable(true);
      action.setChecked(option->checkedAtFirst);
    }
  }
}

QAction& MainMenu::Entry(const char* name) const {
  const QString objectName = QString::fromLatin1(name);
  QMenu* const menu = menuBar_.findChild<QMenu*>(objectName);
  return menu != nullptr ? *menu->menuAction() : *menuBar_.findChild<QAction*>(objectName);
}

}  // namespace kelvara::app
