#pragma once

#include <QList>
#include <QPushButton>
#include <QWidget>

/// Behaviour that the windows share.
namespace kelvara::widgets {

/// Makes a button the dialog's default: it is drawn as such, and Enter presses it from every field.
/// Another button that has the focus takes Enter itself.
inline void MakeDefault(QPushButton& button) {
  const QList<QPushButton*> buttons = button.window()->findChildren<QPushButton*>();
  for (QPushButton* const each : buttons) {
    each->setAutoDefault(true);
  }
  button.setDefault(true);
}

/// Shows a modeless window. One that is already open comes to the front.
inline void ShowInFront(QWidget& window) {
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.show();
  window.raise();
  window.activateWindow();
}

}  // namespace kelvara::widgets
