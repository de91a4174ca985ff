#pragma once

#include <QMainWindow>
#include <QPointer>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "app/FrmDebug.h"
#include "app/LiveSession.h"
#include "app/LogTextBox.h"
#include "app/MainMenu.h"
#include "app/MainStatusBar.h"
#include "app/MenuCorner.h"
#include "app/Notices.h"
#include "app/Review.h"
#include "app/ReviewBar.h"
#include "app/SessionOpener.h"
#include "app/SessionsMenu.h"
#include "capture/CaptureDialog.h"
#include "capture/ExportCommand.h"
#include "help/HelpCommands.h"
#include "platform/Desktop.h"
#include "platform/SessionFolder.h"
#include "platform/qt/QtTimer.h"
#include "report/ReportDialog.h"
#include "sessions/ReviewedSession.h"
#include "sync/SyncGridModel.h"
#include "sync/SyncGridView.h"

class QFrame;
class QPushButton;

namespace kelvara::convert {
class FrmConvert;
}

namespace kelvara::report {
class FrmReport;
}

namespace kelvara::survey {
class FrmSurvey;
}

namespace kelvara::app {

class NoticeBar;

/// The main window: the menus from which every function is reached, the sync grid, the log box, the
/// status bar, the serial port and the link's timers. It computes nothing: each operation calls the
/// engine class that does the work.
class FrmMain : public QMainWindow {
  Q_OBJECT

 public:
  /// Describes the device behind a port number to the user.
  using PortDescription = std::function<std::string(int port)>;

  /// The desktop and the port must outlive the window.
  FrmMain(const platform::Desktop& desktop, platform::SerialPort& MSComm1,
          PortDescription describePort);
  ~FrmMain() override;

  /// Start-up: opens the stored port and starts the link; when that fails, shows a message and the
  /// port dialog.
  void Form_Load();

  /// Opens a recorded session for review instead of starting up. What belongs to a live session is
  /// disabled. The session is read while the window is used; if that fails, a message box says so,
  /// and `failed` is called.
  void OpenReview(std::unique_ptr<sessions::ReviewedSession> recorded, const std::string& path,
                  std::function<void()> failed);

  /// Lets the user open recorded sessions: from a chooser, from the recent ones in the folder,
  /// which must outlive the window, and by dropping files on the window.
  void SetSessionOpening(SessionOpener::StartReview startReview, platform::SessionFolder& folder);

  /// Sets how the port dialog marks the ports whose devices are present.
  void SetPortMarks(PortDescription portMark) { portMark_ = std::move(portMark); }

  /// The readings come from the built-in beltpack, which a notice and the report's notes say.
  void SetDemo();

  /// Sets what is told once if the journal cannot be written; the window says so too.
  void SetJournalFailed(std::function<void(const std::string& reason)> failed) {
    journalFailed_ = std::move(failed);
  }

  /// Lays the controls out for the window's size. A size too small for a control ends the layout
  /// silently.
  void Form_Resize();

  /// Shutdown: closes the port and the log file and every other window.
  void Form_Unload();

  /// Sets what is called once the window has been unloaded.
  void SetUnloaded(std::function<void()> unloaded) { unloaded_ = std::move(unloaded); }

  /// Opens the port at start-up; a fault when it cannot be.
  void OpenComPort(std::int16_t port) { live_->Port().OpenComPort(port); }
  /// Starts the link on the open port from the beginning.
  void StartLink();
  void SetStatusText(std::string_view text) { live_->Link().SetStatusText(text); }
  void SerialSendString(std::string_view ComStr, bool dDisplayStatus) {
    live_->Link().SerialSendString(ComStr, dDisplayStatus);
  }
  void SendRfpsCommand() { live_->Link().SendRfpsCommand(); }
  void SendChoCommand() { live_->Link().SendChoCommand(); }
  void SendBhoCommand() { live_->Link().SendBhoCommand(); }
  bool SerialGetResponseBytes(std::int32_t timeoutMs, std::int32_t count,
                              std::span<std::uint8_t> buffer) {
    return live_->Link().SerialGetResponseBytes(timeoutMs, count, buffer);
  }

  void ProcessRfpsReport(std::string_view report) { live_->ProcessRfpsReport(report); }
  /// Does nothing; kept for its callers.
  void debugProcessRfps() {}
  void ClearSyncResults() { live_->ClearSyncResults(); }
  void UpdateSyncGrid() { live_->UpdateSyncGrid(); }
  sync::Colour GetRpsColour(std::int16_t iRps) {
    return live_->Results().Grid().GetRpsColour(iRps);
  }

  /// Writes the report; a fault when there are more antennas than it can list.
  bool GenerateReport(const std::string& fileName, const std::string& site,
                      const std::string& tester, const std::string& notes) {
    return live_->Results().Report().GenerateReport(fileName, site, tester, notes);
  }

  /// Clears the results, fills in fixed test data, writes a report of it beside the program and
  /// opens it. True when the whole report was written.
  bool TestReport();

  void logBox(std::string_view dispMsg) { TextLog_->Append(dispMsg); }
  /// Logs one entry; a write to the log file that fails is a fault.
  void PrintLogEntry(std::string_view strLog) { Capture().PrintLogEntry(strLog); }
  bool StartLoggingToFile(const std::string& strFilename) {
    return Capture().StartLoggingToFile(strFilename);
  }
  void StopLoggingToFile() { Capture().StopLoggingToFile(); }
  void PauseLoggingToFile() { Capture().PauseLoggingToFile(); }
  void ResumeLoggingToFile() { Capture().ResumeLoggingToFile(); }

  void GetDisplaySettings() { live_->Display().GetDisplaySettings(); }

  LiveSession& Live() { return *live_; }
  SessionsMenu& Sessions() { return *sessionsMenu_; }
  app::Notices& Notices() { return *notices_; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  capture::DataCapture& Capture() { return live_->Results().Capture(); }
  void BuildControls();
  void BuildClient();
  void BuildSession();
  void BuildNotices();
  void BuildGridMenu();
  void BuildSessionsMenu();
  void ConnectMenus();
  void ConnectOptions();
  /// Runs a command when the user chooses an entry; a fault that it does not catch is a beep.
  void OnMenu(const char* name, const std::function<void()>& command);
  void OnAction(QAction& action, const std::function<void()>& command);

  /// Update the status bar, the menus and the log box from the session.
  void ShowLinkState();
  void ShowCaptureState();
  void ShowTotals();
  /// Called after each redraw of the grid and each clear of the results.
  void ShowResultsChange();
  void ShowJournalFailure();
  /// `chosen`: the entry that the user chose, or null when all options were set.
  void ShowOptions(const OptionEntry* chosen);
  /// Sets the options from the check marks, whatever changed them.
  void ReadCheckMarks();

  void ShowPortDialog();
  /// Shows the message and the port dialog when the port cannot be opened at start-up.
  void ChoosePortInstead(std::int16_t port);
  /// Marks for a moment the cells that the last report has measured.
  void ShowMeasuredCells();
  QString CellToolTip(int row, int column) const;

  bool IsReview() const { return review_ != nullptr; }
  void BuildReviewBar();
  /// Reads the next part of the session that is being opened.
  void ReadReview();
  void MoveReviewTo(int report);
  void ShowReviewFault(const std::string& text);
  /// Shows a fault once the event that led to it has been handled.
  void ShowReviewFaultLater(const std::string& text);
  /// Redraws the review after all options of one change have been set.
  void RedrawReview();
  void ShowReview();
  void DisableForReview();

  void mnuComPort_Click();
  void mnuGenReport_Click();
  /// Calls `afterwards` when the report dialog, opened now or before, has closed.
  void GenerateReportThen(const std::function<void()>& afterwards);
  void mnuConvertor_Click();
  void mnuViewDebugOn_Click();
  void mnuViewDebugOff_Click();
  void DebugClosed();
  void CmdSurvey_Click();
  void CommandStartStop_Click();

  const platform::Desktop& desktop_;
  platform::SerialPort& MSComm1_;
  PortDescription describePort_;
  PortDescription portMark_;
  std::string sHelpPath_;

  std::unique_ptr<MainMenu> menu_;
  MenuCorner* corner_ = nullptr;
  SessionsMenu* sessionsMenu_ = nullptr;
  MainStatusBar* StatusBar1_ = nullptr;
  NoticeBar* noticeBar_ = nullptr;
  QWidget* client_ = nullptr;
  sync::SyncGridModel* gridModel_ = nullptr;
  sync::SyncGridView* Grid_ = nullptr;
  LogTextBox* TextLog_ = nullptr;
  QFrame* Line1_ = nullptr;
  QFrame* Line2_ = nullptr;
  QPushButton* CommandStartStop_ = nullptr;
  QPushButton* CmdChkRx_ = nullptr;
  // Made when first opened, so that start-up does not wait for them.
  FrmDebug* debug_ = nullptr;
  convert::FrmConvert* convert_ = nullptr;
  survey::FrmSurvey* survey_ = nullptr;
  // The report dialog while it is open.
  QPointer<report::FrmReport> report_;

  qt::QtTimer RfpsTimer_;
  qt::QtTimer TimerComPort_;
  qt::QtTimer silenceTimer_;
  qt::QtTimer measuredTimer_;
  sync::MeasuredCells measuredCells_;
  std::unique_ptr<LiveSession> live_;
  std::unique_ptr<app::Notices> notices_;
  std::unique_ptr<report::ReportDialog> reportDialog_;
  std::unique_ptr<capture::CaptureDialog> captureDialog_;
  std::unique_ptr<capture::ExportCommand> exportCommand_;
  std::unique_ptr<help::HelpCommands> helpCommands_;
  std::unique_ptr<SessionOpener> sessionOpener_;
  // Null in a live session.
  std::unique_ptr<sessions::ReviewedSession> recorded_;
  std::unique_ptr<Review> review_;
  ReviewBar* reviewBar_ = nullptr;
  bool showsReviewFault_ = false;
  qt::QtTimer reviewTimer_;
  std::string reviewName_;
  std::function<void()> reviewFailed_;
  std::function<void()> unloaded_;
  std::function<void(const std::string&)> journalFailed_;
  bool isJournalFailureShown_ = false;
  bool isUnloaded_ = false;
};

}  // namespace kelvara::app
