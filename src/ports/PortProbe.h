#pragma once

#include <string>

#include "ports/PortLock.h"

namespace kelvara::ports {

/// What a look at a device shows.
struct PortFinding {
  PortState state = PortState::Absent;
  /// Why it cannot be opened, for the user; empty when it can.
  std::string reason;

  bool IsPresent() const { return state != PortState::Absent; }
};

/// Finds out whether a device can be opened, and why not. A session that runs on it, this program's
/// or another's, is not disturbed; a device that nobody has open is opened for a moment, which
/// raises its control lines as every opening does.
PortFinding ProbePort(const std::string& device);

/// Why a device in this state cannot be opened, with the group that may or the program that has it
/// where these can be told.
std::string ReasonOf(PortState state, const std::string& device);

}  // namespace kelvara::ports
