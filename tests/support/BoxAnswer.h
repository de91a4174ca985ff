#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QMessageBox>
#include <QPushButton>
#include <functional>
#include <string>
#include <utility>

#include "support/WindowDriver.h"

namespace kelvara::test {

/// Waits for a message box, records what it shows and presses one of its buttons.
class BoxAnswer {
 public:
  /// `whileOpen` runs before the button is pressed.
  explicit BoxAnswer(QMessageBox::StandardButton button, std::function<void()> whileOpen = {})
      : button_(button),
        whileOpen_(std::move(whileOpen)),
        whenShown_("MsgBox", [this](QWidget& box) { Answer(dynamic_cast<QMessageBox&>(box)); }) {}

  bool HasCome() const { return whenShown_.HasCome(); }

  std::string text;
  std::string title;
  QMessageBox::Icon icon = QMessageBox::NoIcon;
  QMessageBox::StandardButtons buttons = QMessageBox::NoButton;
  /// The button that Enter presses; NoButton if the desktop chooses it.
  QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
  Qt::TextFormat format = Qt::AutoText;

 private:
  void Answer(QMessageBox& box) {
    text = box.text().toStdString();
    title = box.windowTitle().toStdString();
    icon = box.icon();
    buttons = box.standardButtons();
    defaultButton = box.standardButton(box.defaultButton());
    format = box.textFormat();
    if (whileOpen_) {
      whileOpen_();
    }
    Click(*box.button(button_));
  }

  QMessageBox::StandardButton button_;
  std::function<void()> whileOpen_;
  // The last member, since it starts looking for the box immediately.
  WhenShown whenShown_;
};

}  // namespace kelvara::test
