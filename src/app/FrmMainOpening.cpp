#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <algorithm>
#include <vector>

#include "app/FrmMain.h"
#include "app/RecentMenu.h"
#include "platform/EventHandler.h"
#include "platform/qt/PathText.h"

namespace kelvara::app {
namespace {

std::vector<std::string> LocalFiles(const QMimeData& data) {
  std::vector<std::string> files;
  for (const QUrl& address : data.urls()) {
    if (address.isLocalFile()) {
      files.push_back(qt::ChosenPath(address.toLocalFile(), address));
    }
  }
  return files;
}

}  // namespace

void FrmMain::SetSessionOpening(SessionOpener::StartReview startReview,
                                platform::SessionFolder& folder) {
  sessionOpener_ = std::make_unique<SessionOpener>(desktop_, std::move(startReview));
  sessionsMenu_->SetOpenSession([this, &folder] {
    std::string path = folder.PathOf("");
    path.pop_back();
    sessionOpener_->mnuOpenSession_Click(path);
  });
  auto* const recent = new RecentMenu(
      folder, desktop_.fileSystem, [this](const std::string& path) { sessionOpener_->Open(path); },
      this);
  sessionsMenu_->SetRecentSessions([recent](QMenu& menu) { recent->Fill(menu); });
  setAcceptDrops(true);
}

void FrmMain::dragEnterEvent(QDragEnterEvent* event) {
  if (!LocalFiles(*event->mimeData()).empty()) {
    // A file manager would remove a file that is moved.
    event->setDropAction(Qt::CopyAction);
    event->accept();
  }
}

void FrmMain::dropEvent(QDropEvent* event) {
  event->setDropAction(Qt::CopyAction);
  event->accept();
  platform::HandleEvent(desktop_.beeper, [this, event] {
    sessionOpener_->OpenDropped(LocalFiles(*event->mimeData()));
  });
}

}  // namespace kelvara::app
