#pragma once

#include <cstdint>
#include <optional>

#include "platform/Clock.h"

namespace kelvara::sessions {

/// A clock for the replay of a trace: the wall time is that of the trace where it tells one, and
/// the machine's otherwise.
class TraceClock : public platform::Clock {
 public:
  /// The machine's clock must outlive this one.
  explicit TraceClock(const platform::Clock& machineClock) : machineClock_(machineClock) {}

  /// Sets the time of the trace, in milliseconds since the start of 1970 in UTC; empty where it
  /// tells none.
  void SetTraceTime(std::optional<std::int64_t> utcMilliseconds) { traceTime_ = utcMilliseconds; }

  platform::DateTime Now() const override { return machineClock_.Now(); }
  platform::DateTime WallTime() const override { return LocalTime(UtcMilliseconds()); }
  std::int64_t UtcMilliseconds() const override {
    return traceTime_.value_or(machineClock_.UtcMilliseconds());
  }
  platform::DateTime LocalTime(std::int64_t utcMilliseconds) const override {
    return machineClock_.LocalTime(utcMilliseconds);
  }
  std::int64_t TickCount() const override { return machineClock_.TickCount(); }

 private:
  const platform::Clock& machineClock_;
  std::optional<std::int64_t> traceTime_;
};

}  // namespace kelvara::sessions
