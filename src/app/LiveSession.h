#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "app/DisplaySettings.h"
#include "app/Session.h"
#include "link/BeltpackLink.h"
#include "link/ComPort.h"
#include "link/LinkDuties.h"
#include "platform/DebugView.h"
#include "platform/SerialPort.h"
#include "platform/SettingsStore.h"
#include "platform/Timer.h"
#include "sessions/LineTrace.h"

namespace kelvara::app {

/// What a live session asks of the machine beyond what every session does.
struct LiveMachine {
  platform::SerialPort& MSComm1;
  platform::Timer& RfpsTimer;
  platform::Timer& TimerComPort;
  platform::Timer& silenceTimer;
  platform::SettingsStore& settingsStore;
  platform::DebugView& debugView;
};

/// A session with a beltpack on the line: the sync model's session, the link, the port, the stored
/// options.
class LiveSession : public link::LinkDuties {
 public:
  LiveSession(const Machine& machine, const Controls& controls, const LiveMachine& liveMachine);

  /// Starts the link: searches for the beltpack with cleared results, polls from the cycle's first
  /// step, and applies the stored display options. The logging-active flag is cleared even while a
  /// capture runs.
  void StartLink();

  /// The user's command to clear the grid and the results.
  void mnuClearGrid_Click();

  /// Ends the polling; nothing more is sent or taken.
  void StopPolling();

  /// Ends everything that runs: timers off, port closed, log and trace closed. Errors are ignored.
  void Shutdown();

  /// Writes a trace of the line to a file, which is appended to or replaced; a file that cannot be
  /// opened is a file fault.
  void StartTrace(const std::string& path, bool append);

  /// What went wrong with the trace, or an empty text.
  std::string TraceFailure() const;

  /// What runs when the user wants a report before lost results are cleared.
  void SetReportCommand(std::function<void()> command) { reportCommand_ = std::move(command); }

  /// What is told of each report taken from the line.
  void SetReportTaken(std::function<void()> taken) { reportTaken_ = std::move(taken); }

  Session& Results() { return session_; }
  link::BeltpackLink& Link() { return link_; }
  link::ComPort& Port() { return comPort_; }
  DisplaySettings& Display() { return displaySettings_; }

  void ProcessRfpsReport(std::string_view report) override;
  void ClearSyncResults() override;
  void UpdateSyncGrid() override;
  void mnuGenReport_Click() override;

 private:
  platform::FileSystem& fileSystem_;
  LiveMachine machine_;
  Session session_;
  link::BeltpackLink link_;
  link::ComPort comPort_;
  DisplaySettings displaySettings_;
  std::unique_ptr<sessions::LineTrace> trace_;
  std::function<void()> reportCommand_;
  std::function<void()> reportTaken_;
};

}  // namespace kelvara::app
