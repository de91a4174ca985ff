#pragma once

#include <QSerialPort>
#include <memory>

#include "platform/PortSettings.h"
#include "platform/SerialPort.h"
#include "ports/PortDevice.h"
#include "ports/PortTable.h"

namespace kelvara::ports {

/// The serial port of the machine: 8 data bits, no parity, 1 stop bit, no flow control.
///
/// A device that fails is closed at its first error, because it would go on reporting errors as
/// fast as the program can take them. The port stays open for the program: it has no input, output
/// goes nowhere, and settings and break flag wait for `RestoreDevice`.
///
/// The receive notification comes from the event loop, never out of another operation, and never
/// while an earlier one is still running: then it follows when that one returns. It is repeated as
/// long as characters are left of which the last one took some.
class QtSerialPort : public platform::SerialPort {
 public:
  /// Over a table that outlives the port; a port number is looked up at each opening.
  explicit QtSerialPort(const PortTable& ports);
  ~QtSerialPort() override;
  QtSerialPort(const QtSerialPort&) = delete;
  QtSerialPort& operator=(const QtSerialPort&) = delete;

  void SetPortNumber(std::int16_t portNumber) override { portNumber_ = portNumber; }
  std::int16_t PortNumber() const override { return portNumber_; }

  /// Takes "RATE,n,8,1" alone. After a fault the earlier settings still hold.
  void SetSettings(std::string_view settings) override;
  std::string Settings() const override;

  /// Opening an open port and closing a closed one do nothing. A closed port's break flag is off.
  void SetOpen(bool open) override;
  bool IsOpen() const override { return open_; }

  void SetBreak(bool asserted) override;
  bool IsBreak() const override { return break_; }

  std::size_t InputCount() const override;
  void DiscardInput() override;
  std::string Input(std::size_t most) override;

  /// What would not fit in a queue of 512 characters is dropped.
  void Output(std::string_view text) override;
  void DiscardOutput() override;

  /// Opens the device that the port was opened with, by the same name, with the port's settings and
  /// break flag.
  void RestoreDevice() override;

  void SetReceiveNotification(std::function<void()> notification) override;

  /// Whether the device of an open port is there.
  bool HasDevice() const { return lock_ != nullptr; }

  /// What the user is told of a port before it is chosen: the device it stands for and whether that
  /// can be opened; if not, why and what to do. Opens nothing. Why the last opening failed is told
  /// until the next one, where a look does not show it.
  std::string Describe(int port) const;

 private:
  void OpenDevice();
  [[noreturn]] void Refuse(const std::string& device, PortFinding finding);
  void CloseDevice();
  void TakeError(QSerialPort::SerialPortError error);
  void TakeArrival();
  void PostNotification();
  void Notify();

  const PortTable& ports_;
  std::int16_t portNumber_ = 1;
  std::int32_t rate_ = platform::kUsualRate;
  bool open_ = false;
  bool break_ = false;
  std::string deviceName_;
  // The device whose opening failed for a reason that no look shows, and the reason.
  std::string refusedDevice_;
  PortFinding refusal_;
  // Held exactly while the device is open.
  std::unique_ptr<PortLock> lock_;
  // What a device that failed had received and the program has not taken.
  std::string lastWords_;

  std::function<void()> notification_;
  bool notificationPosted_ = false;
  bool notifying_ = false;
  bool arrived_ = false;
  std::size_t charactersTaken_ = 0;

  // The last member: no signal of it finds a half destroyed port.
  QSerialPort device_;
};

}  // namespace kelvara::ports
