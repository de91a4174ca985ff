#pragma once

#include <array>
#include <csignal>

namespace kelvara::posix {

/// Hands the signals that ask a program to end (Ctrl+C, the request to end, a hang-up of the
/// terminal) to a handler as long as it lives. One that the program was told to ignore when it was
/// started, as `nohup` does, goes on being ignored.
class CaughtSignals {
 public:
  using Handler = void (*)(int signal);

  explicit CaughtSignals(Handler handler);
  ~CaughtSignals();
  CaughtSignals(const CaughtSignals&) = delete;
  CaughtSignals& operator=(const CaughtSignals&) = delete;

 private:
#ifdef SIGHUP
  static constexpr std::array kSignals{SIGINT, SIGTERM, SIGHUP};
#else
  static constexpr std::array kSignals{SIGINT, SIGTERM};
#endif

  std::array<Handler, kSignals.size()> before_{};
};

}  // namespace kelvara::posix
