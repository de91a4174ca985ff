#include "platform/posix/CaughtSignals.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>

namespace kelvara::posix {
namespace {

volatile std::sig_atomic_t isCaught = 0;

/// The pipe that the event loop waits on. Writing to it is one of the few things that a signal
/// handler may do.
std::array<int, 2> wakeUp{-1, -1};

void Catch(int signal) {
  if (isCaught != 0) {
    std::signal(signal, SIG_DFL);
    std::raise(signal);
    return;
  }
  isCaught = 1;
  const int error = errno;
  [[maybe_unused]] const auto written = ::write(wakeUp[1], "", 1);
  errno = error;
}

}  // namespace

CaughtSignals::CaughtSignals() {
  if (::pipe(wakeUp.data()) != 0) {
    wakeUp = {-1, -1};
    return;
  }
  for (const int end : wakeUp) {
    ::fcntl(end, F_SETFL, O_NONBLOCK);
    ::fcntl(end, F_SETFD, FD_CLOEXEC);
  }
  isCaught = 0;
  for (std::size_t index = 0; index < kSignals.size(); ++index) {
    before_.at(index) = std::signal(kSignals.at(index), SIG_IGN);
    if (before_.at(index) != SIG_IGN) {
      std::signal(kSignals.at(index), Catch);
    }
  }
}

CaughtSignals::~CaughtSignals() {
  if (Descriptor() < 0) {
    return;
  }
  for (std::size_t index = 0; index < kSignals.size(); ++index) {
    std::signal(kSignals.at(index), before_.at(index));
  }
  for (int& end : wakeUp) {
    ::close(end);
    end = -1;
  }
}

int CaughtSignals::Descriptor() const { return wakeUp[0]; }

}  // namespace kelvara::posix
