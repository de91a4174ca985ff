#pragma once

#include <QElapsedTimer>

#include "platform/Clock.h"

namespace kelvara::qt {

/// The machine's clocks: a monotonic one for intervals, the local wall time for display.
class QtClock : public platform::Clock {
 public:
  /// `speed` is the ratio of the clock's rate to real time.
  explicit QtClock(double speed = 1.0);

  platform::DateTime Now() const override;
  platform::DateTime WallTime() const override;
  std::int64_t UtcMilliseconds() const override;
  platform::DateTime LocalTime(std::int64_t utcMilliseconds) const override;
  std::int64_t TickCount() const override;

 private:
  /// Milliseconds since the clock was created, at its own speed.
  double Elapsed() const;

  double speed_;
  // The system reads its time zone at every query. Caching the offset limits a busy log to one
  // query a second.
  mutable std::int64_t offsetSecond_ = -1;
  mutable std::int64_t localOffset_ = 0;
  QElapsedTimer sinceStart_;
  std::int64_t utcStart_;
  platform::DateTime start_;
};

}  // namespace kelvara::qt
