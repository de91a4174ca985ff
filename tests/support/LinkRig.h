#pragma once

#include <string>
#include <vector>

#include "link/BeltpackLink.h"
#include "support/Doubles.h"
#include "support/RecordingLog.h"
#include "support/ScriptedPort.h"
#include "support/VirtualTime.h"

namespace kelvara::test {

/// Records what the link requested from the rest of the program.
struct RecordedActions {
  link::LinkActions Actions() {
    return {.processRfpsReport = [this](std::string_view report) { reports.emplace_back(report); },
            .clearSyncResults =
                [this] {
                  ++clears;
                  if (onClear) {
                    onClear();
                  }
                },
            .updateSyncGrid = [this] { ++redraws; },
            .generateReport =
                [this](const std::function<void()>& afterwards) {
                  ++reportCommands;
                  if (onReportCommand) {
                    onReportCommand();
                  }
                  afterwards();
                }};
  }

  std::vector<std::string> reports;
  int clears = 0;
  int redraws = 0;
  int reportCommands = 0;
  std::function<void()> onClear;
  std::function<void()> onReportCommand;
};

class RecordingDebugView : public link::DebugView {
 public:
  void DebugLastTxMsg(std::string_view strTx) override { commands.emplace_back(strTx); }
  void ShowReportText(std::string_view text) override { reportTexts.emplace_back(text); }

  std::vector<std::string> commands;
  std::vector<std::string> reportTexts;
};

/// Questions that the test answers. `whileOpen` runs while a question is open.
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
struct LinkRig : MachineDoubles<MemoryFileSystem, OpenQuestions> {
  LinkRig() {
    actions.onClear = [this] { link.ResultsCleared(); };
    port.open = true;
  }

  /// Puts the link into its state after start-up: searching.
  void Start() {
    link.BeginSearch();
    link.SetStatusText("Attempting To Connect To Beltpack...");
    link.ResetPollStep();
  }

  /// Puts the link into its state after a beltpack has answered, between two ticks: connected.
  void Connect() {
    Start();
    time.Pass(500);
    port.Receive("B");
  }

  /// Connects, then lets more than 30 s of silence pass, until just after the tick that notices it.
  void LoseAfterSilence() {
    Connect();
    time.Pass(32600);
  }

  std::string Status() const { return link.StatusText(); }

  VirtualTime time{clock};
  VirtualTime::Timer rfpsTimer{time, link::kRfpsTimerMilliseconds};
  VirtualTime::Timer timerComPort{time, link::kTimerComPortMilliseconds};
  VirtualTime::Timer silenceTimer{time, link::kSilenceMilliseconds};
  ScriptedPort port;
  RecordingDebugView debugView;
  RecordingLog log;
  RecordedActions actions;
  link::BeltpackLink link{
      machine, {port, rfpsTimer, timerComPort, silenceTimer}, log, actions.Actions()};
};

}  // namespace kelvara::test
