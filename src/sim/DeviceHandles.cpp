#include "sim/DeviceHandles.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <filesystem>

namespace kelvara::sim {

void DeviceHandles::Watch(const std::string& device) {
  Unwatch();
  constexpr std::uint32_t kEvents = IN_OPEN | IN_CLOSE;
  watch_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  // The system merges an event with an equal event right before it. The folder reports each event
  // too, so that two events of the device are never adjacent and none is missed.
  const std::string folder = std::filesystem::path(device).parent_path();
  if (watch_ < 0 || inotify_add_watch(watch_, folder.c_str(), kEvents) < 0 ||
      (deviceWatch_ = inotify_add_watch(watch_, device.c_str(), kEvents)) < 0) {
    Unwatch();
  }
}

void DeviceHandles::Unwatch() {
  if (watch_ >= 0) {
    close(watch_);
  }
  watch_ = -1;
  deviceWatch_ = -1;
  count_ = 0;
}

bool DeviceHandles::TakeClosing() {
  bool closed = false;
  std::array<char, 4096> events{};
  ssize_t got = 0;
  while (watch_ >= 0 && (got = read(watch_, events.data(), events.size())) > 0) {
    for (std::size_t at = 0; at < static_cast<std::size_t>(got);) {
      inotify_event event{};
      std::memcpy(&event, events.data() + at, sizeof event);
      at += sizeof event + event.len;
      if (event.wd != deviceWatch_) {
        continue;
      }
      if ((event.mask & IN_OPEN) != 0) {
        ++count_;
      } else if ((event.mask & IN_CLOSE) != 0) {
        count_ = std::max(count_ - 1, 0);
        closed = true;
      }
    }
  }
  return closed;
}

}  // namespace kelvara::sim
