#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "link/ChunkSplitter.h"
#include "link/LineListener.h"
#include "link/LinkDuties.h"
#include "link/ReportCollector.h"
#include "platform/Beeper.h"
#include "platform/Clock.h"
#include "platform/DateFormat.h"
#include "platform/DebugView.h"
#include "platform/EventPump.h"
#include "platform/MenuBar.h"
#include "platform/MessageBoxes.h"
#include "platform/SerialPort.h"
#include "platform/StatusBar.h"
#include "platform/Timer.h"
#include "sync/LogFunnel.h"

namespace kelvara::link {

/// The intervals of the link's timers, in milliseconds.
inline constexpr int kRfpsTimerMilliseconds = 3000;
inline constexpr int kTimerComPortMilliseconds = 200;

/// What the link stands on.
struct LinkMachine {
  platform::SerialPort& MSComm1;
  platform::Timer& RfpsTimer;
  platform::Timer& TimerComPort;
  platform::Timer& silenceTimer;
  const platform::Clock& clock;
  const platform::DateFormat& dateFormat;
  platform::Beeper& beeper;
  platform::MessageBoxes& messageBoxes;
  platform::EventPump& events;
  platform::StatusBar& statusBar;
  platform::MenuBar& menuBar;
  platform::DebugView& debugView;
  sync::LogFunnel& log;
};

/// The beltpack on the line: polls it, collects its reports, and knows whether it is there, being
/// searched for, or lost. `TimerComPort` is on while it is searched for.
class BeltpackLink {
 public:
  /// The machine and the duties outlive the link, which leaves nothing of itself with them.
  BeltpackLink(const LinkMachine& machine, LinkDuties& duties);
  ~BeltpackLink();
  BeltpackLink(const BeltpackLink&) = delete;
  BeltpackLink& operator=(const BeltpackLink&) = delete;

  /// Begins a search as start-up does: no loss pending, both timers on.
  void BeginSearch();

  /// The next tick begins a polling cycle.
  void ResetPollStep() { iPollStep_ = 0; }

  /// Forgets a loss that is being searched for, as a clear of the results does.
  void ForgetLoss() { bLinkLossPending_ = 0; }

  /// The user's force-search command: searches, polls, and clears the results.
  void mnuForceSearch_Click();

  /// Shows a text in the link's panel of the status bar.
  void SetStatusText(std::string_view text);

  /// Sends a command with a carriage return behind it: break released, waiting input discarded. An
  /// error ends the send silently.
  void SerialSendString(std::string_view ComStr, bool dDisplayStatus);

  /// Asks for a report; text of an unfinished one is thrown away.
  void SendRfpsCommand();
  void SendChoCommand();
  void SendBhoCommand();

  /// Reads `count` bytes into the buffer, letting other events run; false when `timeoutMs` went by
  /// without a byte, or the program is ending. A buffer too small for `count` is a subscript fault.
  bool SerialGetResponseBytes(std::int32_t timeoutMs, std::int32_t count,
                              std::span<std::uint8_t> buffer);

  /// Reads and discards bytes until the program ends.
  void CmdChkRx_Click();

  /// Tells a listener of everything on the line from now on; null for none.
  void SetLineListener(LineListener* listener) { lineListener_ = listener; }

  std::int16_t bLinkLossPending() const { return bLinkLossPending_; }
  std::int16_t iPollStep() const { return iPollStep_; }
  std::int16_t iRfpsLinesLeft() const { return collector_.LinesLeft(); }
  platform::DateTime dtLastRx() const { return dtLastRx_; }

 private:
  void RfpsTimer_Timer();
  void TimerComPort_Timer();
  void MSComm1_OnComm();
  /// Works on what came over the line; an error resets the port.
  template <typename Work>
  void Receive(const Work& work);
  void Poll();
  void Supervise();
  void AskAboutLoss();
  void TakeChunk(std::string_view chunk);
  void HearBeltpack();
  void Collect(std::string_view chunk);
  void SendAndShow(std::string_view command);
  void ResetPort();
  bool IsDebugViewOn() const;

  LinkMachine machine_;
  LinkDuties& duties_;
  ChunkSplitter splitter_;
  ReportCollector collector_;
  LineListener* lineListener_ = nullptr;
  platform::DateTime dtLastRx_ = 0.0;
  std::int16_t bLinkLossPending_ = 0;
  std::int16_t iPollStep_ = 0;
  bool questionOpen_ = false;
};

}  // namespace kelvara::link
