#include "app/FrmMain.h"
#include "help/ProgramTitle.h"

namespace kelvara::app {

void FrmMain::BuildSessionsMenu() {
  sessionsMenu_ = new SessionsMenu(
      *corner_, *Grid_->findChild<QAction*>(QStringLiteral("mnuExportResults")), desktop_.beeper);
  sessionsMenu_->SetUndoClear([this] { mnuUndoClear_Click(); });
}

void FrmMain::mnuUndoClear_Click() {
  const std::string reason = live_->RestoreClearedResults();
  if (!reason.empty()) {
    desktop_.messageBoxes.Show(reason, help::kProgramTitle, platform::MessageIcon::Exclamation,
                               platform::MessageButtons::Ok);
  }
}

}  // namespace kelvara::app
