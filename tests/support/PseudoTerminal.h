#pragma once

#include <fcntl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace kelvara::test {

/// A pseudo-terminal: the program under test opens its device, the test sits at the other end.
class PseudoTerminal {
 public:
  PseudoTerminal() : handle_(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
    std::array<char, 64> name{};
    if (handle_ < 0 || ::grantpt(handle_) != 0 || ::unlockpt(handle_) != 0 ||
        ::ptsname_r(handle_, name.data(), name.size()) != 0) {
      throw std::runtime_error("no pseudo-terminal");
    }
    device_ = name.data();
  }
  ~PseudoTerminal() { HangUp(); }
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  const std::string& Device() const { return device_; }

  /// Lets the device vanish, as a pulled adapter does.
  void HangUp() {
    if (handle_ >= 0) {
      ::close(std::exchange(handle_, -1));
    }
  }

  /// Sends text to the device; returns how many bytes the system took.
  std::size_t Write(std::string_view text) {
    const ssize_t written = ::write(handle_, text.data(), text.size());
    return written < 0 ? 0 : static_cast<std::size_t>(written);
  }

  /// What was written to the device and has not been read here.
  std::string ReadAll() {
    std::string text;
    std::array<char, 4096> piece{};
    ssize_t got = 0;
    while ((got = ::read(handle_, piece.data(), piece.size())) > 0) {
      text.append(piece.data(), static_cast<std::size_t>(got));
    }
    return text;
  }

  /// The line settings of the device.
  struct termios LineSettings() const {
    struct termios settings {};
    ::tcgetattr(handle_, &settings);
    return settings;
  }

  /// Lets every user open the device.
  void OpenToEveryone() {
    ::chmod(device_.c_str(), S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH);
  }

 private:
  int handle_;
  std::string device_;
};

}  // namespace kelvara::test
