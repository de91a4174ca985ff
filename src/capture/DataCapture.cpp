#include "capture/DataCapture.h"

#include "base/Fault.h"

namespace kelvara::capture {

namespace {

constexpr std::string_view kLoggingText = "Logging...";
constexpr std::string_view kPausedText = "Logging Paused...";

}  // namespace

void DataCapture::PrintLogEntry(std::string_view strLog) {
  if (strLog.empty() || !IsListening()) {
    return;
  }
  std::string entry = machine_.dateFormat.General(machine_.clock.WallTime());
  entry += ", ";
  entry += strLog;
  entry += "\r\n";
  if (loggingActive_) {
    if (!file_) {
      throw base::Fault(base::FaultKind::File, "No log file is open");
    }
    file_->Write(entry);
  }
  if (logBox_ != nullptr) {
    logBox_->Append(entry);
  }
}

bool DataCapture::StartLoggingToFile(const std::string& strFilename) {
  loggingActive_ = true;
  try {
    if (file_) {
      throw base::Fault(base::FaultKind::File, "A log file is open already");
    }
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
  } catch (const base::Fault&) {
    machine_.messageBoxes.Show("Could not start Logging to specified file.", "File Error",
                               platform::MessageIcon::Critical, platform::MessageButtons::Ok);
    return false;
  }
}

void DataCapture::StopLoggingToFile() {
  // Set, so that the stop entry reaches the file even after a pause.
  loggingActive_ = true;
  PrintLogEntry("Log To File Stopped");
  loggingActive_ = false;
  file_.reset();
  ShowStatus("");
  Enter(CaptureState::Idle);
}

void DataCapture::PauseLoggingToFile() {
  ShowStatus(kPausedText);
  PrintLogEntry("Log To File Stopped Paused");
  loggingActive_ = false;
  Enter(CaptureState::Paused);
}

void DataCapture::ResumeLoggingToFile() {
  loggingActive_ = true;
  ShowStatus(kLoggingText);
  PrintLogEntry("Log To File Resumed");
  Enter(CaptureState::Logging);
}

void DataCapture::ShowStatus(std::string_view text) {
  statusText_ = text;
  if (stateChanged_) {
    stateChanged_();
  }
}

void DataCapture::Enter(CaptureState state) {
  state_ = state;
  if (stateChanged_) {
    stateChanged_();
  }
}

}  // namespace kelvara::capture
