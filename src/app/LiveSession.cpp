#include "app/LiveSession.h"

#include "base/Fault.h"
#include "link/LinkTexts.h"

namespace kelvara::app {

LiveSession::LiveSession(const platform::Machine& machine, sync::GridCells& grid,
                         capture::LogBox* logBox, const link::LinkLine& line,
                         platform::SettingsStore& settings)
    : fileSystem_(machine.fileSystem),
      line_(line),
      session_(machine, grid, logBox),
      link_(machine, line, session_.Capture(),
            {.processRfpsReport = [this](std::string_view report) { ProcessRfpsReport(report); },
             .clearSyncResults = [this] { ClearSyncResults(); },
             .updateSyncGrid = [this] { UpdateSyncGrid(); },
             .generateReport =
                 [this](std::function<void()> afterwards) {
                   GenerateReport(std::move(afterwards));
                 }}),
      comPort_(line.MSComm1, line.TimerComPort, settings),
      displaySettings_(settings, session_.Options()) {}

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
  line_.RfpsTimer.SwitchOff();
  line_.TimerComPort.SwitchOff();
  line_.silenceTimer.SwitchOff();
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
  link_.ResultsCleared();
  ResultsChanged();
}

void LiveSession::UpdateSyncGrid() {
  session_.Grid().UpdateSyncGrid();
  ResultsChanged();
}

void LiveSession::ResultsChanged() {
  if (resultsChanged_) {
    resultsChanged_();
  }
}

void LiveSession::GenerateReport(std::function<void()> afterwards) {
  if (reportCommand_) {
    reportCommand_(std::move(afterwards));
  } else {
    afterwards();
  }
}

}  // namespace kelvara::app
