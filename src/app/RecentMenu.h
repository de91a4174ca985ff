#pragma once

#include <QMenu>
#include <QObject>
#include <QPointer>
#include <functional>
#include <string>
#include <utility>

#include "platform/FileSystem.h"
#include "platform/SessionFolder.h"
#include "platform/qt/QtTimer.h"
#include "sessions/RecentSessions.h"

namespace kelvara::app {

/// Fills the menu of recent sessions, and counts them while it is open.
class RecentMenu : public QObject {
  Q_OBJECT

 public:
  /// The folder and the files must outlive this. `open` is called with the path of a session that
  /// the user chooses.
  RecentMenu(platform::SessionFolder& folder, platform::FileSystem& fileSystem,
             std::function<void(const std::string& path)> open, QObject* parent);

  /// Fills an empty menu that is about to show.
  void Fill(QMenu& menu);

 private:
  void CountOn();
  void ShowTexts();

  sessions::RecentSessions recent_;
  std::function<void(const std::string& path)> open_;
  QPointer<QMenu> menu_;
  qt::QtTimer countTimer_{0};
};

}  // namespace kelvara::app
