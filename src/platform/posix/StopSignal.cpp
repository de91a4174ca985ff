#include "platform/posix/StopSignal.h"

#include <csignal>
#include <utility>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#endif

namespace kelvara::posix {
namespace {

volatile std::sig_atomic_t stopWanted = 0;

#ifdef Q_OS_UNIX

/// The ends of a pipe: a signal handler may do no more than write to it, and the event loop wakes
/// up.
std::array<int, 2> wakeUp{-1, -1};

void WakeUp() {
  const int error = errno;
  // A pipe that is full wakes the loop up as well.
  [[maybe_unused]] const auto written = ::write(wakeUp[1], "", 1);
  errno = error;
}

bool OpenWakeUp() {
  if (::pipe(wakeUp.data()) != 0) {
    return false;
  }
  for (const int end : wakeUp) {
    ::fcntl(end, F_SETFL, O_NONBLOCK);
    ::fcntl(end, F_SETFD, FD_CLOEXEC);
  }
  return true;
}

#else

constexpr int kLookMilliseconds = 50;

void WakeUp() {}

#endif

void WantStop(int signal) {
  if (stopWanted != 0) {
    std::signal(signal, SIG_DFL);
    std::raise(signal);
    return;
  }
  stopWanted = 1;
  WakeUp();
}

}  // namespace

StopSignal::StopSignal(std::function<void()> stop) {
  stopWanted = 0;
#ifdef Q_OS_UNIX
  if (OpenWakeUp()) {
    look_ = std::make_unique<QSocketNotifier>(wakeUp[0], QSocketNotifier::Read);
    QObject::connect(look_.get(), &QSocketNotifier::activated, look_.get(),
                     [this, stop = std::move(stop)] {
                       look_->setEnabled(false);
                       stop();
                     });
  }
#else
  QObject::connect(&look_, &QTimer::timeout, &look_, [this, stop = std::move(stop)] {
    if (stopWanted != 0) {
      look_.stop();
      stop();
    }
  });
  look_.start(kLookMilliseconds);
#endif
  caughtSignals_.emplace(WantStop);
}

StopSignal::~StopSignal() {
  caughtSignals_.reset();
#ifdef Q_OS_UNIX
  look_.reset();
  for (int& end : wakeUp) {
    if (end >= 0) {
      ::close(end);
      end = -1;
    }
  }
#endif
}

}  // namespace kelvara::posix
