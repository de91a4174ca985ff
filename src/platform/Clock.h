#pragma once

#include <cstdint>

#include "platform/DateTime.h"

namespace kelvara::platform {

/// The machine's clock. It is abstract so that tests can set the time.
class Clock {
 public:
  virtual ~Clock() = default;

  /// The time for measuring intervals. It never runs backwards: setting the machine's clock during
  /// a session must not look like a lost link.
  virtual DateTime Now() const = 0;

  /// The local wall time, for display to the user.
  virtual DateTime WallTime() const = 0;

  /// The wall time in milliseconds since the start of 1970 in UTC.
  virtual std::int64_t UtcMilliseconds() const = 0;

  /// The local wall time at a moment in milliseconds since the start of 1970 in UTC.
  virtual DateTime LocalTime(std::int64_t utcMilliseconds) const = 0;

  /// Milliseconds since an arbitrary fixed moment. It never runs backwards.
  virtual std::int64_t TickCount() const = 0;
};

}  // namespace kelvara::platform
