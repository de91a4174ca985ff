#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/DisplaySettings.h"
#include "app/Session.h"
#include "link/BeltpackLink.h"
#include "link/ComPort.h"
#include "platform/SessionFolder.h"
#include "platform/SettingsStore.h"
#include "sessions/Journal.h"
#include "sessions/LineTrace.h"
#include "sessions/SessionListener.h"

namespace kelvara::app {

/// A session with a beltpack on the line: the sync model's session, the link, the port, the stored
/// options.
class LiveSession : private link::LineListener {
 public:
  /// All arguments must outlive the session; `logBox` is null if there is none.
  LiveSession(const platform::Machine& machine, sync::GridCells& grid, capture::LogBox* logBox,
              const link::LinkLine& line, platform::SettingsStore& settings);

  /// Starts the link: searches for the beltpack with cleared results, polls from the cycle's first
  /// step, and applies the stored display options. The logging-active flag is cleared even while a
  /// capture runs.
  void StartLink();

  /// The user's command to clear the grid and the results.
  void mnuClearGrid_Click();

  /// Ends the polling; nothing more is sent or received.
  void StopPolling();

  /// Ends everything that runs: timers off, port closed, log and trace closed. Errors are ignored.
  void Shutdown();

  /// Writes a trace of the line to a file, which is appended to or replaced; a file that cannot be
  /// opened is a file fault.
  void StartTrace(const std::string& path, bool append);

  /// Keeps a journal of the session in the folder, which must outlive the session, and removes old
  /// ones.
  void StartJournal(platform::SessionFolder& folder);

  /// Continues an earlier session: puts its results before the present ones, shows them, and
  /// continues its journal if one is kept, for which it takes the session's file. Returns why it
  /// failed, with nothing changed; empty if it succeeded.
  std::string Continue(sessions::UnfinishedSession& session);

  /// What went wrong with the journal, or an empty text.
  std::string JournalFailure() const { return journal_ ? journal_->Failure() : ""; }

  /// What went wrong with the trace, or an empty text.
  std::string TraceFailure() const;

  /// Sets what runs when the user wants a report before lost results are cleared.
  /// It calls `afterwards` when the report dialog has closed.
  void SetReportCommand(std::function<void(std::function<void()> afterwards)> command) {
    reportCommand_ = std::move(command);
  }

  /// Sets what is called after each report taken from the line.
  void SetReportTaken(std::function<void()> taken) { reportTaken_ = std::move(taken); }

  /// Sets what is called after each redraw of the grid and each clear of the results.
  void SetResultsChanged(std::function<void()> changed) { resultsChanged_ = std::move(changed); }

  Session& Results() { return session_; }
  link::BeltpackLink& Link() { return link_; }
  link::ComPort& Port() { return comPort_; }
  /// Whether the beltpack is polled.
  bool IsPolling() const { return line_.RfpsTimer.IsOn(); }
  DisplaySettings& Display() { return displaySettings_; }

  /// Takes one whole report into the sync model.
  void ProcessRfpsReport(std::string_view report);

  /// Empties the results and the log box; the commands that clear results are unavailable until the
  /// beltpack is heard.
  void ClearSyncResults();
  void UpdateSyncGrid();

  /// Restores the results that were cleared and shows them. Returns why it failed, with nothing
  /// changed; empty if it succeeded.
  std::string RestoreClearedResults();

 private:
  void ResultsChanged();
  void Sent(std::string_view command) override;
  void Received(std::string_view text) override;
  void GenerateReport(std::function<void()> afterwards);

  platform::FileSystem& fileSystem_;
  const platform::Clock& clock_;
  link::LinkLine line_;
  Session session_;
  link::BeltpackLink link_;
  link::ComPort comPort_;
  DisplaySettings displaySettings_;
  std::unique_ptr<sessions::LineTrace> trace_;
  std::unique_ptr<sessions::Journal> journal_;
  std::vector<sessions::SessionListener*> listeners_;
  std::function<void(std::function<void()> afterwards)> reportCommand_;
  std::function<void()> reportTaken_;
  std::function<void()> resultsChanged_;
};

}  // namespace kelvara::app
