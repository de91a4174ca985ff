#pragma once

#include <string>
#include <vector>

#include "link/BeltpackLink.h"
#include "platform/MemoryMenuBar.h"
#include "support/Doubles.h"
#include "support/RecordingLog.h"
#include "support/ScriptedPort.h"
#include "support/VirtualTime.h"

namespace kelvara::test {

/// Remembers what the link asked of the rest of the program.
class RecordingDuties : public link::LinkDuties {
 public:
  void ProcessRfpsReport(std::string_view report) override { reports.emplace_back(report); }
  void ClearSyncResults() override {
    ++clears;
    if (onClear) {
      onClear();
    }
  }
  void UpdateSyncGrid() override { ++redraws; }
  void mnuGenReport_Click() override {
    ++reportCommands;
    if (onReportCommand) {
      onReportCommand();
    }
  }

  std::vector<std::string> reports;
  int clears = 0;
  int redraws = 0;
  int reportCommands = 0;
  std::function<void()> onClear;
  std::function<void()> onReportCommand;
};

class RecordingDebugView : public platform::DebugView {
 public:
  void DebugLastTxMsg(std::string_view strTx) override { commands.emplace_back(strTx); }
  void ShowReportText(std::string_view text) override { reportTexts.emplace_back(text); }

  std::vector<std::string> commands;
  std::vector<std::string> reportTexts;
};

/// Questions that the test answers, with time passing while they are open.
class OpenQuestions : public RecordingMessageBoxes {
 public:
  platform::MessageAnswer Show(std::string_view text, std::string_view title,
                               platform::MessageIcon icon,
                               platform::MessageButtons buttons) override {
    RecordingMessageBoxes::Show(text, title, icon, buttons);
    if (whileOpen) {
      whileOpen();
    }
    return answer;
  }

  std::function<void()> whileOpen;
};

/// The link on a scripted port, in virtual time.
struct LinkRig {
  LinkRig() {
    duties.onClear = [this] { link.ForgetLoss(); };
    port.open = true;
  }

  /// As start-up leaves it: searching.
  void Start() {
    link.BeginSearch();
    link.SetStatusText("Attempting To Connect To Beltpack...");
    link.ResetPollStep();
  }

  /// As a beltpack that has answered leaves it: connected. It answers between two ticks.
  void Connect() {
    Start();
    time.Pass(500);
    port.Receive("B");
  }

  /// More than 30 s of silence, up to just behind the tick that notices it.
  void LoseAfterSilence() {
    Connect();
    time.Pass(32600);
  }

  std::string Status() const { return statusBar.panels.at(platform::StatusPanel::Link); }

  ManualClock clock;
  VirtualTime time{clock};
  VirtualTime::Timer rfpsTimer{time, link::kRfpsTimerMilliseconds};
  VirtualTime::Timer timerComPort{time, link::kTimerComPortMilliseconds};
  VirtualTime::Timer silenceTimer{time, link::kSilenceMilliseconds};
  ScriptedPort port;
  PlainDateFormat dateFormat;
  CountingBeeper beeper;
  OpenQuestions boxes;
  ScriptedEventPump events;
  RecordingStatusBar statusBar;
  platform::MemoryMenuBar menuBar;
  RecordingDebugView debugView;
  RecordingLog log;
  RecordingDuties duties;
  link::BeltpackLink link{{port, rfpsTimer, timerComPort, silenceTimer, clock, dateFormat, beeper,
                           boxes, events, statusBar, menuBar, debugView, log},
                          duties};
};

}  // namespace kelvara::test
