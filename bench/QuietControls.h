#pragma once

#include <string_view>

#include "platform/Beeper.h"
#include "platform/EventPump.h"
#include "platform/MessageBoxes.h"
#include "sync/LogFunnel.h"

/// Stand-ins that do nothing, so that only the engine is measured.
namespace kelvara::bench {

class QuietBeeper : public platform::Beeper {
 public:
  void Beep() override { ++count; }

  int count = 0;
};

class QuietEventPump : public platform::EventPump {
 public:
  bool ProcessEvents() override { return true; }
  void End() override {}
};

class QuietMessageBoxes : public platform::MessageBoxes {
 public:
  platform::MessageAnswer Show(std::string_view /*text*/, std::string_view /*title*/,
                               platform::MessageIcon /*icon*/,
                               platform::MessageButtons /*buttons*/) override {
    return platform::MessageAnswer::Ok;
  }
};

class QuietLog : public sync::LogFunnel {
 public:
  void PrintLogEntry(std::string_view /*strLog*/) override {}
  bool IsListening() const override { return false; }
};

}  // namespace kelvara::bench
