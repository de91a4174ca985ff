#pragma once

#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <functional>
#include <string>
#include <utility>

#include "support/WindowDriver.h"

namespace kelvara::test {

/// Waits for the file chooser, records what it shows, types a name and presses Enter, or Esc if the
/// name is empty.
class ChooserUser {
 public:
  explicit ChooserUser(std::string name)
      : name_(std::move(name)), whenShown_("CommonDialog1", [this](QWidget& dialog) {
          Choose(dynamic_cast<QFileDialog&>(dialog));
        }) {}

  bool HasCome() const { return whenShown_.HasCome(); }

  std::string title;
  std::string folder;
  std::string initialName;
  QStringList filters;
  bool asksBeforeOverwriting = false;

 private:
  void Choose(QFileDialog& dialog) {
    auto& nameBox = Find<QLineEdit>(dialog, "fileNameEdit");
    title = dialog.windowTitle().toStdString();
    folder = dialog.directory().absolutePath().toStdString();
    initialName = nameBox.text().toStdString();
    filters = dialog.nameFilters();
    asksBeforeOverwriting = !dialog.testOption(QFileDialog::DontConfirmOverwrite);
    if (name_.empty()) {
      Press(dialog, Qt::Key_Escape);
      return;
    }
    Fill(nameBox, name_);
    // An open list of completions would take the key.
    nameBox.setCompleter(nullptr);
    Press(dialog, Qt::Key_Return);
  }

  std::string name_;
  // The last member, since it starts looking for the chooser immediately.
  WhenShown whenShown_;
};

}  // namespace kelvara::test
