#include "link/BeltpackLink.h"

#include <exception>
#include <limits>
#include <memory>
#include <string>

#include "base/CheckedInteger.h"
#include "base/Fault.h"
#include "link/BeltpackCommands.h"
#include "link/LinkTexts.h"

namespace kelvara::link {

namespace {

// One polling cycle is nine ticks: "rfps" four times, "cho", "rfps" three times, "bho".
constexpr std::int16_t kChoStep = 4;
constexpr std::int16_t kBhoStep = 8;

constexpr double kSilenceSeconds = 30.0;
constexpr double kSearchSeconds = 15.0;

constexpr std::int32_t kCheckTimeoutMilliseconds = 5000;

// A chunk strictly between these two is a sign of life.
constexpr std::string_view kLifeAbove = "A";
constexpr std::string_view kLifeBelow = "z";

}  // namespace

BeltpackLink::BeltpackLink(const platform::Machine& machine, const LinkLine& line,
                           sync::LogFunnel& log, LinkActions actions)
    : machine_(machine),
      line_(line),
      log_(log),
      actions_(std::move(actions)),
      splitter_(line.silenceTimer, [this](std::string_view chunk) { TakeChunk(chunk); }) {
  line_.RfpsTimer.SetTick([this] {
    try {
      RfpsTimer_Timer();
    } catch (const std::exception&) {
      machine_.beeper.Beep();
    }
  });
  line_.TimerComPort.SetTick([this] { TimerComPort_Timer(); });
  line_.silenceTimer.SetTick([this] { Receive([this] { splitter_.Silence_Timer(); }); });
  line_.MSComm1.SetReceiveNotification([this] { MSComm1_OnComm(); });
}

BeltpackLink::~BeltpackLink() {
  line_.RfpsTimer.SetTick({});
  line_.TimerComPort.SetTick({});
  line_.silenceTimer.SetTick({});
  line_.MSComm1.SetReceiveNotification({});
}

void BeltpackLink::BeginSearch() {
  bLinkLossPending_ = 0;
  dtLastRx_ = machine_.clock.Now();
  Disconnect();
  line_.TimerComPort.SwitchOn();
  line_.RfpsTimer.SwitchOn();
}

void BeltpackLink::ResultsCleared() {
  bLinkLossPending_ = 0;
  if (canClear_) {
    canClear_ = false;
    StateChanged();
  }
}

void BeltpackLink::mnuForceSearch_Click() {
  dtLastRx_ = machine_.clock.Now();
  Disconnect();
  line_.TimerComPort.SwitchOn();
  line_.RfpsTimer.SwitchOn();
  actions_.clearSyncResults();
  SetStatusText(kAttemptingText);
}

void BeltpackLink::SetStatusText(std::string_view text) {
  if (text != statusText_) {
    statusText_ = text;
    StateChanged();
  }
}

void BeltpackLink::SerialSendString(std::string_view ComStr, bool dDisplayStatus) {
  try {
    platform::SerialPort& port = line_.MSComm1;
    if (port.IsBreak()) {
      port.SetBreak(false);
    }
    port.DiscardInput();
    splitter_.Discard();
    port.DiscardOutput();
    if (dDisplayStatus) {
      SetStatusText("Tx string: " + std::string(ComStr));
    }
    if (lineListener_ != nullptr) {
      lineListener_->Sent(ComStr);
    }
    for (const char& character : ComStr) {
      port.Output(std::string_view(&character, 1));
    }
    port.Output("\r");
  } catch (const base::Fault&) {
    // A command that cannot be sent gets no answer; supervision notices the silence.
  }
}

void BeltpackLink::SendRfpsCommand() {
  collector_.Expect();
  SendAndShow(kRfpsCommand);
}

void BeltpackLink::SendChoCommand() { SendAndShow(kChoCommand); }

void BeltpackLink::SendBhoCommand() { SendAndShow(kBhoCommand); }

void BeltpackLink::SendAndShow(std::string_view command) {
  SerialSendString(command, false);
  if (debugView_ != nullptr) {
    debugView_->DebugLastTxMsg(command);
  }
}

bool BeltpackLink::SerialGetResponseBytes(std::int32_t timeoutMs, std::int32_t count,
                                          std::span<std::uint8_t> buffer) {
  platform::SerialPort& port = line_.MSComm1;
  std::int32_t index = 0;
  while (true) {
    const std::int64_t deadline = machine_.clock.TickCount() + timeoutMs;
    do {
      if (!machine_.events.ProcessEvents()) {
        return false;
      }
    } while (machine_.clock.TickCount() < deadline && port.InputCount() == 0);
    if (port.InputCount() == 0) {
      return false;
    }
    base::At(buffer, index) = static_cast<std::uint8_t>(port.Input(1).at(0));
    ++index;
    if (index >= count) {
      return true;
    }
  }
}

void BeltpackLink::CmdChkRx_Click() {
  std::uint8_t byte = 0;
  while (machine_.events.ProcessEvents()) {
    SerialGetResponseBytes(kCheckTimeoutMilliseconds, 1, std::span(&byte, 1));
    line_.MSComm1.Input(std::numeric_limits<std::size_t>::max());
  }
}

void BeltpackLink::RfpsTimer_Timer() {
  line_.MSComm1.RestoreDevice();
  // No break is asserted while a command is written.
  const bool searching = line_.TimerComPort.IsOn();
  if (searching) {
    line_.TimerComPort.SwitchOff();
  }
  Poll();
  if (searching) {
    line_.TimerComPort.SwitchOn();
  }
  MeasureSilence();
  Supervise();
  actions_.updateSyncGrid();
}

void BeltpackLink::Poll() {
  if (iPollStep_ == kBhoStep) {
    SendBhoCommand();
    iPollStep_ = 0;
  } else if (iPollStep_ == kChoStep) {
    SendChoCommand();
    ++iPollStep_;
  } else {
    SendRfpsCommand();
    ++iPollStep_;
  }
}

void BeltpackLink::Supervise() {
  if (questionOpen_) {
    return;
  }
  const platform::DateTime silence = machine_.clock.Now() - dtLastRx_;
  if (!line_.TimerComPort.IsOn()) {
    if (silence > platform::Span(kSilenceSeconds)) {
      line_.TimerComPort.SwitchOn();
      bLinkLossPending_ = 1;
      dtLastRx_ = machine_.clock.Now();
      try {
        log_.PrintLogEntry(kBreakConditionText);
      } catch (const base::Fault&) {
        machine_.beeper.Beep();
      }
    }
  } else if (bLinkLossPending_ >= 1 && silence > platform::Span(kSearchSeconds)) {
    AskAboutLoss();
  }
}

void BeltpackLink::MeasureSilence() {
  if (!lastHeard_) {
    return;
  }
  // A silence between two ticks is a multiple of their interval, but its difference in days may
  // fall short of it by a rounding.
  constexpr double kRounding = 0.001;
  const double silence = (machine_.clock.Now() - *lastHeard_) / platform::Span(1.0) + kRounding;
  SetSilentSeconds(silence < kTellSilenceSeconds ? 0 : static_cast<int>(silence));
}

void BeltpackLink::SetSilentSeconds(int seconds) {
  if (seconds != silentSeconds_) {
    silentSeconds_ = seconds;
    StateChanged();
  }
}

void BeltpackLink::Disconnect() {
  lastHeard_.reset();
  SetSilentSeconds(0);
}

void BeltpackLink::AskAboutLoss() {
  // Ticks continue while the question, or the report it leads to, is open.
  questionOpen_ = true;
  const std::shared_ptr<void> closed(nullptr, [this](void*) { questionOpen_ = false; });
  const platform::DateTime lastHeard =
      machine_.clock.WallTime() - platform::Span(kSilenceSeconds + kSearchSeconds);
  const platform::MessageAnswer answer = machine_.messageBoxes.Show(
      "Lost Communications with Beltpack at " + machine_.dateFormat.General(lastHeard) +
          "\r\n\r\nDo you wish to generate a report, then clear the results?",
      "Beltpack Comms Lost", platform::MessageIcon::Question,
      platform::MessageButtons::YesNoDefaultNo);
  if (answer == platform::MessageAnswer::Yes) {
    actions_.generateReport([this, closed] {
      actions_.clearSyncResults();
      Disconnect();
      SetStatusText(kAttemptingText);
    });
    return;
  }
  bLinkLossPending_ = 0;
  Disconnect();
  SetStatusText(kAttemptingText);
}

void BeltpackLink::TimerComPort_Timer() {
  try {
    line_.MSComm1.SetBreak(true);
  } catch (const base::Fault&) {
    // The search goes on without a break.
  }
}

void BeltpackLink::MSComm1_OnComm() {
  Receive([this] { splitter_.Feed(line_.MSComm1.Input(std::numeric_limits<std::size_t>::max())); });
}

template <typename Work>
void BeltpackLink::Receive(const Work& work) {
  try {
    work();
  } catch (const std::exception&) {
    ResetPort();
  }
}

void BeltpackLink::ResetPort() {
  splitter_.Discard();
  try {
    line_.MSComm1.SetOpen(false);
    line_.MSComm1.DiscardInput();
    line_.MSComm1.SetOpen(true);
  } catch (const std::exception&) {
    // It stays closed until the user chooses a port.
  }
}

void BeltpackLink::TakeChunk(std::string_view chunk) {
  if (lineListener_ != nullptr) {
    lineListener_->Received(chunk);
  }
  if (chunk > kLifeAbove && chunk < kLifeBelow) {
    HearBeltpack();
  } else if (chunk == kDisconnectedText) {
    Disconnect();
    SetStatusText(kDisconnectedStatusText);
    line_.TimerComPort.SwitchOn();
  }
  Collect(chunk);
}

void BeltpackLink::HearBeltpack() {
  if (line_.TimerComPort.IsOn()) {
    line_.TimerComPort.SwitchOff();
    bLinkLossPending_ = 0;
  }
  SetStatusText(kConnectedText);
  if (!canClear_) {
    canClear_ = true;
    StateChanged();
  }
  dtLastRx_ = machine_.clock.Now();
  lastHeard_ = dtLastRx_;
  SetSilentSeconds(0);
}

void BeltpackLink::Collect(std::string_view chunk) {
  if (collector_.LinesLeft() == 0) {
    return;
  }
  const ReportCollector::Event event = collector_.Append(chunk).event;
  if (event == ReportCollector::Event::None) {
    return;
  }
  const bool debugViewOn = debugView_ != nullptr;
  if (debugViewOn) {
    debugView_->ShowReportText(collector_.Text());
  }
  if (event == ReportCollector::Event::Line) {
    return;
  }
  if (debugViewOn) {
    machine_.beeper.Beep();
  }
  if (event == ReportCollector::Event::Report) {
    actions_.processRfpsReport(collector_.Text());
  }
}

void BeltpackLink::StateChanged() {
  if (stateChanged_) {
    stateChanged_();
  }
}

}  // namespace kelvara::link
