#include "app/MenuCorner.h"

#include <QEvent>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <algorithm>

#include "platform/widgets/DialogControls.h"

namespace kelvara::app {
namespace {

/// A flat button whose text uses its whole height: in the height of a menu bar, the margins of some
/// styles cut off letters.
class CornerButton : public QPushButton {
 public:
  CornerButton(const char* caption, QWidget* parent)
      : QPushButton(QString::fromLatin1(caption), parent) {
    setFlat(true);
    setAutoDefault(false);
    setFocusPolicy(Qt::NoFocus);
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    painter.drawControl(QStyle::CE_PushButtonBevel, option);
    const bool opensMenu = (option.features & QStyleOptionButton::HasMenu) != 0;
    const int arrow =
        opensMenu ? style()->pixelMetric(QStyle::PM_MenuButtonIndicator, &option, this) : 0;
    painter.drawItemText(rect().adjusted(0, 0, -arrow, 0), Qt::AlignCenter | Qt::TextShowMnemonic,
                         option.palette, isEnabled(), option.text, QPalette::ButtonText);
  }
};

}  // namespace

MenuCorner::MenuCorner(QMenuBar& menuBar)
    : QWidget(&menuBar), menuBar_(menuBar), buttons_(new QHBoxLayout(this)) {
  setObjectName(QStringLiteral("MenuCorner"));
  buttons_->setContentsMargins(0, 0, 0, 0);
  buttons_->setSpacing(0);
}

QPushButton& MenuCorner::AddButton(const char* name, const char* caption, const char* toolTip) {
  auto* const button = new CornerButton(caption, this);
  const QString plainCaption = button->text().remove(u'&');
  widgets::NameControl(*button, name, plainCaption.toLatin1().constData(), toolTip);
  buttons_->addWidget(button);
  FitHeight();
  menuBar_.setCornerWidget(this, Qt::TopRightCorner);
  return *button;
}

void MenuCorner::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
    FitHeight();
  }
}

void MenuCorner::FitHeight() {
  int height = 0;
  const QList<QAction*> menus = menuBar_.actions();
  for (QAction* const menu : menus) {
    height = std::max(height, menuBar_.actionGeometry(menu).height());
  }
  const QList<QPushButton*> shown = findChildren<QPushButton*>();
  for (QPushButton* const button : shown) {
    button->setMaximumHeight(height > 0 ? height : QWIDGETSIZE_MAX);
  }
}

}  // namespace kelvara::app
