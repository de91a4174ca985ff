#pragma once

#include <QString>
#include <chrono>
#include <cstdint>

namespace kelvara::qt {

/// Keeps other programs from changing the files of a folder for as long as it exists. The lock ends
/// with the process, even one that is killed.
class FolderLock {
 public:
  /// Waits until no other program holds the folder, for at most `patience`.
  FolderLock(const QString& folder, std::chrono::milliseconds patience);
  ~FolderLock();
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

  /// False if another program held the folder for the whole time. A folder on a file system without
  /// locks counts as held: being able to write matters more.
  bool IsHeld() const { return held_; }

 private:
  /// The system's handle.
  std::intptr_t handle_;
  bool held_ = false;
};

}  // namespace kelvara::qt
