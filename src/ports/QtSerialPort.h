#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <string>

#include "platform/PortSettings.h"
#include "platform/SerialPort.h"
#include "ports/AdapterName.h"
#include "ports/PortDevice.h"
#include "ports/PortTable.h"
#include "ports/SerialDevice.h"

namespace kelvara::ports {

/// The machine's serial port: 8 data bits, no parity, 1 stop bit, no flow control.
///
/// A device that fails is closed at its first error, because it would keep reporting errors as fast
/// as the program can handle them. The port still counts as open: it has no input, output is
/// dropped, and settings and break flag are kept for `RestoreDevice`.
///
/// The receive notification comes from the event loop, never from within another operation.
/// Notifications are not nested: one that becomes due during another follows when that returns. It
/// repeats while characters remain, if the last one consumed some or more have arrived.
class QtSerialPort : public platform::SerialPort {
 public:
  /// Returns what to call the adapter behind a device, or an empty text.
  using AdapterNaming = std::function<std::string(const std::string& device)>;

  /// The table must exist as long as the port. A port number is looked up at each opening.
  explicit QtSerialPort(const PortTable& ports, AdapterNaming adapterName = AdapterName);
  ~QtSerialPort() override;
  QtSerialPort(const QtSerialPort&) = delete;
  QtSerialPort& operator=(const QtSerialPort&) = delete;

  void SetPortNumber(std::int16_t portNumber) override { portNumber_ = portNumber; }
  std::int16_t PortNumber() const override { return portNumber_; }

  /// Accepts only "RATE,n,8,1". After a fault the earlier settings remain.
  void SetSettings(std::string_view settings) override;
  std::string Settings() const override;

  /// Opening an open port or closing a closed one does nothing. Closing clears the break flag.
  void SetOpen(bool open) override;
  bool IsOpen() const override { return open_; }

  void SetBreak(bool asserted) override;
  bool IsBreak() const override { return break_; }

  std::size_t InputCount() const override;
  void DiscardInput() override;
  std::string Input(std::size_t most) override;

  /// Text that does not fit in a queue of 512 characters is dropped.
  void Output(std::string_view text) override;
  void DiscardOutput() override;

  /// Reopens the device that the port was opened with, by the same name, with the port's settings
  /// and break flag.
  void RestoreDevice() override;

  void SetReceiveNotification(std::function<void()> notification) override;

  /// Whether the port is open and its device is present.
  bool HasDevice() const { return lock_ != nullptr; }

  /// What to tell a user who is about to choose a port: its device, the adapter behind it, and
  /// whether the device can be opened; if not, why and what to do. Opens nothing. If the last
  /// opening failed for a reason that shows only on opening, this reason is given until the next
  /// opening.
  std::string Describe(int port) const;

  /// The adapter of the device behind a port, or "device" if its name is unknown; empty if the
  /// device is absent. Opens nothing.
  std::string PresentAdapter(int port) const;

 private:
  void OpenDevice();
  [[noreturn]] void Refuse(const std::string& device, PortFinding finding);
  void CloseDevice();
  void TakeFailure();
  void TakeArrival();
  void PostNotification();
  void Notify();

  const PortTable& ports_;
  AdapterNaming adapterName_;
  std::int16_t portNumber_ = 1;
  std::int32_t rate_ = platform::kUsualRate;
  bool open_ = false;
  bool break_ = false;
  std::string deviceName_;
  // The device whose opening failed for a reason that shows only on opening, and that reason.
  std::string refusedDevice_;
  PortFinding refusal_;
  // Held exactly while the device is open.
  std::unique_ptr<PortLock> lock_;
  // Input of a failed device that the program has not taken yet.
  std::string leftover_;

  std::function<void()> notification_;
  bool notificationPosted_ = false;
  bool notifying_ = false;
  bool arrived_ = false;
  std::size_t charactersTaken_ = 0;

  QObject notificationContext_;
  // The last member, so that nothing that it reports reaches a half destroyed port.
  std::unique_ptr<SerialDevice> device_;
};

}  // namespace kelvara::ports
