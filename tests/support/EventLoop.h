#pragma once

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>
#include <functional>

namespace kelvara::test {

/// Lets events run for the given time.
inline void RunEvents(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
  loop.exec();
}

/// Lets events run until the condition holds. False if it does not within five seconds.
inline bool RunUntil(const std::function<bool()>& condition) {
  const QDeadlineTimer deadline(5000);
  while (!condition()) {
    if (deadline.hasExpired()) {
      return false;
    }
    RunEvents(5);
  }
  return true;
}

}  // namespace kelvara::test
