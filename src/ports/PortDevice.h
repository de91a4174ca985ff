#pragma once

#include <string>

namespace kelvara::ports {

/// How a device stands to a program that wants to open it as its serial port.
enum class PortState {
  Free,           ///< It can be opened.
  Absent,         ///< There is nothing of that name.
  NotAPort,       ///< Something else than a serial port has that name.
  NoPermission,   ///< The user may not open it.
  HeldHere,       ///< This program has it open.
  HeldElsewhere,  ///< Another program has it open for itself alone.
  LockLeft,       ///< A program that is gone left a lock file that this user may not remove.
  Dead,           ///< The system knows the name, but no hardware answers behind it.
};

/// What a look at a device shows.
struct PortFinding {
  PortState state = PortState::Absent;
  /// Why it cannot be opened, for the user; empty when it can.
  std::string reason;

  bool IsPresent() const { return state != PortState::Absent; }

  /// What the user is told before choosing the device: that it can be opened, or why not and what
  /// to do.
  std::string Description() const;
};

/// A state with its reason. `detail`: of `HeldElsewhere` the program that has the device open, or
/// empty where it is not known; of `LockLeft` the lock file.
PortFinding FindingOf(PortState state, const std::string& device, const std::string& detail = {});

/// Finds out whether a device can be opened, and why not, without opening it: opening moves the
/// control lines, and what is connected may take that for a command. Two things only an opening
/// shows: that no hardware is behind a name, and that a program has the device in exclusive mode
/// that left neither a lock file nor a lock on the device itself.
PortFinding LookAt(const std::string& device);

/// The device that a name stands for after all links, or the name itself where that leads nowhere.
std::string FollowLinks(const std::string& device);

/// The exclusive hold on a device. The system's own exclusive mode does not bind the superuser, and
/// the usual lock files bind only who looks for them; so an advisory lock on the device itself is
/// held as long as the port is open, and asked for before anything on the line is touched: a
/// session that is running on it is not disturbed.
class PortLock {
 public:
  /// Tries to take the device (not a link to it).
  explicit PortLock(const std::string& device) : finding_(Take(device)) {}
  ~PortLock();
  PortLock(const PortLock&) = delete;
  PortLock& operator=(const PortLock&) = delete;

  /// `Free` when it is taken, else why not.
  const PortFinding& Finding() const { return finding_; }

 private:
  PortFinding Take(const std::string& device);

  int handle_ = -1;
  PortFinding finding_;
};

}  // namespace kelvara::ports
