#include "capture/DataCapture.h"

#include <utility>

#include "base/Fault.h"

namespace kelvara::capture {

namespace {

constexpr std::string_view kLoggingText = "Logging...";
constexpr std::string_view kPausedText = "Logging Paused...";

/// What a fault says about a file, without the file's name.
std::string ReasonOf(const base::Fault& fault, const std::string& fileName) {
  const std::string text = fault.what();
  const std::string named = "\"" + fileName + "\": ";
  const std::size_t at = text.find(named);
  return at == std::string::npos ? text : text.substr(at + named.size());
}

}  // namespace

std::string LogEntryText(const platform::DateFormat& dateFormat, platform::DateTime localTime,
                         std::string_view strLog) {
  std::string entry = dateFormat.General(localTime);
  entry += ", ";
  entry += strLog;
  entry += "\r\n";
  return entry;
}

void DataCapture::PrintLogEntry(std::string_view strLog) {
  if (strLog.empty() || !IsListening()) {
    return;
  }
  const std::string entry = LogEntryText(machine_.dateFormat, machine_.clock.WallTime(), strLog);
  if (loggingActive_) {
    WriteEntry(entry);
  }
  if (logBox_ != nullptr) {
    logBox_->Append(entry);
  }
}

void DataCapture::WriteEntry(std::string_view entry) {
  if (!file_) {
    SetFailure(LogFailure{fileName_, openFailure_});
    throw base::Fault(base::FaultKind::File, "No log file is open");
  }
  try {
    file_->Write(entry);
  } catch (const base::Fault& fault) {
    SetFailure(LogFailure{fileName_, ReasonOf(fault, fileName_)});
    throw;
  }
  SetFailure(std::nullopt);
}

bool DataCapture::StartLoggingToFile(const std::string& strFilename) {
  SetLoggingActive(true);
  try {
    if (file_) {
      throw base::Fault(base::FaultKind::File, "A log file is open already");
    }
    SetFailure(std::nullopt);
    fileName_ = strFilename;
    file_ = machine_.fileSystem.OpenForAppend(strFilename);
    try {
      PrintLogEntry("Log To File Started");
    } catch (const base::Fault&) {
      file_.reset();
      throw;
    }
    ShowStatus(kLoggingText);
    Enter(CaptureState::Logging);
    return true;
  } catch (const base::Fault& fault) {
    openFailure_ = ReasonOf(fault, fileName_);
    machine_.messageBoxes.Show("Could not start Logging to specified file.", "File Error",
                               platform::MessageIcon::Critical, platform::MessageButtons::Ok);
    return false;
  }
}

void DataCapture::StopLoggingToFile() {
  // Set, so that the stop entry reaches the file even after a pause.
  SetLoggingActive(true);
  PrintLogEntry("Log To File Stopped");
  SetLoggingActive(false);
  file_.reset();
  ShowStatus("");
  Enter(CaptureState::Idle);
}

void DataCapture::PauseLoggingToFile() {
  ShowStatus(kPausedText);
  PrintLogEntry("Log To File Stopped Paused");
  SetLoggingActive(false);
  Enter(CaptureState::Paused);
}

void DataCapture::ResumeLoggingToFile() {
  SetLoggingActive(true);
  ShowStatus(kLoggingText);
  PrintLogEntry("Log To File Resumed");
  Enter(CaptureState::Logging);
}

void DataCapture::AbandonLogging() {
  SetLoggingActive(false);
  SetFailure(std::nullopt);
  file_.reset();
  ShowStatus("");
  Enter(CaptureState::Idle);
}

void DataCapture::ClearLoggingActive() {
  const bool isStopped = stoppedByLink_ || (loggingActive_ && file_ != nullptr);
  SetLoggingActive(false);
  stoppedByLink_ = isStopped;
  StateChanged();
}

void DataCapture::SetFailure(std::optional<LogFailure> failure) {
  const bool changes = failure.has_value() || failure_.has_value();
  failure_ = std::move(failure);
  if (changes) {
    StateChanged();
  }
}

void DataCapture::SetLoggingActive(bool active) {
  loggingActive_ = active;
  stoppedByLink_ = false;
}

void DataCapture::ShowStatus(std::string_view text) {
  statusText_ = text;
  StateChanged();
}

void DataCapture::Enter(CaptureState state) {
  state_ = state;
  StateChanged();
}

void DataCapture::StateChanged() {
  if (stateChanged_) {
    stateChanged_();
  }
}

}  // namespace kelvara::capture
