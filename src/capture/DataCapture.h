#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/Clock.h"
#include "platform/DateFormat.h"
#include "platform/FileSystem.h"
#include "platform/LogBox.h"
#include "platform/MenuBar.h"
#include "platform/MessageBoxes.h"
#include "platform/StatusBar.h"
#include "sync/LogFunnel.h"

namespace kelvara::capture {

/// The log funnel, and the capture of its entries to a file: started, paused, resumed, stopped.
class DataCapture : public sync::LogFunnel {
 public:
  DataCapture(const platform::Clock& clock, const platform::DateFormat& dateFormat,
              platform::FileSystem& fileSystem, platform::LogBox& logBox,
              platform::StatusBar& statusBar, platform::MenuBar& menuBar,
              platform::MessageBoxes& messageBoxes)
      : clock_(clock),
        dateFormat_(dateFormat),
        fileSystem_(fileSystem),
        logBox_(logBox),
        statusBar_(statusBar),
        menuBar_(menuBar),
        messageBoxes_(messageBoxes) {}

  /// Writes one entry: date and time, ", ", the text; to the file while logging is active, then to
  /// the log box. An empty text writes nothing. A file write that fails (as every write does while
  /// logging is active with no file open) is a file fault, and the entry does not reach the log
  /// box.
  void PrintLogEntry(std::string_view strLog) override;

  bool IsListening() const override { return loggingActive_ || logBox_.IsShown(); }

  /// Opens the file for appending and starts to log. On failure one message box, and false; logging
  /// then counts as active although no file is open, so later entries fault.
  bool StartLoggingToFile(const std::string& strFilename);

  /// Writes the stop entry, also when paused, and closes the file. A write that fails is a fault.
  void StopLoggingToFile();

  /// Writes the pause entry and keeps the file open. A write that fails is a fault.
  void PauseLoggingToFile();

  /// Goes on writing to the open file. A write that fails is a fault.
  void ResumeLoggingToFile();

  /// Clears the logging-active flag, as the link does when it starts; an open file stays open.
  void ClearLoggingActive() { loggingActive_ = false; }

  bool IsLoggingActive() const { return loggingActive_; }

  /// Closes the file without an entry, as the program does when it ends.
  void CloseFile() { file_.reset(); }

 private:
  void ShowLogging();

  const platform::Clock& clock_;
  const platform::DateFormat& dateFormat_;
  platform::FileSystem& fileSystem_;
  platform::LogBox& logBox_;
  platform::StatusBar& statusBar_;
  platform::MenuBar& menuBar_;
  platform::MessageBoxes& messageBoxes_;
  bool loggingActive_ = false;
  std::unique_ptr<platform::OutputFile> file_;
};

}  // namespace kelvara::capture
