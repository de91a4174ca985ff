#include "cli/StopSignal.h"

#include <csignal>
#include <utility>

namespace kelvara::cli {
namespace {

constexpr int kLookMilliseconds = 50;

/// A signal handler may do no more than this; a timer looks at it.
volatile std::sig_atomic_t stopWanted = 0;

void WantStop(int /*signal*/) { stopWanted = 1; }

#ifdef SIGHUP
constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};
#else
constexpr int kSignals[] = {SIGINT, SIGTERM};
#endif

}  // namespace

StopSignal::StopSignal(std::function<void()> stop) {
  stopWanted = 0;
  for (const int signal : kSignals) {
    std::signal(signal, WantStop);
  }
  QObject::connect(&look_, &QTimer::timeout, [stop = std::move(stop)] {
    if (stopWanted != 0) {
      stop();
    }
  });
  look_.start(kLookMilliseconds);
}

StopSignal::~StopSignal() {
  for (const int signal : kSignals) {
    std::signal(signal, SIG_DFL);
  }
}

}  // namespace kelvara::cli
