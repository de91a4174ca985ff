#include "app/LiveSession.h"

#include "base/Fault.h"
#include "link/LinkTexts.h"

namespace kelvara::app {

LiveSession::LiveSession(const platform::Machine& machine, sync::GridCells& grid,
                         capture::LogBox* logBox, const link::LinkLine& line,
                         platform::SettingsStore& settings)
    : fileSystem_(machine.fileSystem),
      clock_(machine.clock),
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
      displaySettings_(settings, session_.Options()) {
  link_.SetLineListener(this);
}

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
  for (sessions::SessionListener* const listener : listeners_) {
    listener->Ended();
  }
  listeners_.clear();
}

void LiveSession::StartTrace(const std::string& path, bool append) {
  trace_ = std::make_unique<sessions::LineTrace>(
      append ? fileSystem_.OpenForAppend(path) : fileSystem_.OpenForOutput(path), clock_);
  listeners_.push_back(trace_.get());
}

void LiveSession::StartJournal(platform::SessionFolder& folder) {
  sessions::RemoveOldJournals(folder);
  journal_ = std::make_unique<sessions::Journal>(folder, clock_);
  listeners_.push_back(journal_.get());
}

std::string LiveSession::Continue(sessions::UnfinishedSession& session) {
  std::string reason = session_.AddOlderResults(session.results);
  if (reason.empty()) {
    if (journal_) {
      journal_->Continue(std::move(session));
    }
    UpdateSyncGrid();
  }
  return reason;
}

std::string LiveSession::TraceFailure() const { return trace_ ? trace_->Failure() : ""; }

void LiveSession::ProcessRfpsReport(std::string_view report) {
  session_.Parser().ProcessRfpsReport(report);
  if (reportTaken_) {
    reportTaken_();
  }
}

void LiveSession::ClearSyncResults() {
  const bool keeps = session_.Model().ReportCount() > 0;
  session_.ClearSyncResults();
  link_.ResultsCleared();
  for (sessions::SessionListener* const listener : listeners_) {
    listener->Cleared(keeps);
  }
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

std::string LiveSession::RestoreClearedResults() {
  std::string reason = session_.RestoreClearedResults();
  if (reason.empty()) {
    for (sessions::SessionListener* const listener : listeners_) {
      listener->Restored();
    }
    UpdateSyncGrid();
  }
  return reason;
}

void LiveSession::Sent(std::string_view command) {
  for (sessions::SessionListener* const listener : listeners_) {
    listener->Sent(command);
  }
}

void LiveSession::Received(std::string_view text) {
  for (sessions::SessionListener* const listener : listeners_) {
    listener->Received(text);
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
