#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace kelvara::platform {

/// The ports that the user can choose from are COM1 to this one.
inline constexpr std::int16_t kLastComPort = 12;

/// The serial port object `MSComm1`. It is opened exclusively, without flow control, and the
/// control lines are left as opening sets them.
class SerialPort {
 public:
  virtual ~SerialPort() = default;

  /// The port number, 1 to 12, that the next opening uses.
  virtual void SetPortNumber(std::int16_t portNumber) = 0;
  virtual std::int16_t PortNumber() const = 0;

  /// The settings text, "19200,n,8,1". It may be set while the port is open; a text that the port
  /// cannot take is a port fault.
  virtual void SetSettings(std::string_view settings) = 0;
  virtual std::string Settings() const = 0;

  /// Opens or closes. An opening that fails is a port fault whose text may be shown to the user.
  /// The port stays open, for the program, while its device is gone.
  virtual void SetOpen(bool open) = 0;
  virtual bool IsOpen() const = 0;

  /// Holds the transmit line in the break state, or releases it. Devices that cannot are not
  /// reported; the flag is the program's own.
  virtual void SetBreak(bool asserted) = 0;
  virtual bool IsBreak() const = 0;

  /// How many received characters are waiting.
  virtual std::size_t InputCount() const = 0;

  /// Discards all waiting input.
  virtual void DiscardInput() = 0;

  /// Takes the waiting characters, each a byte, up to the number given.
  virtual std::string Input(std::size_t most) = 0;

  /// Queues text for transmission and never waits.
  virtual void Output(std::string_view text) = 0;

  /// Drops queued text that the line has not taken.
  virtual void DiscardOutput() = 0;

  /// Tries, without a word, to bring back a device that vanished while the port was open.
  virtual void RestoreDevice() = 0;

  /// What to call, on the user-interface thread, when received characters are waiting.
  virtual void SetReceiveNotification(std::function<void()> notification) = 0;
};

}  // namespace kelvara::platform
