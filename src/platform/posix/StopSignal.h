#pragma once

#include <QtGlobal>
#include <functional>
#include <optional>

#ifdef Q_OS_UNIX
#include <QSocketNotifier>
#include <memory>
#else
#include <QTimer>
#endif

#include "platform/posix/CaughtSignals.h"

namespace kelvara::posix {

/// The signals that ask a program to end, told as an ordinary event. A second one ends the program
/// at once, whatever it is doing. One lives at a time.
class StopSignal {
 public:
  explicit StopSignal(std::function<void()> stop);
  ~StopSignal();
  StopSignal(const StopSignal&) = delete;
  StopSignal& operator=(const StopSignal&) = delete;

 private:
#ifdef Q_OS_UNIX
  std::unique_ptr<QSocketNotifier> look_;
#else
  QTimer look_;
#endif
  std::optional<CaughtSignals> caughtSignals_;
};

}  // namespace kelvara::posix
