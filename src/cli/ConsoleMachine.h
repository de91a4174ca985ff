#pragma once

#include <memory>

#include "cli/CommandMachine.h"
#include "cli/Streams.h"
#include "platform/Machine.h"

namespace kelvara::cli {

/// Counts the beeps instead of sounding them. On the console each beep is a failure to report.
class ConsoleBeeper : public platform::Beeper {
 public:
  void Beep() override { ++count_; }
  int Count() const { return count_; }

 private:
  int count_ = 0;
};

/// Shows no boxes: the sub-commands report failures themselves. The first line of a question goes
/// to standard error, and its answer is No.
class ConsoleMessageBoxes : public platform::MessageBoxes {
 public:
  explicit ConsoleMessageBoxes(const Streams& streams) : streams_(streams) {}

  platform::MessageAnswer Show(std::string_view text, std::string_view title,
                               platform::MessageIcon icon,
                               platform::MessageButtons buttons) override;

 private:
  Streams streams_;
};

/// The event pump of a program with no other events to process.
class ConsoleEventPump : public platform::EventPump {
 public:
  bool ProcessEvents() override { return true; }
  void End() override {}
};

/// The machine of a program without a window.
class ConsoleMachine {
 public:
  /// The clock runs `speed` times as fast as real time.
  ConsoleMachine(const Streams& streams, const CommandMachine& machine, double speed = 1.0)
      : streams_(streams),
        clock_(machine.makeClock(speed)),
        messageBoxes_(streams),
        machine_{.clock = *clock_,
                 .dateFormat = machine.dateFormat,
                 .fileSystem = machine.fileSystem,
                 .beeper = beeper_,
                 .messageBoxes = messageBoxes_,
                 .events = events_} {}

  const Streams& Out() const { return streams_; }
  const platform::Machine& Machine() const { return machine_; }
  int BeepCount() const { return beeper_.Count(); }

 private:
  Streams streams_;
  std::unique_ptr<platform::Clock> clock_;
  ConsoleBeeper beeper_;
  ConsoleMessageBoxes messageBoxes_;
  ConsoleEventPump events_;
  platform::Machine machine_;
};

}  // namespace kelvara::cli
