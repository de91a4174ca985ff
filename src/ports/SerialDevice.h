#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "ports/PortDevice.h"

namespace kelvara::ports {

/// A serial device of the system, with 8 data bits, no parity, 1 stop bit and no flow control. No
/// operation waits for the line.
///
/// While it is closed, it has no input and ignores every other operation.
class SerialDevice {
 public:
  /// Makes a closed device. `arrived` is called when input has arrived. `failed` is called, from
  /// the event loop or within any operation, when the open device has failed; it must close the
  /// device, which still has the input that arrived before.
  static std::unique_ptr<SerialDevice> Create(std::function<void()> arrived,
                                              std::function<void()> failed);
  virtual ~SerialDevice() = default;

  /// Opens a device at a rate in baud. `Free` if it is open now, otherwise why not. `failed` is not
  /// called.
  virtual PortFinding Open(const std::string& device, std::int32_t rate) = 0;

  /// Closes the device and drops all input and output.
  virtual void Close() = 0;

  /// Changes the rate of the open device. If the device refuses it, returns why and keeps the
  /// earlier rate; otherwise returns an empty text.
  virtual std::string SetRate(std::int32_t rate) = 0;

  /// Holds the transmit line in the break state, or releases it. A device that cannot do this is
  /// not reported.
  virtual void SetBreak(bool asserted) = 0;

  /// How many received characters wait here: at most `platform::kInputBufferBytes`.
  virtual std::size_t InputCount() const = 0;

  /// Removes and returns up to `most` of them.
  virtual std::string Input(std::size_t most) = 0;

  /// Discards all input, including what waits in the system.
  virtual void DiscardInput() = 0;

  /// How many characters are queued for transmission.
  virtual std::size_t OutputCount() const = 0;

  /// Queues text for transmission.
  virtual void Output(std::string_view text) = 0;

  /// Discards queued text that has not been sent yet.
  virtual void DiscardOutput() = 0;
};

}  // namespace kelvara::ports
