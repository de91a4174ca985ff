#include "platform/qt/QtClock.h"

#include <QDateTime>

namespace kelvara::qt {
namespace {

constexpr double kMillisecondsPerDay = platform::kSecondsPerDay * 1000.0;
constexpr double kNanosecondsPerMillisecond = 1e6;

}  // namespace

QtClock::QtClock(double speed) : speed_(speed), start_(MachineTime()) { sinceStart_.start(); }

platform::DateTime QtClock::Now() const { return start_ + Elapsed() / kMillisecondsPerDay; }

platform::DateTime QtClock::WallTime() const {
  // A clock with another speed continues from the time of its creation.
  return speed_ == 1.0 ? MachineTime() : Now();
}

std::int64_t QtClock::TickCount() const { return static_cast<std::int64_t>(Elapsed()); }

platform::DateTime QtClock::MachineTime() const {
  const qint64 milliseconds = QDateTime::currentMSecsSinceEpoch();
  const qint64 second = milliseconds / 1000;
  if (second != offsetSecond_) {
    offsetSecond_ = second;
    localOffset_ = qint64{QDateTime::fromMSecsSinceEpoch(milliseconds).offsetFromUtc()} * 1000;
  }
  return static_cast<double>(milliseconds + localOffset_) / kMillisecondsPerDay;
}

double QtClock::Elapsed() const {
  return static_cast<double>(sinceStart_.nsecsElapsed()) / kNanosecondsPerMillisecond * speed_;
}

}  // namespace kelvara::qt
