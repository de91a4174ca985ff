#pragma once

#include <sys/stat.h>
#include <termios.h>

#include <stdexcept>
#include <string>
#include <string_view>

#include "sim/PseudoTerminal.h"

namespace kelvara::test {

/// A pseudo-terminal: the program under test opens its device, the test controls the other end. The
/// device starts as an interactive terminal, so a program must change all settings that a port
/// needs.
class PseudoTerminal {
 public:
  PseudoTerminal() {
    terminal_.Open();
    device_ = terminal_.DeviceName();
    struct termios settings = LineSettings();
    settings.c_iflag |= ICRNL | IXON;
    settings.c_oflag |= OPOST | ONLCR;
    settings.c_lflag |= ICANON | ECHO | ISIG | IEXTEN;
    if (::cfsetspeed(&settings, B38400) != 0 ||
        ::tcsetattr(terminal_.Descriptor(), TCSANOW, &settings) != 0) {
      throw std::runtime_error("no pseudo-terminal");
    }
  }
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  const std::string& Device() const { return device_; }

  /// Makes the device disappear, like an unplugged adapter.
  void HangUp() { terminal_.Close(); }

  /// Sends text to the device; returns how many bytes the system took.
  std::size_t Write(std::string_view text) { return terminal_.Write(text); }

  /// What was written to the device and not yet read here. Also releases what a program that has
  /// ended left in the terminal.
  std::string ReadAll() {
    std::string text;
    for (std::string piece = terminal_.Read(); !piece.empty(); piece = terminal_.Read()) {
      text += piece;
    }
    return text;
  }

  /// The line settings of the device.
  struct termios LineSettings() const {
    struct termios settings {};
    ::tcgetattr(terminal_.Descriptor(), &settings);
    return settings;
  }

  /// Lets every user open the device.
  void OpenToEveryone() {
    ::chmod(device_.c_str(), S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH);
  }

 private:
  sim::PseudoTerminal terminal_;
  std::string device_;
};

}  // namespace kelvara::test
