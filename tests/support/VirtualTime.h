#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <vector>

#include "platform/Timer.h"
#include "support/Doubles.h"

namespace kelvara::test {

/// Time that passes only when the test says so, with timers that tick meanwhile.
class VirtualTime {
 public:
  class Timer : public platform::Timer {
   public:
    Timer(VirtualTime& time, int milliseconds) : time_(time), milliseconds_(milliseconds) {
      time_.timers_.push_back(this);
    }
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;
    ~Timer() override { std::erase(time_.timers_, this); }

    void SwitchOn() override {
      if (!on_) {
        on_ = true;
        due_ = time_.milliseconds_ + milliseconds_;
      }
    }
    void SwitchOff() override { on_ = false; }
    bool IsOn() const override { return on_; }
    void SetTick(std::function<void()> tick) override { tick_ = std::move(tick); }

   private:
    friend class VirtualTime;

    void Tick() {
      due_ += milliseconds_;
      if (tick_) {
        tick_();
      }
    }

    VirtualTime& time_;
    int milliseconds_;
    bool on_ = false;
    std::int64_t due_ = 0;
    std::function<void()> tick_;
  };

  explicit VirtualTime(ManualClock& clock) : clock_(clock), start_(clock.now) {}

  /// Lets time pass. Each timer ticks when it is due.
  void Pass(std::int64_t milliseconds) {
    const std::int64_t end = milliseconds_ + milliseconds;
    while (Timer* const next = NextDue(end)) {
      MoveTo(next->due_);
      next->Tick();
    }
    MoveTo(end);
  }

  std::int64_t Milliseconds() const { return milliseconds_; }

  /// How far the wall clock is set ahead, in days.
  platform::DateTime wallAhead = 0.0;

 private:
  Timer* NextDue(std::int64_t end) const {
    Timer* next = nullptr;
    for (Timer* const timer : timers_) {
      if (timer->on_ && timer->due_ <= end && (next == nullptr || timer->due_ < next->due_)) {
        next = timer;
      }
    }
    return next;
  }

  void MoveTo(std::int64_t milliseconds) {
    // A tick may itself have let time pass.
    milliseconds_ = std::max(milliseconds_, milliseconds);
    clock_.ticks = milliseconds_;
    clock_.now = start_ + platform::Span(static_cast<double>(milliseconds_) / 1000.0);
    clock_.wall = clock_.now + wallAhead;
  }

  ManualClock& clock_;
  platform::DateTime start_;
  std::int64_t milliseconds_ = 0;
  std::vector<Timer*> timers_;
};

}  // namespace kelvara::test
