#include "app/SessionsMenu.h"

#include <QAccessible>
#include <QFontMetrics>
#include <utility>

#include "platform/EventHandler.h"

namespace kelvara::app {
namespace {

/// Wider, the menu would not fit on a small screen at twice the scale.
constexpr int kWidestFailurePixels = 450;

}  // namespace

SessionsMenu::SessionsMenu(MenuCorner& corner, QAction& exportResults, platform::Beeper& beeper)
    : QMenu(&corner),
      beeper_(beeper),
      button_(corner.AddButton(
          "CmdSessions", "Sess&ions",
          "Recorded sessions, the undo of a clear, and the export of the results.")) {
  setObjectName(QStringLiteral("mnuSessions"));
  openSession_ = AddDisabled("mnuOpenSession", "&Open...");
  recentSessions_ = addMenu(QStringLiteral("&Recent"));
  recentSessions_->setObjectName(QStringLiteral("mnuRecentSessions"));
  recentSessions_->menuAction()->setEnabled(false);
  addSeparator();
  undoClear_ = AddDisabled("mnuUndoClear", "&Undo Clear");
  addAction(&exportResults);
  button_.setMenu(this);
}

void SessionsMenu::SetOpenSession(std::function<void()> open) {
  OnChosen(*openSession_, std::move(open));
  openSession_->setEnabled(true);
}

void SessionsMenu::SetRecentSessions(std::function<void(QMenu&)> fill) {
  connect(recentSessions_, &QMenu::aboutToShow, this, [this, fill = std::move(fill)] {
    recentSessions_->clear();
    platform::HandleEvent(beeper_, [&] { fill(*recentSessions_); });
  });
  recentSessions_->menuAction()->setEnabled(true);
}

void SessionsMenu::SetUndoClear(std::function<void()> undo) {
  OnChosen(*undoClear_, std::move(undo));
}

void SessionsMenu::ShowJournalFailure(const QString& reason) {
  const QString text = QStringLiteral("This session is not kept: %1").arg(reason);
  const QString shortened =
      QFontMetrics(font()).elidedText(text, Qt::ElideMiddle, kWidestFailurePixels);
  auto* const line = new QAction(QString(shortened).replace(u'&', QStringLiteral("&&")), this);
  line->setObjectName(QStringLiteral("mnuJournalFailure"));
  line->setEnabled(false);
  insertAction(openSession_, line);
  insertSeparator(openSession_);
  button_.setText(button_.text() + QStringLiteral(" (!)"));
  button_.setToolTip(text);
  button_.setAccessibleDescription(text);
  QAccessibleEvent alert(&button_, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

QAction* SessionsMenu::AddDisabled(const char* name, const char* caption) {
  QAction* const entry = addAction(QString::fromLatin1(caption));
  entry->setObjectName(QString::fromLatin1(name));
  entry->setEnabled(false);
  return entry;
}

void SessionsMenu::OnChosen(QAction& entry, std::function<void()> command) {
  connect(&entry, &QAction::triggered, this,
          [this, command = std::move(command)] { platform::HandleEvent(beeper_, command); });
}

}  // namespace kelvara::app
