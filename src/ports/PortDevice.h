#pragma once

#include <cstdint>
#include <string>

namespace kelvara::ports {

/// Whether a device can be opened as a serial port and, if not, why.
enum class PortState {
  Free,           ///< It can be opened.
  Absent,         ///< Nothing has that name.
  NotAPort,       ///< Something other than a serial port has that name.
  NoPermission,   ///< The user may not open it.
  HeldHere,       ///< This program has it open.
  HeldElsewhere,  ///< Another program has it open exclusively.
  LockLeft,       ///< A program that has ended left a lock file that this user may not remove.
  Dead,           ///< The system knows the name, but no hardware responds.
};

/// The result of examining a device.
struct PortFinding {
  PortState state = PortState::Absent;
  /// Why it cannot be opened, for the user; empty if it can.
  std::string reason;

  bool IsPresent() const { return state != PortState::Absent; }

  /// What to tell a user who is about to choose the device: that it can be opened, or why not and
  /// what to do.
  std::string Description() const;
};

/// A state with its reason. `detail` is, for `HeldElsewhere`, the program that has the device open,
/// or empty if it is unknown; for `LockLeft`, the lock file.
PortFinding FindingOf(PortState state, const std::string& device, const std::string& detail = {});

/// Finds out whether a device can be opened, and why not, without opening it: opening changes the
/// control lines, and connected equipment may take that for a command. Two conditions show only on
/// opening: that no hardware is present, and that a program which left neither a lock file nor a
/// lock on the device has it in exclusive mode. On Windows a third one does: that the device is not
/// a serial port.
PortFinding LookAt(const std::string& device);

/// Resolves all links in a device's name. A name that leads nowhere is returned unchanged. On
/// Windows, the short name in capitals: "COM10" for "\\.\com10".
std::string FollowLinks(const std::string& device);

/// An exclusive lock on a device. The system's own exclusive mode does not bind the superuser, and
/// lock files bind only programs that check them, so an advisory lock on the device itself is held
/// while the port is open. It is acquired before anything on the line changes: a running session is
/// not disturbed. Windows opens a port only once; there the lock binds nobody else, but tells other
/// instances of this program who has the port.
class PortLock {
 public:
  /// Tries to lock the device, which must not be a link.
  explicit PortLock(const std::string& device) : finding_(Take(device)) {}
  ~PortLock();
  PortLock(const PortLock&) = delete;
  PortLock& operator=(const PortLock&) = delete;

  /// `Free` if the lock was acquired, otherwise why not.
  const PortFinding& Finding() const { return finding_; }

 private:
  PortFinding Take(const std::string& device);

  std::intptr_t handle_ = -1;
  PortFinding finding_;
};

}  // namespace kelvara::ports
