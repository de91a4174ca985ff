#pragma once

#include <array>
#include <csignal>

namespace kelvara::posix {

/// Catches the signals that ask a program to end (Ctrl+C, the request to end, a hang-up of the
/// terminal) as long as it lives, for an event loop to wait for. A second one ends the program at
/// once, whatever it is doing. One that the program was told to ignore when it was started, as
/// `nohup` does, goes on being ignored. One object lives at a time.
///
/// Where the system has no pipe left nothing is caught: a signal ends the program as usual.
class CaughtSignals {
 public:
  CaughtSignals();
  ~CaughtSignals();
  CaughtSignals(const CaughtSignals&) = delete;
  CaughtSignals& operator=(const CaughtSignals&) = delete;

  /// Becomes readable, for good, when a signal has come; -1 where nothing is caught.
  int Descriptor() const;

 private:
  using Handler = void (*)(int signal);

  static constexpr std::array kSignals{SIGINT, SIGTERM, SIGHUP};

  std::array<Handler, kSignals.size()> before_{};
};

}  // namespace kelvara::posix
