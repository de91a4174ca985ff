#pragma once

#include <QSocketNotifier>
#include <functional>

#include "platform/posix/CaughtSignals.h"

namespace kelvara::posix {

/// The signals that ask a program to end, told once as an ordinary event of Qt's event loop.
class StopSignal {
 public:
  explicit StopSignal(std::function<void()> stop);

 private:
  CaughtSignals caughtSignals_;
  QSocketNotifier notifier_{caughtSignals_.Descriptor(), QSocketNotifier::Read};
};

}  // namespace kelvara::posix
