#include "platform/widgets/DialogControls.h"

#include <QFontMetrics>
#include <algorithm>

namespace kelvara::widgets {
namespace {

/// A button that Enter presses only while it has the focus; in a field, Enter belongs to the field.
class Button : public QPushButton {
 public:
  using QPushButton::QPushButton;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (!IsEnter(*event)) {
      QPushButton::keyPressEvent(event);
    } else if (!event->isAutoRepeat()) {
      click();
    }
  }
};

}  // namespace

void NameControl(QWidget& control, const char* name, const char* accessibleName,
                 const char* toolTip) {
  control.setObjectName(QString::fromLatin1(name));
  control.setAccessibleName(QString::fromLatin1(accessibleName));
  control.setToolTip(QString::fromLatin1(toolTip));
}

QLabel* NewLabel(QWidget& dialog, const char* name, const char* caption) {
  auto* const label = new QLabel(&dialog);
  label->setObjectName(QString::fromLatin1(name));
  label->setTextFormat(Qt::PlainText);
  label->setText(QString::fromLatin1(caption));
  return label;
}

QLineEdit* NewTextBox(QWidget& dialog, const char* name, const char* accessibleName,
                      const char* toolTip) {
  auto* const textBox = new QLineEdit(&dialog);
  NameControl(*textBox, name, accessibleName, toolTip);
  return textBox;
}

QPushButton* NewButton(QWidget& dialog, const char* name, const char* caption,
                       const char* toolTip) {
  auto* const button = new Button(QString::fromLatin1(caption), &dialog);
  button->setAutoDefault(false);
  const QString plainCaption = button->text().remove(u'&');
  NameControl(*button, name, plainCaption.toLatin1().constData(), toolTip);
  return button;
}

int WidthOf(const QWidget& control, int characters) {
  return QFontMetrics(control.font()).averageCharWidth() * characters;
}

int HeightOf(const QWidget& control, int lines) {
  // Text layout ignores the negative leading of some fonts.
  const QFontMetrics metrics(control.font());
  return std::max(metrics.lineSpacing(), metrics.height()) * lines;
}

bool IsEnter(const QKeyEvent& event) {
  const Qt::KeyboardModifiers others =
      event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
  return (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) &&
         others == Qt::NoModifier;
}

}  // namespace kelvara::widgets
