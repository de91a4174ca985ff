#pragma once

#include <functional>

namespace kelvara::platform {

/// A timer that ticks at a fixed interval while it is on.
class Timer {
 public:
  virtual ~Timer() = default;

  /// Switches the timer on. A timer that is already on is not restarted.
  virtual void SwitchOn() = 0;
  virtual void SwitchOff() = 0;
  virtual bool IsOn() const = 0;

  /// Sets what to call at each tick.
  virtual void SetTick(std::function<void()> tick) = 0;
};

}  // namespace kelvara::platform
