#pragma once

#include <QDialog>
#include <QList>
#include <QPushButton>

/// What the windows have in common.
namespace kelvara::widgets {

/// Enter does what a dialog's fields say, and nothing else: none of the buttons answers it.
inline void LeaveEnterToTheFields(const QDialog& dialog) {
  const QList<QPushButton*> buttons = dialog.findChildren<QPushButton*>();
  for (QPushButton* const button : buttons) {
    button->setAutoDefault(false);
    button->setDefault(false);
  }
}

/// Shows a window beside the others. One that is open comes to the front.
inline void ShowInFront(QWidget& window) {
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.show();
  window.raise();
  window.activateWindow();
}

}  // namespace kelvara::widgets
