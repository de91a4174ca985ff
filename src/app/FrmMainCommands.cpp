#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QPushButton>

#include "app/FrmMain.h"
#include "app/MainMenuTable.h"
#include "app/OptionGroups.h"
#include "capture/FrmCapture.h"
#include "convert/FrmConvert.h"
#include "help/FrmAbout.h"
#include "link/FrmComSelect.h"
#include "platform/EventHandler.h"
#include "report/FrmReport.h"

namespace kelvara::app {

using platform::MenuEntry;

void FrmMain::ConnectMenus() {
  OnMenu("mnuComPort", [this] { mnuComPort_Click(); });
  OnMenu("mnuClearGrid", [this] { live_->mnuClearGrid_Click(); });
  OnMenu("mnuForceSearch", [this] { live_->Link().mnuForceSearch_Click(); });
  OnMenu("mnuClearLog", [this] { TextLog_->Clear(); });
  OnMenu("mnuExit", [this] { close(); });

  for (const MenuLine& line : MainMenuLines()) {
    if (line.checkable && line.entry) {
      OnMenu(line.name, [this, entry = *line.entry] { live_->Display().Choose(entry); });
    }
  }
  OnMenu("mnuViewDebugOn", [this] { mnuViewDebugOn_Click(); });
  OnMenu("mnuViewDebugOff", [this] { mnuViewDebugOff_Click(); });

  OnMenu("mnuCaptureStop", [this] { StopLoggingToFile(); });
  OnMenu("mnuCapturePause", [this] { PauseLoggingToFile(); });
  OnMenu("mnuCaptureResume", [this] { ResumeLoggingToFile(); });
  OnMenu("mnuCaptureDataStart",
         [this] { capture::FrmCapture(*captureDialog_, machine_.beeper, this).exec(); });
  OnMenu("mnuGenReport", [this] { mnuGenReport_Click(); });
  OnMenu("mnuConvertor", [this] { mnuConvertor_Click(); });

  OnMenu("mnuContents", [this] { helpCommands_->mnuContents_Click(sHelpPath_); });
  OnMenu("mnuOrrinWeb", [this] { helpCommands_->mnuOrrinWeb_Click(); });
  OnMenu("mnuAbout", [this] { help::FrmAbout(this).exec(); });

  connect(CommandStartStop_, &QPushButton::clicked, this, [this] { CommandStartStop_Click(); });
  connect(CmdChkRx_, &QPushButton::clicked, this, [this] {
    platform::HandleEvent(machine_.beeper, [this] { live_->Link().CmdChkRx_Click(); });
  });
}

void FrmMain::OnMenu(const char* name, const std::function<void()>& command) {
  OnAction(*menu_->Action(name), command);
}

void FrmMain::OnAction(QAction& action, const std::function<void()>& command) {
  connect(&action, &QAction::triggered, this,
          [this, command] { platform::HandleEvent(machine_.beeper, command); });
}

void FrmMain::BuildGridMenu() {
  Grid_->setContextMenuPolicy(Qt::ActionsContextMenu);
  auto* const exportResults = new QAction(QStringLiteral("Export Results to &CSV..."), Grid_);
  exportResults->setObjectName(QStringLiteral("mnuExportResults"));
  auto* const copy = new QAction(QStringLiteral("&Copy"), Grid_);
  copy->setObjectName(QStringLiteral("mnuCopyGrid"));
  Grid_->addActions({exportResults, copy});
  OnAction(*exportResults, [this] { exportCommand_->ExportResults(); });
  OnAction(*copy, [this] { QApplication::clipboard()->setText(Grid_->GridText()); });
}

void FrmMain::ShowPortDialog() {
  link::FrmComSelect(live_->Port(), machine_.messageBoxes, machine_.describePort, this).exec();
}

void FrmMain::mnuComPort_Click() {
  ShowPortDialog();
  if (isUnloaded_) {
    return;
  }
  live_->Port().ShowPort();
  if (live_->Port().IsOpen()) {
    StartLink();
  }
}

void FrmMain::mnuGenReport_Click() {
  if (reportDialog_->HasPhaseInformation()) {
    report::FrmReport(*reportDialog_, machine_.beeper, this).exec();
  }
}

void FrmMain::mnuConvertor_Click() {
  if (convert_ == nullptr) {
    convert_ = new convert::FrmConvert(machine_.beeper, this);
  }
  convert_->Open();
}

void FrmMain::mnuViewDebugOn_Click() {
  if (debug_ == nullptr) {
    debug_ = new FrmDebug([this] { CheckOption(*menu_, MenuEntry::mnuViewDebugOff); }, this);
    debugView_.Show(debug_);
  }
  debug_->Open();
  CheckOption(*menu_, MenuEntry::mnuViewDebugOn);
}

void FrmMain::mnuViewDebugOff_Click() {
  CheckOption(*menu_, MenuEntry::mnuViewDebugOff);
  if (debug_ != nullptr) {
    debug_->close();
  }
}

void FrmMain::CommandStartStop_Click() {
  const QString start = QStringLiteral("Start");
  if (CommandStartStop_->text() == start) {
    timers_->RfpsTimer.SwitchOn();
    CommandStartStop_->setText(QStringLiteral("Stop"));
  } else {
    timers_->RfpsTimer.SwitchOff();
    CommandStartStop_->setText(start);
  }
}

}  // namespace kelvara::app
