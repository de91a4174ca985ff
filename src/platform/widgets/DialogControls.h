#pragma once

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace kelvara::widgets {

/// Names a control, gives it its tool tip and, for readers of the screen, what it is called.
void NameControl(QWidget& control, const char* name, const char* accessibleName,
                 const char* toolTip);

/// A label of a dialog; its text is plain.
QLabel* NewLabel(QWidget& dialog, const char* name, const char* caption);

/// A text box of one line.
QLineEdit* NewTextBox(QWidget& dialog, const char* name, const char* accessibleName,
                      const char* toolTip);

/// A button; what it is called is its caption. Enter presses it while it has the keyboard; in a
/// field Enter presses no button, unless one is made the dialog's default.
QPushButton* NewButton(QWidget& dialog, const char* name, const char* caption, const char* toolTip);

/// The width of so many characters, and the height of so many lines, in a control's font.
int WidthOf(const QWidget& control, int characters);
int HeightOf(const QWidget& control, int lines);

/// Whether a key is Enter, on either part of the keyboard.
bool IsEnter(const QKeyEvent& event);

}  // namespace kelvara::widgets
