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
/// here, its far end is a device with a name and, on request, a symbolic link to it. The far end
/// neither echoes nor changes anything.
///
/// Like a serial line, it is reset when the last program closes the device: exclusive mode, line
/// settings, stopped output, unread input and a lock file are gone, even if that program was
/// killed. A plain pseudo-terminal keeps them, and an exclusive mode left by a dead program locks
/// out every ordinary user. A terminal whose name is taken by another user's lock file is not used.
class PseudoTerminal {
 public:
  /// Opens nothing yet. An empty path means no link.
  explicit PseudoTerminal(std::string linkPath = {}) : linkPath_(std::move(linkPath)) {}
  ~PseudoTerminal() { Close(); }
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  /// Makes the device and the link; does nothing while open. A terminal that the system refuses is
  /// a port fault. A symbolic link at the link's path that leads to a pseudo-terminal or nowhere is
  /// replaced; anything else there is left alone and is a file fault, as is a link that cannot be
  /// made.
  void Open();

  /// Removes the link and the device, as if the cable were pulled: a program that has the device
  /// open sees it hang up.
  void Close();

  bool IsOpen() const { return near_ >= 0; }

  /// The device's name; empty while closed.
  const std::string& DeviceName() const { return deviceName_; }

  /// The near end, for waiting for input; -1 while closed.
  int Descriptor() const { return near_; }

  /// Becomes readable when a program has opened or closed the device, which `Read` then handles; -1
  /// while closed.
  int HandlesDescriptor() const { return handles_.Descriptor(); }

  /// Bytes that have been written to the device, up to a few thousand at a time; none when there
  /// are none. Resets the device when the last program has closed it. Never waits.
  std::string Read();

  /// Writes what the device has space for and never waits; the rest is lost, as on a line that
  /// nobody reads. Returns how many bytes the device took.
  std::size_t Write(std::string_view bytes);

 private:
  void OpenNearEnd();
  void OpenEnds();
  bool ResetDevice();
  void MakeLink();
  void RemoveLink();
  bool IsLinkOurs() const;

  std::string linkPath_;
  std::string deviceName_;
  int near_ = -1;
  /// Held open so that the near end sees no hang-up while no other program has the device open, and
  /// because an exclusive device can be freed only through a handle that is open already.
  int far_ = -1;
  DeviceHandles handles_;
  termios lineSettings_{};
  bool hasLink_ = false;
};

/// Passes waiting bytes between a beltpack and its terminal, which is open only while the beltpack
/// is present. True if the terminal has just been opened again. A terminal that cannot be opened is
/// a fault as in `PseudoTerminal::Open`.
bool PassOn(Beltpack& beltpack, PseudoTerminal& terminal, std::int64_t nowMs);

}  // namespace kelvara::sim
