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

using platform::MenuEntry;

namespace {

// One polling cycle is nine ticks: four times "rfps", "cho", three times "rfps", "bho".
constexpr std::int16_t kChoStep = 4;
constexpr std::int16_t kBhoStep = 8;

constexpr double kSilenceSeconds = 30.0;
constexpr double kSearchSeconds = 15.0;

constexpr std::int32_t kCheckTimeoutMilliseconds = 5000;

// A chunk strictly between these two is a sign of life.
constexpr std::string_view kLifeAbove = "A";
constexpr std::string_view kLifeBelow = "z";

}  // namespace

BeltpackLink::BeltpackLink(const LinkMachine& machine, LinkDuties& duties)
    : machine_(machine),
      duties_(duties),
      splitter_(machine.silenceTimer, [this](std::string_view chunk) { TakeChunk(chunk); }) {
  machine_.RfpsTimer.SetTick([this] {
    try {
      RfpsTimer_Timer();
    } catch (const std::exception&) {
      machine_.beeper.Beep();
    }
  });
  machine_.TimerComPort.SetTick([this] { TimerComPort_Timer(); });
  machine_.silenceTimer.SetTick([this] { Receive([this] { splitter_.Silence_Timer(); }); });
  machine_.MSComm1.SetReceiveNotification([this] { MSComm1_OnComm(); });
}

BeltpackLink::~BeltpackLink() {
  machine_.RfpsTimer.SetTick({});
  machine_.TimerComPort.SetTick({});
  machine_.silenceTimer.SetTick({});
  machine_.MSComm1.SetReceiveNotification({});
}

void BeltpackLink::BeginSearch() {
  bLinkLossPending_ = 0;
  dtLastRx_ = machine_.clock.Now();
  machine_.TimerComPort.SwitchOn();
  machine_.RfpsTimer.SwitchOn();
}

void BeltpackLink::mnuForceSearch_Click() {
  dtLastRx_ = machine_.clock.Now();
  machine_.TimerComPort.SwitchOn();
  machine_.RfpsTimer.SwitchOn();
  duties_.ClearSyncResults();
  SetStatusText(kAttemptingText);
}

void BeltpackLink::SetStatusText(std::string_view text) {
  machine_.statusBar.SetPanel(platform::StatusPanel::Link, text);
}

void BeltpackLink::SerialSendString(std::string_view ComStr, bool dDisplayStatus) {
  try {
    platform::SerialPort& port = machine_.MSComm1;
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
    // A command that does not get out is one answer less; supervision notices the silence.
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
  if (IsDebugViewOn()) {
    machine_.debugView.DebugLastTxMsg(command);
  }
}

bool BeltpackLink::SerialGetResponseBytes(std::int32_t timeoutMs, std::int32_t count,
                                          std::span<std::uint8_t> buffer) {
  platform::SerialPort& port = machine_.MSComm1;
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
    machine_.MSComm1.Input(std::numeric_limits<std::size_t>::max());
  }
}

void BeltpackLink::RfpsTimer_Timer() {
  machine_.MSComm1.RestoreDevice();
  // No break is asserted while a command is written.
  const bool searching = machine_.TimerComPort.IsOn();
  if (searching) {
    machine_.TimerComPort.SwitchOff();
  }
  Poll();
  if (searching) {
    machine_.TimerComPort.SwitchOn();
  }
  Supervise();
  duties_.UpdateSyncGrid();
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
  if (!machine_.TimerComPort.IsOn()) {
    if (silence > platform::Span(kSilenceSeconds)) {
      machine_.TimerComPort.SwitchOn();
      bLinkLossPending_ = 1;
      dtLastRx_ = machine_.clock.Now();
      try {
        machine_.log.PrintLogEntry(kBreakConditionText);
      } catch (const base::Fault&) {
        machine_.beeper.Beep();
      }
    }
  } else if (bLinkLossPending_ >= 1 && silence > platform::Span(kSearchSeconds)) {
    AskAboutLoss();
  }
}

void BeltpackLink::AskAboutLoss() {
  // Ticks go on while the question, or the report it leads to, is open.
  questionOpen_ = true;
  const std::shared_ptr<void> closed(nullptr, [this](void*) { questionOpen_ = false; });
  const platform::DateTime lastHeard =
      machine_.clock.WallTime() - platform::Span(kSilenceSeconds + kSearchSeconds);
  const platform::MessageAnswer answer = machine_.messageBoxes.Show(
      "Lost Communications with Beltpack at " + machine_.dateFormat.General(lastHeard) +
          "\r\n\r\nDo you wish to generate a report, then clear the results?",
      "Beltpack Comms Lost", platform::MessageIcon::Question, platform::MessageButtons::YesNo);
  if (answer == platform::MessageAnswer::Yes) {
    duties_.mnuGenReport_Click();
    duties_.ClearSyncResults();
  } else {
    bLinkLossPending_ = 0;
  }
  SetStatusText(kAttemptingText);
}

void BeltpackLink::TimerComPort_Timer() {
  try {
    machine_.MSComm1.SetBreak(true);
  } catch (const base::Fault&) {
    // A line that cannot break is searched for all the same.
  }
}

void BeltpackLink::MSComm1_OnComm() {
  Receive(
      [this] { splitter_.Feed(machine_.MSComm1.Input(std::numeric_limits<std::size_t>::max())); });
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
    machine_.MSComm1.SetOpen(false);
    machine_.MSComm1.DiscardInput();
    machine_.MSComm1.SetOpen(true);
  } catch (const std::exception&) {
    // It stays closed; the user chooses a port.
  }
}

void BeltpackLink::TakeChunk(std::string_view chunk) {
  if (lineListener_ != nullptr) {
    lineListener_->Received(chunk);
  }
  if (chunk > kLifeAbove && chunk < kLifeBelow) {
    HearBeltpack();
  } else if (chunk == kDisconnectedText) {
    SetStatusText(kDisconnectedStatusText);
    machine_.TimerComPort.SwitchOn();
  }
  Collect(chunk);
}

void BeltpackLink::HearBeltpack() {
  if (machine_.TimerComPort.IsOn()) {
    machine_.TimerComPort.SwitchOff();
    bLinkLossPending_ = 0;
  }
  SetStatusText(kConnectedText);
  if (!machine_.menuBar.IsEnabled(MenuEntry::mnuForceSearch)) {
    machine_.menuBar.SetEnabled(MenuEntry::mnuForceSearch, true);
    machine_.menuBar.SetEnabled(MenuEntry::mnuClearGrid, true);
  }
  dtLastRx_ = machine_.clock.Now();
}

void BeltpackLink::Collect(std::string_view chunk) {
  if (collector_.LinesLeft() == 0) {
    return;
  }
  const ReportCollector::Event event = collector_.Append(chunk).event;
  if (event == ReportCollector::Event::None) {
    return;
  }
  const bool debugViewOn = IsDebugViewOn();
  if (debugViewOn) {
    machine_.debugView.ShowReportText(collector_.Text());
  }
  if (event == ReportCollector::Event::Line) {
    return;
  }
  if (debugViewOn) {
    machine_.beeper.Beep();
  }
  if (event == ReportCollector::Event::Report) {
    duties_.ProcessRfpsReport(collector_.Text());
  }
}

bool BeltpackLink::IsDebugViewOn() const {
  return machine_.menuBar.IsChecked(MenuEntry::mnuViewDebugOn);
}

}  // namespace kelvara::link
