#pragma once

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <string>

namespace kelvara::test {

/// Observes when any program opens a device.
class DeviceOpenings {
 public:
  explicit DeviceOpenings(const std::string& device)
      : watch_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (::inotify_add_watch(watch_, device.c_str(), IN_OPEN) < 0) {
      throw std::runtime_error("cannot watch the device");
    }
  }
  ~DeviceOpenings() { ::close(watch_); }
  DeviceOpenings(const DeviceOpenings&) = delete;
  DeviceOpenings& operator=(const DeviceOpenings&) = delete;

  /// Whether the device was opened since the last call.
  bool HasAny() const {
    std::array<char, 4096> events{};
    return ::read(watch_, events.data(), events.size()) > 0;
  }

 private:
  int watch_;
};

}  // namespace kelvara::test
