#include "app/LogTextBox.h"

#include <QKeyEvent>
#include <QTextCursor>

#include "platform/qt/Text.h"
#include "platform/widgets/FixedPitchFont.h"

namespace kelvara::app {
namespace {

/// The kept text begins after the first line feed from here on, counted from 1.
constexpr int kKeptFrom = 16000;

}  // namespace

LogTextBox::LogTextBox(QWidget* parent) : QPlainTextEdit(parent) {
  setObjectName(QStringLiteral("TextLog"));
  setLineWrapMode(NoWrap);
  setTabChangesFocus(true);
  setUndoRedoEnabled(false);
  setAccessibleName(QStringLiteral("Sync data log"));
}

void LogTextBox::SetShown(bool shown) {
  if (shown) {
    // Set only now, so that start-up does not read a font for a box that stays hidden.
    setFont(widgets::CourierNew());
  }
  setHidden(!shown);
  if (shownChanged_) {
    shownChanged_();
  }
}

void LogTextBox::Append(std::string_view text) {
  if (text.empty() || !IsShown()) {
    return;
  }
  // The document counts one character more than the text has.
  if (document()->characterCount() - 1 > static_cast<int>(capture::kMostLogCharacters)) {
    DropOlderHalf();
  }
  moveCursor(QTextCursor::End);
  insertPlainText(qt::ToQString(text));
}

void LogTextBox::DropOlderHalf() {
  const QString whole = toPlainText();
  const qsizetype lineFeed = whole.indexOf(u'\n', kKeptFrom - 1);
  setPlainText(lineFeed < 0 ? whole.mid(kKeptFrom - 1) : whole.mid(lineFeed + 1));
}

void LogTextBox::keyPressEvent(QKeyEvent* event) {
  const bool control = (event->modifiers() & Qt::ControlModifier) != 0;
  if (control && event->key() == Qt::Key_A) {
    selectAll();
    return;
  }
  if (control && event->key() == Qt::Key_Backspace) {
    textCursor().removeSelectedText();
    return;
  }
  QPlainTextEdit::keyPressEvent(event);
}

}  // namespace kelvara::app
