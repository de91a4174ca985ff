#pragma once

#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>

#include <csignal>
#include <fstream>
#include <string>

#include "support/TemporaryFolder.h"

/// Disks that fill up. POSIX only.
namespace kelvara::test {

/// As long as it lives, no file of this process grows beyond so many bytes: a write beyond them
/// fails, as on a full disk.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    ::getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{bytes, before_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() { ::setrlimit(RLIMIT_FSIZE, &before_); }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  rlimit before_{};
};

/// A disk of its own with room for so many pages of 4096 bytes, which no other process sees. Only
/// the superuser can have one.
class SmallDisk {
 public:
  static constexpr std::size_t kPageBytes = 4096;

  explicit SmallDisk(std::size_t pages) {
    // One page more, since a disk of none would be one without a limit.
    const std::string options = "size=" + std::to_string((pages + 1) * kPageBytes);
    isMounted_ = ::unshare(CLONE_NEWNS) == 0 &&
                 ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                 ::mount("none", folder_.Path().c_str(), "tmpfs", 0, options.c_str()) == 0;
    if (isMounted_) {
      std::ofstream(PathOf("filler")) << std::string(kPageBytes, 'x');
    }
  }
  ~SmallDisk() {
    if (isMounted_) {
      ::umount2(folder_.Path().c_str(), MNT_DETACH);
    }
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;

  bool IsMounted() const { return isMounted_; }
  std::string PathOf(const std::string& name) const { return folder_.PathOf(name); }

 private:
  TemporaryFolder folder_;
  bool isMounted_ = false;
};

}  // namespace kelvara::test
