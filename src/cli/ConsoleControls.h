#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "cli/ExitCode.h"
#include "platform/Beeper.h"
#include "platform/EventPump.h"
#include "platform/LogBox.h"
#include "platform/MessageBoxes.h"
#include "platform/StatusBar.h"

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
  platform::MessageAnswer Show(std::string_view text, std::string_view /*title*/,
                               platform::MessageIcon /*icon*/,
                               platform::MessageButtons buttons) override {
    if (buttons != platform::MessageButtons::YesNo) {
      return platform::MessageAnswer::Ok;
    }
    Complain(text.substr(0, text.find('\r')));
    return platform::MessageAnswer::No;
  }
};

/// A log box that is not there.
class ConsoleLogBox : public platform::LogBox {
 public:
  bool IsShown() const override { return false; }
  void SetShown(bool /*shown*/) override {}
  void Append(std::string_view /*text*/) override {}
  void Clear() override {}
};

/// Remembers the panels for those who print them.
class ConsoleStatusBar : public platform::StatusBar {
 public:
  void SetPanel(platform::StatusPanel panel, std::string_view text) override {
    panels_.at(static_cast<std::size_t>(panel) - 1) = text;
  }

  const std::string& Panel(platform::StatusPanel panel) const {
    return panels_.at(static_cast<std::size_t>(panel) - 1);
  }

 private:
  std::array<std::string, 6> panels_;
};

/// A program that has no other events to serve.
class ConsoleEventPump : public platform::EventPump {
 public:
  bool ProcessEvents() override { return true; }
};

}  // namespace kelvara::cli
