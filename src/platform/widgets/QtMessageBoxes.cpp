#include "platform/widgets/QtMessageBoxes.h"

#include <QApplication>
#include <QFontMetrics>
#include <QGridLayout>
#include <QMessageBox>
#include <algorithm>

#include "platform/qt/PathText.h"
#include "platform/qt/Text.h"

namespace kelvara::widgets {
namespace {

using platform::MessageAnswer;
using platform::MessageButtons;
using platform::MessageIcon;

/// The width of a title bar's icon and buttons, in pixels.
constexpr int kTitleButtons = 100;

QMessageBox::Icon IconOf(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::Critical:
      return QMessageBox::Critical;
    case MessageIcon::Exclamation:
      return QMessageBox::Warning;
    case MessageIcon::Question:
      return QMessageBox::Question;
  }
  return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons ButtonsOf(MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::Ok:
      return QMessageBox::Ok;
    case MessageButtons::OkCancel:
      return QMessageBox::Ok | QMessageBox::Cancel;
    case MessageButtons::YesNo:
    case MessageButtons::YesNoDefaultNo:
      return QMessageBox::Yes | QMessageBox::No;
  }
  return QMessageBox::Ok;
}

/// The window that a box appears over: the active one or, while the user is in another program, the
/// main window. None if that is minimised.
QWidget* WindowInFront() {
  if (QApplication::activeModalWidget() != nullptr) {
    return QApplication::activeModalWidget();
  }
  if (QApplication::activeWindow() != nullptr) {
    return QApplication::activeWindow();
  }
  const QWidgetList windows = QApplication::topLevelWidgets();
  const auto visible = std::find_if(windows.begin(), windows.end(), [](const QWidget* window) {
    return window->windowType() == Qt::Window && window->parentWidget() == nullptr &&
           window->isVisible() && !window->isMinimized();
  });
  return visible == windows.end() ? nullptr : *visible;
}

}  // namespace

MessageAnswer QtMessageBoxes::Show(std::string_view text, std::string_view title, MessageIcon icon,
                                   MessageButtons buttons) {
  QMessageBox box(IconOf(icon), qt::ToQString(title), QString(), ButtonsOf(buttons),
                  WindowInFront());
  box.setObjectName(QStringLiteral("MsgBox"));
  box.setTextFormat(Qt::PlainText);
  box.setText(qt::MessageText(text));
  if (buttons == MessageButtons::YesNoDefaultNo) {
    box.setDefaultButton(QMessageBox::No);
  }
  if (auto* const layout = qobject_cast<QGridLayout*>(box.layout())) {
    // A box as narrow as its text would cut off its title.
    const int width = QFontMetrics(box.font()).horizontalAdvance(box.windowTitle()) + kTitleButtons;
    layout->addItem(new QSpacerItem(width, 0), layout->rowCount(), 0, 1, layout->columnCount());
  }
  switch (box.exec()) {
    case QMessageBox::Yes:
      return MessageAnswer::Yes;
    case QMessageBox::No:
      return MessageAnswer::No;
    case QMessageBox::Ok:
      return MessageAnswer::Ok;
    default:
      return (ButtonsOf(buttons) & QMessageBox::No) != 0 ? MessageAnswer::No
                                                         : MessageAnswer::Cancel;
  }
}

}  // namespace kelvara::widgets
