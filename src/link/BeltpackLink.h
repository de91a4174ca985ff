#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "link/ChunkSplitter.h"
#include "link/DebugView.h"
#include "link/LineListener.h"
#include "link/ReportCollector.h"
#include "platform/Machine.h"
#include "platform/SerialPort.h"
#include "platform/Timer.h"
#include "sync/LogFunnel.h"

namespace kelvara::link {

/// The intervals of the link's timers, in milliseconds.
inline constexpr int kRfpsTimerMilliseconds = 3000;
inline constexpr int kTimerComPortMilliseconds = 200;

/// How many seconds a connected beltpack may be silent before the user is told. It answers every
/// command that asks for a report, so this is more than two of them.
inline constexpr int kTellSilenceSeconds = 10;

/// The serial port of a link and its timers.
struct LinkLine {
  platform::SerialPort& MSComm1;
  platform::Timer& RfpsTimer;
  platform::Timer& TimerComPort;
  /// Ticks when the line has been silent for `kSilenceMilliseconds`.
  platform::Timer& silenceTimer;
};

/// What the link asks of the rest of the program.
struct LinkActions {
  /// Takes one whole report into the sync model.
  std::function<void(std::string_view report)> processRfpsReport;
  std::function<void()> clearSyncResults;
  std::function<void()> updateSyncGrid;
  /// The user's report command. Calls `afterwards` when the report dialog has closed, which may be
  /// after this has returned.
  std::function<void(std::function<void()> afterwards)> generateReport;
};

/// The beltpack on the line: polls it, collects its reports, and knows whether it is connected,
/// being searched for, or lost. `TimerComPort` is on during a search.
class BeltpackLink {
 public:
  /// The machine, the line and the log must outlive the link.
  BeltpackLink(const platform::Machine& machine, const LinkLine& line, sync::LogFunnel& log,
               LinkActions actions);
  ~BeltpackLink();
  BeltpackLink(const BeltpackLink&) = delete;
  BeltpackLink& operator=(const BeltpackLink&) = delete;

  /// Begins a search as start-up does: no loss pending, both timers on.
  void BeginSearch();

  /// The next tick begins a polling cycle.
  void ResetPollStep() { iPollStep_ = 0; }

  /// Call this when the results are cleared: a pending loss is forgotten, and the commands that
  /// clear results are unavailable until the beltpack is heard.
  void ResultsCleared();

  /// The user's force-search command: searches, polls, and clears the results.
  void mnuForceSearch_Click();

  /// Sets the text that the status bar shows for the link.
  void SetStatusText(std::string_view text);
  const std::string& StatusText() const { return statusText_; }

  /// Whether the commands that clear results can be used: not between a clear and the beltpack's
  /// next sign of life.
  bool CanClear() const { return canClear_; }

  /// For how many whole seconds the connected beltpack has been silent, as of the last tick of
  /// `RfpsTimer`; 0 if that is less than `kTellSilenceSeconds`. It counts until the beltpack is
  /// heard or disconnects, a new search is started, or the question about the loss is answered.
  int SilentSeconds() const { return silentSeconds_; }

  /// Sets what is called after the status text, `CanClear` or `SilentSeconds` has changed.
  void SetStateChanged(std::function<void()> stateChanged) {
    stateChanged_ = std::move(stateChanged);
  }

  /// Sets the debug window while the user wants to see the traffic, else null.
  void SetDebugView(DebugView* debugView) { debugView_ = debugView; }

  /// Releases the break, discards waiting input, and sends a command followed by a carriage return.
  /// An error ends the send silently.
  void SerialSendString(std::string_view ComStr, bool dDisplayStatus);

  /// Asks for a report; text of an unfinished one is discarded.
  void SendRfpsCommand();
  void SendChoCommand();
  void SendBhoCommand();

  /// Reads `count` bytes into the buffer, letting other events run; false when `timeoutMs` went by
  /// without a byte, or the program is ending. A buffer too small for `count` is a subscript fault.
  bool SerialGetResponseBytes(std::int32_t timeoutMs, std::int32_t count,
                              std::span<std::uint8_t> buffer);

  /// Reads and discards bytes until the program ends.
  void CmdChkRx_Click();

  /// Reports everything on the line to a listener from now on; null for none.
  void SetLineListener(LineListener* listener) { lineListener_ = listener; }

  std::int16_t bLinkLossPending() const { return bLinkLossPending_; }
  std::int16_t iPollStep() const { return iPollStep_; }
  std::int16_t iRfpsLinesLeft() const { return collector_.LinesLeft(); }
  platform::DateTime dtLastRx() const { return dtLastRx_; }

 private:
  void RfpsTimer_Timer();
  void TimerComPort_Timer();
  void MSComm1_OnComm();
  /// Does work on received text; an error in it resets the port.
  template <typename Work>
  void Receive(const Work& work);
  void Poll();
  void Supervise();
  void AskAboutLoss();
  void TakeChunk(std::string_view chunk);
  void HearBeltpack();
  /// The beltpack is not connected, so its silence says nothing.
  void Disconnect();
  void MeasureSilence();
  void SetSilentSeconds(int seconds);
  void Collect(std::string_view chunk);
  void SendAndShow(std::string_view command);
  void ResetPort();
  void StateChanged();

  const platform::Machine& machine_;
  LinkLine line_;
  sync::LogFunnel& log_;
  LinkActions actions_;
  std::function<void()> stateChanged_;
  std::string statusText_;
  bool canClear_ = true;
  DebugView* debugView_ = nullptr;
  ChunkSplitter splitter_;
  ReportCollector collector_;
  LineListener* lineListener_ = nullptr;
  platform::DateTime dtLastRx_ = 0.0;
  /// When the beltpack was last heard, while it counts as connected. Unlike `dtLastRx_`, it is kept
  /// when a search begins.
  std::optional<platform::DateTime> lastHeard_;
  int silentSeconds_ = 0;
  std::int16_t bLinkLossPending_ = 0;
  std::int16_t iPollStep_ = 0;
  bool questionOpen_ = false;
};

}  // namespace kelvara::link
