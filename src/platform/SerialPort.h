#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace kelvara::platform {

/// The highest port that the user can choose; the lowest is COM1.
inline constexpr std::int16_t kLastComPort = 12;

/// The serial port object `MSComm1`. It is opened exclusively and without flow control; the control
/// lines stay as opening sets them.
class SerialPort {
 public:
  virtual ~SerialPort() = default;

  /// The port number, 1 to 12, for the next opening.
  virtual void SetPortNumber(std::int16_t portNumber) = 0;
  virtual std::int16_t PortNumber() const = 0;

  /// The settings text, such as "19200,n,8,1". It may be set while the port is open. A text that
  /// the port cannot accept is a port fault.
  virtual void SetSettings(std::string_view settings) = 0;
  virtual std::string Settings() const = 0;

  /// Opens or closes the port. A failed opening is a port fault whose text may be shown to the
  /// user. A port whose device vanishes still counts as open.
  virtual void SetOpen(bool open) = 0;
  virtual bool IsOpen() const = 0;

  /// Holds the transmit line in the break state, or releases it. A device that does not support
  /// this is not reported; `IsBreak` returns the flag either way.
  virtual void SetBreak(bool asserted) = 0;
  virtual bool IsBreak() const = 0;

  /// How many received characters are waiting.
  virtual std::size_t InputCount() const = 0;

  /// Discards all waiting input.
  virtual void DiscardInput() = 0;

  /// Removes and returns up to `most` waiting characters, one byte each.
  virtual std::string Input(std::size_t most) = 0;

  /// Queues text for transmission and never waits.
  virtual void Output(std::string_view text) = 0;

  /// Discards queued text that has not been sent yet.
  virtual void DiscardOutput() = 0;

  /// Tries to reopen a device that vanished while the port was open. A failure is not reported.
  virtual void RestoreDevice() = 0;

  /// Sets what to call, on the user-interface thread, when received characters are waiting.
  virtual void SetReceiveNotification(std::function<void()> notification) = 0;
};

}  // namespace kelvara::platform
