#include "app/MenuCorner.h"

#include <QEvent>
#include <QStyle>
#include <algorithm>

#include "platform/widgets/DialogControls.h"

namespace kelvara::app {

MenuCorner::MenuCorner(QMenuBar& menuBar)
    : QWidget(&menuBar), menuBar_(menuBar), buttons_(new QHBoxLayout(this)) {
  setObjectName(QStringLiteral("MenuCorner"));
  buttons_->setContentsMargins(0, 0, 0, 0);
  buttons_->setSpacing(0);
}

QPushButton& MenuCorner::AddButton(const char* name, const char* caption, const char* toolTip) {
  QPushButton* const button = widgets::NewButton(*this, name, caption, toolTip);
  button->setFlat(true);
  button->setFocusPolicy(Qt::NoFocus);
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
