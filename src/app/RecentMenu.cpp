#include "app/RecentMenu.h"

#include <QAction>
#include <QDeadlineTimer>

#include "platform/qt/Text.h"

namespace kelvara::app {
namespace {

/// How long sessions are counted before other events are handled.
constexpr int kCountMilliseconds = 15;

}  // namespace

RecentMenu::RecentMenu(platform::SessionFolder& folder, platform::FileSystem& fileSystem,
                       std::function<void(const std::string& path)> open, QObject* parent)
    : QObject(parent), recent_(folder, fileSystem), open_(std::move(open)) {
  countTimer_.SetTick([this] { CountOn(); });
}

void RecentMenu::Fill(QMenu& menu) {
  recent_.List();
  for (const sessions::RecentSession& session : recent_.Sessions()) {
    connect(menu.addAction(QString()), &QAction::triggered, this,
            [this, path = session.path] { open_(path); });
  }
  if (recent_.Sessions().empty()) {
    menu.addAction(QStringLiteral("No other sessions"))->setEnabled(false);
    return;
  }
  if (menu_ != &menu) {
    menu_ = &menu;
    connect(&menu, &QMenu::aboutToHide, this, [this] { countTimer_.SwitchOff(); });
  }
  ShowTexts();
  countTimer_.SwitchOn();
}

void RecentMenu::CountOn() {
  const QDeadlineTimer end(kCountMilliseconds);
  bool more = true;
  while (more && !end.hasExpired()) {
    more = recent_.CountOn();
  }
  if (!more) {
    countTimer_.SwitchOff();
  }
  ShowTexts();
}

void RecentMenu::ShowTexts() {
  if (menu_ == nullptr) {
    return;
  }
  const QList<QAction*> entries = menu_->actions();
  for (qsizetype index = 0; index < entries.size(); ++index) {
    const sessions::RecentSession& session = recent_.Sessions()[static_cast<std::size_t>(index)];
    const QString text = qt::ToQString(session.text);
    if (entries[index]->text() != text) {
      entries[index]->setText(text);
      entries[index]->setEnabled(session.canOpen);
    }
  }
}

}  // namespace kelvara::app
