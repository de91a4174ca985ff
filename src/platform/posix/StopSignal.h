#pragma once

#include <QSocketNotifier>
#include <functional>

#include "platform/posix/CaughtSignals.h"

namespace kelvara::posix {

/// Calls `stop` once, from Qt's event loop, when a signal asks the program to end.
class StopSignal {
 public:
  explicit StopSignal(std::function<void()> stop);

 private:
  CaughtSignals caughtSignals_;
  QSocketNotifier notifier_{caughtSignals_.Descriptor(), QSocketNotifier::Read};
};

}  // namespace kelvara::posix
