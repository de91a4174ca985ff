#pragma once

#include <cstdint>

#include "platform/DateTime.h"

namespace kelvara::platform {

/// The machine's clock, so that tests can move time by hand.
class Clock {
 public:
  virtual ~Clock() = default;

  /// The time that spans are measured with. It never runs backwards: a clock set during a session
  /// must not fake a lost link.
  virtual DateTime Now() const = 0;

  /// The local wall time, as the user is to read it.
  virtual DateTime WallTime() const = 0;

  /// Milliseconds since some fixed moment, never running backwards.
  virtual std::int64_t TickCount() const = 0;
};

}  // namespace kelvara::platform
