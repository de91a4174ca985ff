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
  Dead,           ///< The system knows the name, but no hardware answers behind it.
};

/// The exclusive hold on a device. The system's own exclusive mode does not bind the superuser, and
/// the usual lock files bind only who looks for them; so an advisory lock on the device itself is
/// held as long as the port is open, and asked for before anything on the line is touched: a
/// session that is running on it is not disturbed. On Windows the system does all that.
class PortLock {
 public:
  /// Tries to take the device (not a link to it).
  explicit PortLock(const std::string& device);
  ~PortLock();
  PortLock(const PortLock&) = delete;
  PortLock& operator=(const PortLock&) = delete;

  /// `Free` when it is taken, else why not.
  PortState State() const { return state_; }

 private:
  PortState Take(const std::string& device);

  int handle_ = -1;
  PortState state_;
};

/// The device that a name stands for after all links, or the name itself where that leads nowhere.
std::string FollowLinks(const std::string& device);

}  // namespace kelvara::ports
