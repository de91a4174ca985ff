#pragma once

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace kelvara::widgets {

/// Sets a control's object name, its name for screen readers and its tool tip.
void NameControl(QWidget& control, const char* name, const char* accessibleName,
                 const char* toolTip);

/// Creates a label with plain text.
QLabel* NewLabel(QWidget& dialog, const char* name, const char* caption);

/// Creates a text box of one line.
QLineEdit* NewTextBox(QWidget& dialog, const char* name, const char* accessibleName,
                      const char* toolTip);

/// Creates a button, whose name for screen readers is its caption. Enter presses it while it has
/// the focus; in a field, Enter presses no button unless one is made the dialog's default.
QPushButton* NewButton(QWidget& dialog, const char* name, const char* caption, const char* toolTip);

/// The width of a number of characters, and the height of a number of lines, in a control's font,
/// in pixels.
int WidthOf(const QWidget& control, int characters);
int HeightOf(const QWidget& control, int lines);

/// Whether a key is Enter, on the main keyboard or the number pad.
bool IsEnter(const QKeyEvent& event);

}  // namespace kelvara::widgets
