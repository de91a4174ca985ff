#include "app/LiveSession.h"

#include "base/Fault.h"
#include "link/LinkTexts.h"
#include "platform/ProgramSettings.h"

namespace kelvara::app {

LiveSession::LiveSession(const Machine& machine, const Controls& controls,
                         const LiveMachine& liveMachine)
    : fileSystem_(machine.fileSystem),
      machine_(liveMachine),
      session_(machine, controls),
      link_({liveMachine.MSComm1, liveMachine.RfpsTimer, liveMachine.TimerComPort,
             liveMachine.silenceTimer, machine.clock, machine.dateFormat, machine.beeper,
             machine.messageBoxes, machine.events, controls.statusBar, controls.menuBar,
             liveMachine.debugView, session_.Capture()},
            *this),
      comPort_(liveMachine.MSComm1, liveMachine.TimerComPort,
               platform::ProgramSettings(liveMachine.settingsStore), controls.statusBar),
      displaySettings_(platform::ProgramSettings(liveMachine.settingsStore), controls.menuBar,
                       controls.logBox) {}

void LiveSession::StartLink() {
  link_.BeginSearch();
  ClearSyncResults();
  link_.SetStatusText(link::kAttemptingText);
  session_.Capture().ClearLoggingActive();
  link_.ResetPollStep();
  displaySettings_.GetDisplaySettings();
}

void LiveSession::mnuClearGrid_Click() {
  ClearSyncResults();
  UpdateSyncGrid();
}

void LiveSession::StopPolling() {
  machine_.RfpsTimer.SwitchOff();
  machine_.TimerComPort.SwitchOff();
  machine_.silenceTimer.SwitchOff();
  try {
    comPort_.Close();
  } catch (const base::Fault&) {
    // The port is as closed as it gets.
  }
}

void LiveSession::Shutdown() {
  StopPolling();
  session_.Capture().CloseFile();
  if (trace_) {
    trace_->Close();
  }
}

void LiveSession::StartTrace(const std::string& path, bool append) {
  trace_ = std::make_unique<sessions::LineTrace>(append ? fileSystem_.OpenForAppend(path)
                                                        : fileSystem_.OpenForOutput(path));
  link_.SetLineListener(trace_.get());
}

std::string LiveSession::TraceFailure() const { return trace_ ? trace_->Failure() : ""; }

void LiveSession::ProcessRfpsReport(std::string_view report) {
  session_.Parser().ProcessRfpsReport(report);
  if (reportTaken_) {
    reportTaken_();
  }
}

void LiveSession::ClearSyncResults() {
  session_.ClearSyncResults();
  link_.ForgetLoss();
}

void LiveSession::UpdateSyncGrid() { session_.Grid().UpdateSyncGrid(); }

void LiveSession::mnuGenReport_Click() {
  if (reportCommand_) {
    reportCommand_();
  }
}

}  // namespace kelvara::app
