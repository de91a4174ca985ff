#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/Clock.h"
#include "platform/PortSettings.h"
#include "platform/SerialPort.h"
#include "platform/Timer.h"
#include "sim/Beltpack.h"

namespace kelvara::sim {

/// How often the delivery timer should tick, in milliseconds.
inline constexpr int kDeliveryMilliseconds = 50;

/// A serial port that a simulated beltpack is connected to, whatever its number. When the device
/// vanishes it behaves as a real port does: nothing passes either way until `RestoreDevice` finds
/// the device again.
class DemoSerialPort : public platform::SerialPort {
 public:
  /// The timer drives the delivery: at each tick, what is due by the clock's tick count becomes
  /// waiting input. It is switched on and off with the port.
  DemoSerialPort(Beltpack& beltpack, const platform::Clock& clock, platform::Timer& delivery);
  ~DemoSerialPort() override;
  DemoSerialPort(const DemoSerialPort&) = delete;
  DemoSerialPort& operator=(const DemoSerialPort&) = delete;

  void SetPortNumber(std::int16_t portNumber) override { portNumber_ = portNumber; }
  std::int16_t PortNumber() const override { return portNumber_; }

  /// Accepts only "RATE,n,8,1", at any rate; any other text is a port fault.
  void SetSettings(std::string_view settings) override;
  std::string Settings() const override { return platform::PortSettings(rate_); }

  /// Opening is a port fault while the beltpack is away.
  void SetOpen(bool open) override;
  bool IsOpen() const override { return isOpen_; }
  void SetBreak(bool asserted) override { isBreak_ = asserted; }
  bool IsBreak() const override { return isBreak_; }
  std::size_t InputCount() const override { return input_.size(); }
  void DiscardInput() override;
  std::string Input(std::size_t most) override;
  void Output(std::string_view text) override;

  /// The beltpack takes everything at once, so there is never anything to discard.
  void DiscardOutput() override {}
  void RestoreDevice() override;
  void SetReceiveNotification(std::function<void()> notification) override {
    notification_ = std::move(notification);
  }

 private:
  void Deliver();
  void CollectDue();

  Beltpack& beltpack_;
  const platform::Clock& clock_;
  platform::Timer& delivery_;
  std::function<void()> notification_;
  std::int16_t portNumber_ = 1;
  std::int32_t rate_ = platform::kUsualRate;
  bool isOpen_ = false;
  bool isBreak_ = false;
  bool isDeviceGone_ = false;
  /// Bytes that are not delivered yet, and bytes that are delivered and not read yet.
  std::string arrived_;
  std::string input_;
};

}  // namespace kelvara::sim
