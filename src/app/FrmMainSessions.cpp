#include "app/FrmMain.h"

namespace kelvara::app {

void FrmMain::BuildSessionsMenu() {
  sessionsMenu_ = new SessionsMenu(
      *corner_, *Grid_->findChild<QAction*>(QStringLiteral("mnuExportResults")), desktop_.beeper);
  sessionsMenu_->SetUndoClear([this] { notices_->UndoClear(); });
}

}  // namespace kelvara::app
