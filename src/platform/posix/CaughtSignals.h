#pragma once

#include <array>
#include <csignal>

namespace kelvara::posix {

/// Catches the signals that ask a program to end (Ctrl+C, a termination request, a terminal
/// hang-up) for as long as it exists, so that an event loop can wait for them. A second signal ends
/// the program at once, whatever it is doing. A signal that was already ignored when the program
/// started, as under `nohup`, stays ignored. Only one object may exist at a time.
///
/// If the system cannot create a pipe, nothing is caught and a signal ends the program as usual.
class CaughtSignals {
 public:
  CaughtSignals();
  ~CaughtSignals();
  CaughtSignals(const CaughtSignals&) = delete;
  CaughtSignals& operator=(const CaughtSignals&) = delete;

  /// A file descriptor that becomes readable, and stays so, once a signal arrives; -1 if nothing is
  /// caught.
  int Descriptor() const;

 private:
  using Handler = void (*)(int signal);

  static constexpr std::array kSignals{SIGINT, SIGTERM, SIGHUP};

  std::array<Handler, kSignals.size()> before_{};
};

}  // namespace kelvara::posix
