#pragma once

#include <termios.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "sim/Beltpack.h"
#include "sim/DeviceHandles.h"

namespace kelvara::sim {

/// A pseudo-terminal that other programs open as a serial port: its near end is read and written
/// here, its far end is a device with a name, and with a symbolic link to it if one is asked for.
/// The far end neither echoes nor changes anything.
///
/// Like a serial line, it is fresh for the next program when no program has the device open any
/// more: exclusive mode, line settings, a stopped output, input that was not read and a lock file
/// are gone, even if the last program was killed. A pseudo-terminal by itself keeps them, and an
/// exclusive mode whose program is dead locks out every ordinary user. A terminal for whose name
/// another user has left a lock file is not used.
class PseudoTerminal {
 public:
  /// Opens nothing yet. An empty path means no link.
  explicit PseudoTerminal(std::string linkPath = {}) : linkPath_(std::move(linkPath)) {}
  ~PseudoTerminal() { Close(); }
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  /// Makes the device appear, and the link; one that is open stays as it is. A terminal that the
  /// system refuses is a port fault. An older symbolic link at the link's path is replaced;
  /// anything else that stands there is left alone and is a file fault, as is a link that cannot be
  /// made.
  void Open();

  /// Makes link and device vanish, as if the cable was pulled: who has the device open sees it hang
  /// up.
  void Close();

  bool IsOpen() const { return near_ >= 0; }

  /// The device's name; empty while closed.
  const std::string& DeviceName() const { return deviceName_; }

  /// The near end, to wait for input with; -1 while closed.
  int Descriptor() const { return near_; }

  /// Becomes readable when a program has opened or closed the device, for `Read` to take note of;
  /// -1 while closed.
  int HandlesDescriptor() const { return handles_.Descriptor(); }

  /// Bytes that have been written to the device, up to a few thousand at a time; none when there
  /// are none. Makes the device fresh when the last program has left it. Never waits.
  std::string Read();

  /// Writes what the device has room for and never waits; what it has no room for is lost, as on a
  /// line whose end nobody reads. Returns how many bytes the device took.
  std::size_t Write(std::string_view bytes);

 private:
  void OpenNearEnd();
  void OpenEnds();
  bool MakeFresh();
  void MakeLink();
  void RemoveLink();
  bool IsLinkOurs() const;

  std::string linkPath_;
  std::string deviceName_;
  int near_ = -1;
  /// Held so that the near end sees no hang-up while no other program has the device open, and
  /// because an exclusive device can be freed only through a handle that is open already.
  int far_ = -1;
  DeviceHandles handles_;
  termios lineSettings_{};
  bool hasLink_ = false;
};

/// Passes on what waits by now between a beltpack and the terminal that it is connected to, which
/// is open just while the beltpack is present. True when the terminal has just come back. Faults as
/// the terminal's when it cannot be brought back.
bool PassOn(Beltpack& beltpack, PseudoTerminal& terminal, std::int64_t nowMs);

}  // namespace kelvara::sim
