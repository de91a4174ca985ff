#pragma once

#include <QAction>
#include <QMenu>
#include <functional>

#include "app/MenuCorner.h"
#include "platform/Beeper.h"

namespace kelvara::app {

/// The menu of the button `CmdSessions` in the corner of the menu bar: what can be done with
/// sessions and results. An entry without a command is disabled.
class SessionsMenu : public QMenu {
  Q_OBJECT

 public:
  /// Adds the button to the corner, which owns it and its menu. The menu shares the action that
  /// exports the results with its owner. The beeper must outlive the menu; a fault that a command
  /// does not catch is a beep.
  SessionsMenu(MenuCorner& corner, QAction& exportResults, platform::Beeper& beeper);

  /// Sets the command that lets the user choose a recorded session to open.
  void SetOpenSession(std::function<void()> open);

  /// Sets what fills the menu of recent sessions, which is empty then, each time it is about to
  /// show.
  void SetRecentSessions(std::function<void(QMenu& menu)> fill);

  /// Sets the command that restores the results that were cleared. The entry is enabled by
  /// `SetCanUndoClear`.
  void SetUndoClear(std::function<void()> undo);
  void SetCanUndoClear(bool can) { undoClear_->setEnabled(can); }

  /// Marks the button, and adds a first line to the menu that says why this session is not kept.
  void ShowJournalFailure(const QString& reason);

 private:
  QAction* AddDisabled(const char* name, const char* caption);
  void OnChosen(QAction& entry, std::function<void()> command);

  platform::Beeper& beeper_;
  QPushButton& button_;
  QAction* openSession_;
  QMenu* recentSessions_;
  QAction* undoClear_;
};

}  // namespace kelvara::app
