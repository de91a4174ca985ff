#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QPushButton>
#include <string_view>

#include "app/FrmMain.h"
#include "app/OptionTable.h"
#include "capture/FrmCapture.h"
#include "convert/FrmConvert.h"
#include "help/FrmAbout.h"
#include "link/FrmComSelect.h"
#include "platform/EventHandler.h"
#include "platform/widgets/DialogManners.h"
#include "report/FrmReport.h"
#include "survey/FrmSurvey.h"

namespace kelvara::app {
namespace {

constexpr const char* kWaitingText =
    "Waiting for the first sync report.\n"
    "The beltpack sends one when it is connected and hears an antenna.";
constexpr const char* kNotPolledText =
    "No beltpack is polled.\n"
    "File > Select COM Port chooses the port of one.";

}  // namespace

void FrmMain::ConnectMenus() {
  OnMenu("mnuComPort", [this] { mnuComPort_Click(); });
  OnMenu("mnuClearGrid", [this] { live_->mnuClearGrid_Click(); });
  OnMenu("mnuForceSearch", [this] { live_->Link().mnuForceSearch_Click(); });
  OnMenu("mnuClearLog", [this] { TextLog_->Clear(); });
  OnMenu("mnuExit", [this] { close(); });

  for (const OptionEntry& option : OptionEntries()) {
    OnMenu(option.name, [this, &option] { live_->Display().Choose(option); });
  }
  OnMenu("mnuViewDebugOn", [this] { mnuViewDebugOn_Click(); });
  OnMenu("mnuViewDebugOff", [this] { mnuViewDebugOff_Click(); });

  OnMenu("mnuCaptureStop", [this] { StopLoggingToFile(); });
  OnMenu("mnuCapturePause", [this] { PauseLoggingToFile(); });
  OnMenu("mnuCaptureResume", [this] { ResumeLoggingToFile(); });
  OnMenu("mnuCaptureDataStart",
         [this] { capture::FrmCapture(*captureDialog_, desktop_.beeper, this).exec(); });
  OnMenu("mnuGenReport", [this] { mnuGenReport_Click(); });
  OnMenu("mnuConvertor", [this] { mnuConvertor_Click(); });

  OnMenu("mnuContents", [this] { helpCommands_->mnuContents_Click(sHelpPath_); });
  OnMenu("mnuOrrinWeb", [this] { helpCommands_->mnuOrrinWeb_Click(); });
  OnMenu("mnuAbout", [this] { help::FrmAbout(this).exec(); });

  QPushButton& CmdSurvey = corner_->AddButton(
      "CmdSurvey", "&Survey", "Lengths from all readings, and where to stand next.");
  connect(&CmdSurvey, &QPushButton::clicked, this,
          [this] { platform::HandleEvent(desktop_.beeper, [this] { CmdSurvey_Click(); }); });
  BuildSessionsMenu();

  connect(CommandStartStop_, &QPushButton::clicked, this, [this] { CommandStartStop_Click(); });
  connect(CmdChkRx_, &QPushButton::clicked, this, [this] {
    platform::HandleEvent(desktop_.beeper, [this] { live_->Link().CmdChkRx_Click(); });
  });
}

void FrmMain::OnMenu(const char* name, const std::function<void()>& command) {
  OnAction(menu_->Entry(name), command);
}

void FrmMain::OnAction(QAction& action, const std::function<void()>& command) {
  connect(&action, &QAction::triggered, this,
          [this, command] { platform::HandleEvent(desktop_.beeper, command); });
}

void FrmMain::ConnectOptions() {
  for (const OptionEntry& option : OptionEntries()) {
    connect(&menu_->Entry(option.name), &QAction::toggled, this, [this] { ReadCheckMarks(); });
  }
}

void FrmMain::ReadCheckMarks() {
  Options& options = live_->Results().Options();
  options = {};
  options.units.reset();
  const auto entries = OptionEntries();
  // From the last to the first: where several of a group are checked, the first counts.
  for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
    if (menu_->Entry(entry->name).isChecked()) {
      entry->choose(options);
    }
  }
  if (survey_ != nullptr) {
    survey_->OptionsChanged();
  }
  RedrawReview();
}

void FrmMain::ShowOptions(const OptionEntry* chosen) {
  const Options options = live_->Results().Options();
  for (const OptionEntry& entry : OptionEntries()) {
    menu_->Entry(entry.name).setChecked(entry.isChosen(options));
  }
  if (chosen != nullptr && std::string_view(chosen->group) != "mnuDisplayLog") {
    return;
  }
  menu_->Entry("mnuClearLog").setEnabled(options.logShown && !IsReview());
  TextLog_->SetShown(options.logShown);
  if (!options.logShown) {
    TextLog_->Clear();
  }
}

void FrmMain::ShowLinkState() {
  if (IsReview()) {
    return;
  }
  const link::BeltpackLink& link = live_->Link();
  const link::ComPort& port = live_->Port();
  StatusBar1_->SetPanel(StatusPanel::Link, link.StatusText());
  StatusBar1_->SetPanel(StatusPanel::Port, port.PortText());
  StatusBar1_->SetPanel(StatusPanel::Rate, port.RateText());
  menu_->Entry("mnuClearGrid").setEnabled(link.CanClear());
  menu_->Entry("mnuForceSearch").setEnabled(link.CanClear());
  Grid_->SetEmptyText(QString::fromLatin1(live_->IsPolling() ? kWaitingText : kNotPolledText));
  notices_->Update();
}

void FrmMain::ShowCaptureState() {
  const capture::DataCapture& capture = Capture();
  const capture::CaptureState state = capture.State();
  const bool capturing = state != capture::CaptureState::Idle;
  StatusBar1_->SetPanel(StatusPanel::Capture, capture.StatusText());
  menu_->Entry("mnuCaptureDataStart").setVisible(!capturing);
  menu_->Entry("mnuCaptureData").setVisible(capturing);
  if (capturing) {
    menu_->Entry("mnuCaptureData").setEnabled(true);
    menu_->Entry("mnuCapturePause").setEnabled(state == capture::CaptureState::Logging);
    menu_->Entry("mnuCaptureResume").setEnabled(state == capture::CaptureState::Paused);
  }
  notices_->Update();
}

void FrmMain::ShowTotals() {
  const sync::SyncModel& model = live_->Results().Model();
  StatusBar1_->SetPanel(StatusPanel::Reports, "Reports: " + std::to_string(model.ReportCount()));
  StatusBar1_->SetPanel(StatusPanel::Aas, "AAs: " + std::to_string(model.AaCount()));
  sessionsMenu_->SetCanUndoClear(live_->Results().ClearedResults() != nullptr);
  notices_->Update();
}

void FrmMain::BuildGridMenu() {
  Grid_->setContextMenuPolicy(Qt::ActionsContextMenu);
  auto* const exportResults = new QAction(QStringLiteral("&Export Results to CSV..."), Grid_);
  exportResults->setObjectName(QStringLiteral("mnuExportResults"));
  auto* const copy = new QAction(QStringLiteral("&Copy"), Grid_);
  copy->setObjectName(QStringLiteral("mnuCopyGrid"));
  Grid_->addActions({exportResults, copy});
  OnAction(*exportResults, [this] { exportCommand_->ExportResults(); });
  OnAction(*copy, [this] { QApplication::clipboard()->setText(Grid_->CopiedText()); });
}

void FrmMain::ShowPortDialog() {
  link::FrmComSelect dialog(live_->Port(), desktop_.messageBoxes, describePort_, this);
  dialog.SetPortMarks(portMark_);
  dialog.exec();
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
    report::FrmReport dialog(*reportDialog_, desktop_.beeper, this);
    report_ = &dialog;
    dialog.exec();
  }
}

void FrmMain::GenerateReportThen(const std::function<void()>& afterwards) {
  if (report_ == nullptr) {
    mnuGenReport_Click();
    afterwards();
    return;
  }
  // The dialog that is open already is used. Waiting for it here would keep a question of its own
  // from returning.
  connect(report_, &QDialog::finished, this, [this, afterwards] {
    if (!isUnloaded_) {
      afterwards();
    }
  });
  widgets::ShowInFront(*report_);
}

void FrmMain::mnuConvertor_Click() {
  if (convert_ == nullptr) {
    convert_ = new convert::FrmConvert(desktop_.beeper, this);
  }
  convert_->Open();
}

void FrmMain::mnuViewDebugOn_Click() {
  if (debug_ == nullptr) {
    debug_ = new FrmDebug([this] { DebugClosed(); }, this);
  }
  debug_->Open();
  live_->Link().SetDebugView(debug_);
  live_->Display().Choose(OptionEntryNamed("mnuViewDebugOn"));
}

void FrmMain::mnuViewDebugOff_Click() {
  if (debug_ != nullptr && debug_->isVisible()) {
    debug_->close();
  } else {
    DebugClosed();
  }
}

void FrmMain::DebugClosed() {
  live_->Link().SetDebugView(nullptr);
  live_->Display().Choose(OptionEntryNamed("mnuViewDebugOff"));
}

void FrmMain::CmdSurvey_Click() {
  if (survey_ == nullptr) {
    survey_ = new survey::FrmSurvey(live_->Results(), desktop_, this);
  }
  survey_->Open();
}

void FrmMain::CommandStartStop_Click() {
  const QString start = QStringLiteral("Start");
  if (CommandStartStop_->text() == start) {
    RfpsTimer_.SwitchOn();
    CommandStartStop_->setText(QStringLiteral("Stop"));
  } else {
    RfpsTimer_.SwitchOff();
    CommandStartStop_->setText(start);
  }
}

}  // namespace kelvara::app
