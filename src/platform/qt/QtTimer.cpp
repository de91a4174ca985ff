#include "platform/qt/QtTimer.h"

namespace kelvara::qt {

QtTimer::QtTimer(int milliseconds) : owned_(std::make_unique<QTimer>()), timer_(owned_.get()) {
  Prepare(milliseconds);
}

QtTimer::QtTimer(QTimer& timer, int milliseconds) : timer_(&timer) { Prepare(milliseconds); }

void QtTimer::Prepare(int milliseconds) {
  timer_->stop();
  timer_->setTimerType(Qt::PreciseTimer);
  timer_->setSingleShot(false);
  timer_->setInterval(milliseconds);
  QObject::connect(timer_, &QTimer::timeout, &context_, [this] { PostTick(); });
}

void QtTimer::SwitchOn() {
  if (timer_ != nullptr && !timer_->isActive()) {
    timer_->start();
  }
}

void QtTimer::SwitchOff() {
  if (timer_ != nullptr) {
    timer_->stop();
  }
  ++generation_;
  tickPosted_ = false;
}

bool QtTimer::IsOn() const { return timer_ != nullptr && timer_->isActive(); }

void QtTimer::PostTick() {
  // Qt does not fire a timer again until its timeout handler has returned, so a tick that asks the
  // user a question would stop the timer until the answer. The handler therefore only posts the
  // tick.
  if (tickPosted_) {
    return;
  }
  tickPosted_ = true;
  const auto deliver = [this, generation = generation_] {
    if (generation != generation_) {
      return;
    }
    tickPosted_ = false;
    if (IsOn() && tick_) {
      tick_();
    }
  };
  QMetaObject::invokeMethod(&context_, deliver, Qt::QueuedConnection);
}

}  // namespace kelvara::qt
