#include "app/FrmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFrame>
#include <QKeyEvent>
#include <QPushButton>

#include "app/CellToolTip.h"
#include "base/Fault.h"
#include "link/FrmComSelect.h"
#include "platform/EventHandler.h"
#include "platform/ProgramTitle.h"
#include "platform/qt/Text.h"
#include "platform/widgets/Twips.h"
#include "report/TestReport.h"

namespace kelvara::app {

namespace {

// The layout, in twips, of a window of outer width W and height H.
constexpr int kBorderWidth = 120;   // W is the client area's width and this.
constexpr int kBelowClient = 1080;  // H is the status bar's top and this.
constexpr int kGridTop = 30;
constexpr int kGridRightOf = 120;
constexpr int kGridBottomWithLog = 2810;
constexpr int kGridBottomWithoutLog = 1110;
constexpr int kLogTop = 2730;
constexpr int kLogHeight = 1650;
constexpr int kLogRightOf = 130;

constexpr QSize kStartSize(900, 620);
constexpr QSize kSmallestSize(400, 300);

}  // namespace

FrmMain::FrmMain(const DesktopMachine& machine)
    : machine_(machine),
      sHelpPath_(help::HelpPath(machine.programFolder)),
      lastFilenames_(platform::ProgramSettings(machine.settingsStore), machine.beeper) {
  setObjectName(QStringLiteral("FrmMain"));
  setWindowTitle(QString::fromLatin1(platform::kProgramTitle));
  BuildControls();
  BuildRooms();
  BuildGridMenu();
  ConnectMenus();
  resize(kStartSize);
  setMinimumSize(kSmallestSize);
}

FrmMain::~FrmMain() { Form_Unload(); }

void FrmMain::BuildControls() {
  menu_ = std::make_unique<MainMenu>(*menuBar());
  StatusBar1_ = new MainStatusBar(this);
  setStatusBar(StatusBar1_);
  client_ = new QWidget(this);
  setCentralWidget(client_);
  client_->installEventFilter(this);
  for (QFrame** line : {&Line1_, &Line2_}) {
    *line = new QFrame(client_);
    (*line)->setFrameShape(QFrame::HLine);
  }
  Line1_->setObjectName(QStringLiteral("Line1"));
  Line1_->setFrameShadow(QFrame::Plain);
  Line1_->setForegroundRole(QPalette::Mid);
  Line2_->setObjectName(QStringLiteral("Line2"));
  Line2_->setFrameShadow(QFrame::Plain);
  Line2_->setForegroundRole(QPalette::Light);
  gridModel_ = new sync::SyncGridModel(this);
  Grid_ = new sync::SyncGridView(client_);
  Grid_->setObjectName(QStringLiteral("Grid"));
  Grid_->setAccessibleName(QStringLiteral("Sync grid"));
  Grid_->SetGridModel(gridModel_);
  Grid_->SetToolTips([this](int row, int column) { return CellToolTip(row, column); });
  TextLog_ = new LogTextBox(client_);
  TextLog_->SetShown(false);
  TextLog_->SetShownChanged([this] { Form_Resize(); });
  CommandStartStop_ = new QPushButton(QStringLiteral("Start"), client_);
  CommandStartStop_->setObjectName(QStringLiteral("CommandStartStop"));
  CmdChkRx_ = new QPushButton(QStringLiteral("Rx?"), client_);
  CmdChkRx_->setObjectName(QStringLiteral("CmdChkRx"));
  for (QPushButton* const button : {CommandStartStop_, CmdChkRx_}) {
    button->hide();
  }
}

void FrmMain::BuildRooms() {
  timers_ = std::make_unique<LinkTimers>(*this);
  live_ = std::make_unique<LiveSession>(
      Machine{machine_.clock, machine_.dateFormat, machine_.fileSystem, machine_.beeper,
              machine_.messageBoxes, machine_.events},
      Controls{*gridModel_, *StatusBar1_, *TextLog_, *menu_},
      LiveMachine{machine_.MSComm1, timers_->RfpsTimer, timers_->TimerComPort,
                  timers_->silenceTimer, machine_.settingsStore, debugView_});
  live_->SetReportCommand([this] { mnuGenReport_Click(); });
  Session& results = live_->Results();
  reportDialog_ = std::make_unique<report::ReportDialog>(
      results.Model(), results.Report(),
      report::ReportDesktop{machine_.fileSystem, machine_.fileChooser, machine_.messageBoxes,
                            machine_.documentOpener},
      lastFilenames_, report::RememberedFields(machine_.fileSystem, machine_.programFolder));
  captureDialog_ = std::make_unique<capture::CaptureDialog>(results.Capture(), machine_.fileChooser,
                                                            machine_.messageBoxes, lastFilenames_);
  exportCommand_ = std::make_unique<capture::ExportCommand>(
      results.Export(), machine_.fileChooser, lastFilenames_, [this] { UpdateSyncGrid(); });
  helpCommands_ = std::make_unique<help::HelpCommands>(machine_.documentOpener, machine_.fileSystem,
                                                       machine_.messageBoxes);
}

void FrmMain::Form_Load() {
  std::int16_t port = 0;
  try {
    port = live_->Port().GetComPort();
    OpenComPort(port);
    StartLink();
  } catch (const std::exception&) {
    platform::HandleEvent(machine_.beeper, [this, port] { ChoosePortInstead(port); });
  }
}

void FrmMain::ChoosePortInstead(std::int16_t port) {
  machine_.messageBoxes.Show(link::CouldNotOpenText(port), platform::kProgramTitle,
                             platform::MessageIcon::Critical, platform::MessageButtons::OkCancel);
  if (isUnloaded_) {
    return;
  }
  ShowPortDialog();
  if (!isUnloaded_) {
    live_->Port().ShowPort();
  }
}

void FrmMain::StartLink() {
  live_->StartLink();
  Form_Resize();
}

void FrmMain::Form_Resize() {
  const int W = widgets::PixelsToTwips(*this, client_->width()) + kBorderWidth;
  const int H = widgets::PixelsToTwips(*this, client_->height()) + kBelowClient;
  const auto place = [this](QWidget& control, int top, int width, int height) {
    if (width < 0 || height < 0) {
      return false;
    }
    const int topPixels = widgets::TwipsToPixels(*this, top);
    // The bottom is rounded as a place of its own, so that neighbours neither overlap nor part.
    control.setGeometry(0, topPixels, widgets::TwipsToPixels(*this, width),
                        widgets::TwipsToPixels(*this, top + height) - topPixels);
    return true;
  };
  const bool withLog = TextLog_->IsShown();
  if (!place(*Grid_, kGridTop, W - kGridRightOf,
             H - (withLog ? kGridBottomWithLog : kGridBottomWithoutLog))) {
    return;
  }
  if (withLog && !place(*TextLog_, H - kLogTop, W - kLogRightOf, kLogHeight)) {
    return;
  }
  const int lineEnd = widgets::TwipsToPixels(*this, W);
  Line1_->setGeometry(0, 0, lineEnd, 1);
  Line2_->setGeometry(0, 1, lineEnd, 1);
}

void FrmMain::Form_Unload() {
  if (isUnloaded_) {
    return;
  }
  isUnloaded_ = true;
  machine_.events.End();
  live_->Shutdown();
  const QWidgetList windows = QApplication::topLevelWidgets();
  for (QWidget* const window : windows) {
    if (window != this && window->isVisible()) {
      window->close();
    }
  }
  if (unloaded_) {
    unloaded_();
  }
}

bool FrmMain::TestReport() {
  report::TestReport testReport(live_->Results().Model(), live_->Results().Report(),
                                machine_.documentOpener, machine_.messageBoxes);
  return testReport.Run([this] { ClearSyncResults(); }, machine_.programFolder);
}

void FrmMain::closeEvent(QCloseEvent* event) {
  Form_Unload();
  event->accept();
}

void FrmMain::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1) {
    helpCommands_->mnuContents_Click(sHelpPath_);
    return;
  }
  QMainWindow::keyPressEvent(event);
}

bool FrmMain::eventFilter(QObject* watched, QEvent* event) {
  if (watched == client_ && event->type() == QEvent::Resize) {
    Form_Resize();
  }
  return QMainWindow::eventFilter(watched, event);
}

QString FrmMain::CellToolTip(int row, int column) const {
  return qt::ToQString(
      app::CellToolTip(live_->Results().Model(), sync::DisplayOptions(*menu_), row, column));
}

}  // namespace kelvara::app
