#pragma once

#include <QString>
#include <chrono>

#ifdef Q_OS_WIN
#include <QLockFile>
#endif

namespace kelvara::qt {

/// Keeps other programs from changing the files of a folder at the same time, as long as it lives.
/// The system holds the lock for the process: one that is killed leaves nothing behind.
class FolderLock {
 public:
  /// Waits until no other program has the folder, at most as long as the patience.
  FolderLock(const QString& folder, std::chrono::milliseconds patience);
  ~FolderLock();
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

  /// False when another program kept the folder all the time. A folder that cannot be locked, on a
  /// file system that has no locks, counts as held: writing at all matters more.
  bool IsHeld() const { return held_; }

 private:
  bool TryToTake();

#ifdef Q_OS_WIN
  QLockFile file_;
#else
  int handle_;
#endif
  bool held_ = false;
};

}  // namespace kelvara::qt
