#pragma once

#include <QElapsedTimer>

#include "platform/Clock.h"

namespace kelvara::qt {

/// The machine's clocks: a monotonic one for spans, the local wall time for the user.
class QtClock : public platform::Clock {
 public:
  /// `speed` is how many times as fast as real time the clock runs, from now on.
  explicit QtClock(double speed = 1.0);

  platform::DateTime Now() const override;
  platform::DateTime WallTime() const override;
  std::int64_t TickCount() const override;

 private:
  /// The local wall time as the machine has it.
  platform::DateTime MachineTime() const;

  /// Milliseconds since the clock was made, in its own time.
  double Elapsed() const;

  double speed_;
  // The system reads its time zone anew at each question: a busy log asks once a second.
  mutable std::int64_t offsetSecond_ = -1;
  mutable std::int64_t localOffset_ = 0;
  QElapsedTimer sinceStart_;
  platform::DateTime start_;
};

}  // namespace kelvara::qt
