#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/Fault.h"
#include "platform/SerialPort.h"

namespace kelvara::test {

/// A serial port whose other end the test controls.
class ScriptedPort : public platform::SerialPort {
 public:
  void SetPortNumber(std::int16_t portNumber) override { number = portNumber; }
  std::int16_t PortNumber() const override { return number; }
  void SetSettings(std::string_view text) override {
    steps.push_back("settings " + std::string(text));
    settings = text;
  }
  std::string Settings() const override { return settings; }
  void SetOpen(bool nowOpen) override {
    steps.emplace_back(nowOpen ? "open" : "close");
    if (nowOpen && !openable) {
      throw base::Fault(base::FaultKind::Port, "no such device");
    }
    open = nowOpen;
  }
  bool IsOpen() const override { return open; }
  void SetBreak(bool asserted) override {
    if (!breakable) {
      throw base::Fault(base::FaultKind::Port, "no break");
    }
    breakSet = asserted;
  }
  bool IsBreak() const override { return breakSet; }
  std::size_t InputCount() const override { return waiting.size(); }
  void DiscardInput() override {
    steps.emplace_back("discard");
    waiting.clear();
  }
  std::string Input(std::size_t most) override {
    if (readFails) {
      readFails = false;
      throw base::Fault(base::FaultKind::Port, "read failed");
    }
    std::string taken = waiting.substr(0, most);
    waiting.erase(0, taken.size());
    return taken;
  }
  void Output(std::string_view text) override {
    if (!writable) {
      throw base::Fault(base::FaultKind::Port, "write failed");
    }
    breakWhileWriting = breakWhileWriting || breakSet;
    writes.emplace_back(text);
    written += text;
    if (onCommand && text == "\r") {
      onCommand();
    }
  }
  void DiscardOutput() override {}
  void RestoreDevice() override { ++restores; }
  void SetReceiveNotification(std::function<void()> newNotification) override {
    notification = std::move(newNotification);
  }

  /// Adds received bytes and notifies the program.
  void Receive(std::string_view text) {
    waiting += text;
    notification();
  }

  /// What was written since the last call.
  std::string TakeWritten() { return std::exchange(written, {}); }

  std::int16_t number = 0;
  std::string settings;
  bool open = false;
  bool openable = true;
  bool writable = true;
  bool breakable = true;
  bool readFails = false;
  bool breakSet = false;
  bool breakWhileWriting = false;
  int restores = 0;
  std::string waiting;
  std::string written;
  std::vector<std::string> writes;
  std::vector<std::string> steps;
  std::function<void()> notification;
  std::function<void()> onCommand;
};

}  // namespace kelvara::test
