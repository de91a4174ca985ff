#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "capture/LogBox.h"
#include "platform/Machine.h"
#include "sync/LogFunnel.h"

namespace kelvara::capture {

/// What the user can do with the capture: start it, or stop and pause it, or stop and resume it.
enum class CaptureState { Idle, Logging, Paused };

/// Why entries cannot be written.
struct LogFailure {
  std::string fileName;
  std::string reason;
};

/// A log entry as it is written: date and time, ", ", the text, and a line end.
std::string LogEntryText(const platform::DateFormat& dateFormat, platform::DateTime localTime,
                         std::string_view strLog);

/// The log funnel, and the capture of its entries to a file: started, paused, resumed, stopped.
class DataCapture : public sync::LogFunnel {
 public:
  /// `logBox` is null if there is none.
  DataCapture(const platform::Machine& machine, LogBox* logBox)
      : machine_(machine), logBox_(logBox) {}

  /// Sets what is called each time the state or its text may have changed.
  void SetStateChanged(std::function<void()> stateChanged) {
    stateChanged_ = std::move(stateChanged);
  }

  /// Writes one entry: date and time, ", ", the text; to the file while logging is active, then to
  /// the log box. An empty text writes nothing. A file write that fails (as every write does while
  /// logging is active with no file open) is a file fault, and the entry does not reach the log
  /// box.
  void PrintLogEntry(std::string_view strLog) override;

  bool IsListening() const override {
    return loggingActive_ || (logBox_ != nullptr && logBox_->IsShown());
  }

  /// Opens the file for appending and starts to log. A failure shows one message box and returns
  /// false; logging then counts as active although no file is open, so later entries are faults.
  bool StartLoggingToFile(const std::string& strFilename);

  /// Writes the stop entry, even when paused, and closes the file. A write that fails is a fault.
  void StopLoggingToFile();

  /// Writes the pause entry and keeps the file open. A write that fails is a fault.
  void PauseLoggingToFile();

  /// Writes to the open file again. A write that fails is a fault.
  void ResumeLoggingToFile();

  /// Ends the capture without an entry, for a file that cannot be written.
  void AbandonLogging();

  /// Clears the logging-active flag, as the link does when it starts; an open file stays open.
  void ClearLoggingActive();

  bool IsLoggingActive() const { return loggingActive_; }

  /// Whether `ClearLoggingActive` has stopped a capture that the user has neither resumed, paused
  /// nor stopped since.
  bool IsStoppedByLink() const { return stoppedByLink_; }

  /// Why the last entry could not be written while logging is active; null if it could.
  const LogFailure* Failure() const { return failure_ && loggingActive_ ? &*failure_ : nullptr; }

  /// The name of the file that was last to be captured to.
  const std::string& FileName() const { return fileName_; }

  CaptureState State() const { return state_; }

  /// The status bar's text for the capture: "Logging...", "Logging Paused...", or nothing.
  std::string_view StatusText() const { return statusText_; }

  /// Closes the file without an entry, as the program does when it ends.
  void CloseFile() { file_.reset(); }

 private:
  void WriteEntry(std::string_view entry);
  void SetFailure(std::optional<LogFailure> failure);
  void SetLoggingActive(bool active);
  void ShowStatus(std::string_view text);
  void Enter(CaptureState state);
  void StateChanged();

  const platform::Machine& machine_;
  LogBox* logBox_;
  std::function<void()> stateChanged_;
  bool loggingActive_ = false;
  bool stoppedByLink_ = false;
  std::string fileName_;
  /// Why there is no file although logging is active.
  std::string openFailure_ = "no file is open";
  std::optional<LogFailure> failure_;
  CaptureState state_ = CaptureState::Idle;
  std::string_view statusText_;
  std::unique_ptr<platform::OutputFile> file_;
};

}  // namespace kelvara::capture
