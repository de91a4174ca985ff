#pragma once

#include "cli/ExitCode.h"
#include "platform/Machine.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/QtDateFormat.h"
#include "platform/qt/QtFileSystem.h"

namespace kelvara::cli {

/// Counts the beeps instead of sounding them: to the console each one is a failure to report.
class ConsoleBeeper : public platform::Beeper {
 public:
  void Beep() override { ++count_; }
  int Count() const { return count_; }

 private:
  int count_ = 0;
};

/// Shows no boxes: the sub-commands report failures in their own lines. What a question says is
/// noted on standard error, and its answer is No.
class ConsoleMessageBoxes : public platform::MessageBoxes {
 public:
  platform::MessageAnswer Show(std::string_view text, std::string_view title,
                               platform::MessageIcon icon,
                               platform::MessageButtons buttons) override;
};

/// A program that has no other events to serve.
class ConsoleEventPump : public platform::EventPump {
 public:
  bool ProcessEvents() override { return true; }
  void End() override {}
};

/// The machine of a program without a window.
class ConsoleMachine {
 public:
  /// `speed` is how many times as fast as real time the clock runs.
  explicit ConsoleMachine(double speed = 1.0) : clock_(speed) {}

  const platform::Machine& Machine() const { return machine_; }
  int BeepCount() const { return beeper_.Count(); }

 private:
  qt::QtClock clock_;
  qt::QtDateFormat dateFormat_;
  qt::QtFileSystem fileSystem_;
  ConsoleBeeper beeper_;
  ConsoleMessageBoxes messageBoxes_;
  ConsoleEventPump events_;
  platform::Machine machine_{.clock = clock_,
                             .dateFormat = dateFormat_,
                             .fileSystem = fileSystem_,
                             .beeper = beeper_,
                             .messageBoxes = messageBoxes_,
                             .events = events_};
};

}  // namespace kelvara::cli
