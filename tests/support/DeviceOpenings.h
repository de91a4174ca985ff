#pragma once

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <string>

namespace kelvara::test {

/// Sees each opening of a device, by any program.
class DeviceOpenings {
 public:
  explicit DeviceOpenings(const std::string& device)
      : watch_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (::inotify_add_watch(watch_, device.c_str(), IN_OPEN) < 0) {
      throw std::runtime_error("openings of the device cannot be seen");
    }
  }
  ~DeviceOpenings() { ::close(watch_); }
  DeviceOpenings(const DeviceOpenings&) = delete;
  DeviceOpenings& operator=(const DeviceOpenings&) = delete;

  /// Whether there has been one since the last question.
  bool HasAny() const {
    std::array<char, 4096> events{};
    return ::read(watch_, events.data(), events.size()) > 0;
  }

 private:
  int watch_;
};

}  // namespace kelvara::test
