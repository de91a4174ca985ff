#pragma once

#include <QList>
#include <QPushButton>
#include <QWidget>

/// What the windows have in common.
namespace kelvara::widgets {

/// Enter presses this button from every field of the dialog, and is drawn so; another button that
/// has the keyboard takes Enter for itself.
inline void MakeDefault(QPushButton& button) {
  const QList<QPushButton*> buttons = button.window()->findChildren<QPushButton*>();
  for (QPushButton* const each : buttons) {
    each->setAutoDefault(true);
  }
  button.setDefault(true);
}

/// Shows a window beside the others. One that is open comes to the front.
inline void ShowInFront(QWidget& window) {
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.show();
  window.raise();
  window.activateWindow();
}

}  // namespace kelvara::widgets
