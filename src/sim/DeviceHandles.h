#pragma once

#include <string>

namespace kelvara::sim {

/// Counts the open handles to a device in all programs together. If the system cannot watch one
/// more file, nothing is counted.
class DeviceHandles {
 public:
  DeviceHandles() = default;
  ~DeviceHandles() { Unwatch(); }
  DeviceHandles(const DeviceHandles&) = delete;
  DeviceHandles& operator=(const DeviceHandles&) = delete;

  /// Counts from now on. No program may have `device` open yet.
  void Watch(const std::string& device);

  void Unwatch();

  /// Becomes readable when a handle has been opened or closed; -1 while nothing is watched.
  int Descriptor() const { return watch_; }

  /// Counts what has happened since the last call. True if a handle was closed meanwhile.
  bool TakeClosing();

  /// How many handles were open at the last `TakeClosing`.
  int Count() const { return count_; }

 private:
  int watch_ = -1;
  int deviceWatch_ = -1;
  int count_ = 0;
};

}  // namespace kelvara::sim
