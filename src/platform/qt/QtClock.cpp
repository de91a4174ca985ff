#include "platform/qt/QtClock.h"

#include <QDateTime>

namespace kelvara::qt {
namespace {

constexpr double kMillisecondsPerDay = platform::kSecondsPerDay * 1000.0;
constexpr double kNanosecondsPerMillisecond = 1e6;

}  // namespace

QtClock::QtClock(double speed)
    : speed_(speed), utcStart_(QDateTime::currentMSecsSinceEpoch()), start_(LocalTime(utcStart_)) {
  sinceStart_.start();
}

platform::DateTime QtClock::Now() const { return start_ + Elapsed() / kMillisecondsPerDay; }

platform::DateTime QtClock::WallTime() const {
  // A clock with another speed continues from the time of its creation.
  return speed_ == 1.0 ? LocalTime(UtcMilliseconds()) : Now();
}

std::int64_t QtClock::UtcMilliseconds() const {
  return speed_ == 1.0 ? QDateTime::currentMSecsSinceEpoch() : utcStart_ + TickCount();
}

std::int64_t QtClock::TickCount() const { return static_cast<std::int64_t>(Elapsed()); }

platform::DateTime QtClock::LocalTime(std::int64_t utcMilliseconds) const {
  const qint64 second = utcMilliseconds / 1000;
  if (second != offsetSecond_) {
    offsetSecond_ = second;
    localOffset_ = qint64{QDateTime::fromMSecsSinceEpoch(utcMilliseconds).offsetFromUtc()} * 1000;
  }
  return static_cast<double>(utcMilliseconds + localOffset_) / kMillisecondsPerDay;
}

double QtClock::Elapsed() const {
  return static_cast<double>(sinceStart_.nsecsElapsed()) / kNanosecondsPerMillisecond * speed_;
}

}  // namespace kelvara::qt
