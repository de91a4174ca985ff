#include "app/FrmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFrame>
#include <QKeyEvent>
#include <QPushButton>

#include "app/CellToolTip.h"
#include "base/Fault.h"
#include "help/ProgramTitle.h"
#include "link/FrmComSelect.h"
#include "platform/EventHandler.h"
#include "platform/qt/Text.h"
#include "platform/widgets/Twips.h"
#include "report/TestReport.h"
#include "survey/FrmSurvey.h"
#include "survey/Survey.h"

namespace kelvara::app {

namespace {

// The layout, in twips, of a window of outer width W and height H.
constexpr int kBorderWidth = 120;   // W is the client area's width plus this.
constexpr int kBelowClient = 1080;  // H is the status bar's top plus this.
constexpr int kGridTop = 30;
constexpr int kGridRightOf = 120;
constexpr int kGridBottomWithLog = 2810;
constexpr int kGridBottomWithoutLog = 1110;
constexpr int kLogTop = 2730;
constexpr int kLogHeight = 1650;
constexpr int kLogRightOf = 130;

constexpr int kMeasuredMilliseconds = 3000;

constexpr QSize kStartSize(900, 620);
constexpr QSize kSmallestSize(400, 300);

QTimer& NamedTimer(QObject& window, const char* name) {
  auto* const timer = new QTimer(&window);
  timer->setObjectName(QString::fromLatin1(name));
  return *timer;
}

}  // namespace

FrmMain::FrmMain(const platform::Desktop& desktop, platform::SerialPort& MSComm1,
                 PortDescription describePort)
    : desktop_(desktop),
      MSComm1_(MSComm1),
      describePort_(std::move(describePort)),
      sHelpPath_(help::HelpPath(desktop.programFolder)),
      RfpsTimer_(NamedTimer(*this, "RfpsTimer"), link::kRfpsTimerMilliseconds),
      TimerComPort_(NamedTimer(*this, "TimerComPort"), link::kTimerComPortMilliseconds),
      silenceTimer_(NamedTimer(*this, "SilenceTimer"), link::kSilenceMilliseconds),
      measuredTimer_(NamedTimer(*this, "MeasuredTimer"), kMeasuredMilliseconds),
      reviewTimer_(NamedTimer(*this, "ReviewTimer"), 0) {
  setObjectName(QStringLiteral("FrmMain"));
  setWindowTitle(QString::fromLatin1(help::kProgramTitle));
  BuildControls();
  BuildSession();
  BuildGridMenu();
  ConnectMenus();
  ConnectOptions();
  resize(kStartSize);
  setMinimumSize(kSmallestSize);
}

FrmMain::~FrmMain() { Form_Unload(); }

void FrmMain::BuildControls() {
  menu_ = std::make_unique<MainMenu>(*menuBar());
  corner_ = new MenuCorner(*menuBar());
  StatusBar1_ = new MainStatusBar(this);
  setStatusBar(StatusBar1_);
  BuildClient();
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
  connect(gridModel_, &sync::SyncGridModel::Redrawn, this, [this] { ShowMeasuredCells(); });
  measuredTimer_.SetTick([this] {
    measuredTimer_.SwitchOff();
    Grid_->ShowMeasured({});
  });
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

void FrmMain::BuildSession() {
  live_ = std::make_unique<LiveSession>(desktop_, *gridModel_, TextLog_,
                                        link::LinkLine{.MSComm1 = MSComm1_,
                                                       .RfpsTimer = RfpsTimer_,
                                                       .TimerComPort = TimerComPort_,
                                                       .silenceTimer = silenceTimer_},
                                        desktop_.settings);
  BuildNotices();
  Session& results = live_->Results();
  live_->SetReportCommand(
      [this](const std::function<void()>& afterwards) { GenerateReportThen(afterwards); });
  live_->Link().SetStateChanged([this] { ShowLinkState(); });
  live_->Port().SetStateChanged([this] { ShowLinkState(); });
  live_->Display().SetOptionsChanged([this](const OptionEntry* chosen) { ShowOptions(chosen); });
  results.Capture().SetStateChanged([this] { ShowCaptureState(); });
  results.SetTotalsChanged([this] { ShowTotals(); });
  live_->SetResultsChanged([this] { ShowResultsChange(); });
  menu_->Entry("mnuCaptureData").setEnabled(false);
  ShowCaptureState();
  reportDialog_ =
      std::make_unique<report::ReportDialog>(results.Model(), results.Report(), desktop_);
  captureDialog_ = std::make_unique<capture::CaptureDialog>(results.Capture(), desktop_);
  exportCommand_ = std::make_unique<capture::ExportCommand>(results.Export(), desktop_,
                                                            [this] { UpdateSyncGrid(); });
  helpCommands_ = std::make_unique<help::HelpCommands>(desktop_);
}

void FrmMain::Form_Load() {
  std::int16_t port = 0;
  try {
    port = live_->Port().GetComPort();
    OpenComPort(port);
    StartLink();
  } catch (const std::exception&) {
    platform::HandleEvent(desktop_.beeper, [this, port] { ChoosePortInstead(port); });
  }
}

void FrmMain::ChoosePortInstead(std::int16_t port) {
  desktop_.messageBoxes.Show(link::CouldNotOpenText(port), help::kProgramTitle,
                             platform::MessageIcon::Critical, platform::MessageButtons::OkCancel);
  if (isUnloaded_) {
    return;
  }
  ShowPortDialog();
  if (!isUnloaded_) {
    notices_->NotePortOpened();
    // The message may have opened before the window was active.
    activateWindow();
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
    // The bottom edge is rounded, not the height, so that controls neither overlap nor leave a gap.
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
  reviewTimer_.SwitchOff();
  desktop_.events.End();
  live_->Shutdown();
  ShowJournalFailure();
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
  report::TestReport testReport(live_->Results().Model(), live_->Results().Report(), desktop_);
  return testReport.Run([this] { ClearSyncResults(); });
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
  if (!Grid_->ZoomByKey(*event)) {
    QMainWindow::keyPressEvent(event);
  }
}

bool FrmMain::eventFilter(QObject* watched, QEvent* event) {
  if (watched == client_ && event->type() == QEvent::Resize) {
    Form_Resize();
  }
  return QMainWindow::eventFilter(watched, event);
}

void FrmMain::ShowMeasuredCells() {
  if (auto cells = measuredCells_.Take(live_->Results().Model())) {
    Grid_->ShowMeasured(std::move(*cells));
    measuredTimer_.SwitchOff();
    measuredTimer_.SwitchOn();
  }
}

QString FrmMain::CellToolTip(int row, int column) const {
  // A survey without guidance takes less than a millisecond, so none is kept for the next tool tip.
  const sync::SyncModel& model = live_->Results().Model();
  survey::SurveyOptions options;
  options.guidance = false;
  return qt::ToQString(app::CellToolTip(model, live_->Results().Options(),
                                        survey::MakeSurvey(model, options), row, column));
}

}  // namespace kelvara::app
