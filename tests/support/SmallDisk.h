#pragma once

#include <linux/capability.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <fstream>
#include <string>

#include "support/TemporaryFolder.h"

/// Disks that fill up. Linux only.
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

/// As long as it lives, the process uses every power that it may use. An ordinary user's process
/// has some over a namespace of its own; at other times it leaves them alone, or no file's rights
/// would bind it.
class EveryPower {
 public:
  EveryPower() : before_(Read()) {
    Sets all = before_;
    for (__user_cap_data_struct& part : all) {
      part.effective = part.permitted;
    }
    Write(all);
  }
  ~EveryPower() {
    Sets after = Read();
    for (std::size_t i = 0; i < after.size(); ++i) {
      after.at(i).effective = before_.at(i).effective;
    }
    Write(after);
  }
  EveryPower(const EveryPower&) = delete;
  EveryPower& operator=(const EveryPower&) = delete;

 private:
  using Sets = std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3>;

  static Sets Read() {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    Sets sets{};
    ::syscall(SYS_capget, &header, sets.data());
    return sets;
  }
  static void Write(const Sets& sets) {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    ::syscall(SYS_capset, &header, sets.data());
  }

  Sets before_;
};

/// A disk of its own with room for so many pages of 4096 bytes, which only this process and those
/// that it starts from then on see. The superuser can have one; an ordinary user where the machine
/// lets every user make namespaces, and as long as the process has a single thread.
class SmallDisk {
 public:
  static constexpr std::size_t kPageBytes = 4096;
  static constexpr const char* kNeeds =
      "a small disk needs the superuser, or user namespaces for all and a single thread";

  explicit SmallDisk(std::size_t pages) {
    // One page more, since a disk of none would be one without a limit.
    const std::string options = "size=" + std::to_string((pages + 1) * kPageBytes);
    const EveryPower power;
    isMounted_ = (::unshare(CLONE_NEWNS) == 0 || EnterNamespaceOfItsOwn()) &&
                 ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                 ::mount("none", folder_.Path().c_str(), "tmpfs", 0, options.c_str()) == 0;
    if (isMounted_) {
      std::ofstream(PathOf("filler")) << std::string(kPageBytes, 'x');
    }
  }
  ~SmallDisk() {
    if (isMounted_) {
      const EveryPower power;
      ::umount2(folder_.Path().c_str(), MNT_DETACH);
    }
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;

  bool IsMounted() const { return isMounted_; }
  std::string PathOf(const std::string& name) const { return folder_.PathOf(name); }

 private:
  /// Enters a namespace in which the user is who they were, with every power over it.
  static bool EnterNamespaceOfItsOwn() {
    const std::string user = std::to_string(::geteuid());
    const std::string group = std::to_string(::getegid());
    return ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && Tell("setgroups", "deny") &&
           Tell("uid_map", user + ' ' + user + " 1") && Tell("gid_map", group + ' ' + group + " 1");
  }
  static bool Tell(const std::string& file, const std::string& text) {
    return static_cast<bool>(std::ofstream("/proc/self/" + file) << text << std::flush);
  }

  TemporaryFolder folder_;
  bool isMounted_ = false;
};

}  // namespace kelvara::test
