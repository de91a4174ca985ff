#include "capture/DataCapture.h"

#include "base/Fault.h"

namespace kelvara::capture {

using platform::MenuEntry;
using platform::StatusPanel;

void DataCapture::PrintLogEntry(std::string_view strLog) {
  if (strLog.empty() || !IsListening()) {
    return;
  }
  std::string entry = dateFormat_.General(clock_.WallTime());
  entry += ", ";
  entry += strLog;
  entry += "\r\n";
  if (loggingActive_) {
    if (!file_) {
      throw base::Fault(base::FaultKind::File, "No log file is open");
    }
    file_->Write(entry);
  }
  logBox_.Append(entry);
}

bool DataCapture::StartLoggingToFile(const std::string& strFilename) {
  loggingActive_ = true;
  try {
    if (file_) {
      throw base::Fault(base::FaultKind::File, "A log file is open already");
    }
    file_ = fileSystem_.OpenForAppend(strFilename);
    try {
      PrintLogEntry("Log To File Started");
    } catch (const base::Fault&) {
      file_.reset();
      throw;
    }
    statusBar_.SetPanel(StatusPanel::Capture, "Logging...");
    menuBar_.SetVisible(MenuEntry::mnuCaptureData, true);
    menuBar_.SetEnabled(MenuEntry::mnuCaptureData, true);
    menuBar_.SetVisible(MenuEntry::mnuCaptureDataStart, false);
    ShowLogging();
    return true;
  } catch (const base::Fault&) {
    messageBoxes_.Show("Could not start Logging to specified file.", "File Error",
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
  statusBar_.SetPanel(StatusPanel::Capture, "");
  menuBar_.SetVisible(MenuEntry::mnuCaptureDataStart, true);
  menuBar_.SetVisible(MenuEntry::mnuCaptureData, false);
}

void DataCapture::PauseLoggingToFile() {
  statusBar_.SetPanel(StatusPanel::Capture, "Logging Paused...");
  PrintLogEntry("Log To File Stopped Paused");
  loggingActive_ = false;
  menuBar_.SetEnabled(MenuEntry::mnuCaptureStop, true);
  menuBar_.SetEnabled(MenuEntry::mnuCapturePause, false);
  menuBar_.SetEnabled(MenuEntry::mnuCaptureResume, true);
}

void DataCapture::ResumeLoggingToFile() {
  loggingActive_ = true;
  statusBar_.SetPanel(StatusPanel::Capture, "Logging...");
  PrintLogEntry("Log To File Resumed");
  ShowLogging();
}

void DataCapture::ShowLogging() {
  menuBar_.SetEnabled(MenuEntry::mnuCaptureStop, true);
  menuBar_.SetEnabled(MenuEntry::mnuCapturePause, true);
  menuBar_.SetEnabled(MenuEntry::mnuCaptureResume, false);
}

}  // namespace kelvara::capture
