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

/// While this exists, no file of the process can grow beyond `bytes`: such a write fails, as on a
/// full disk.
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

/// While this exists, all permitted capabilities of the process are effective. An ordinary user's
/// process has some in its own namespace. They are off at other times because they override file
/// permissions.
class AllCapabilities {
 public:
  AllCapabilities() : before_(Read()) {
    Sets all = before_;
    for (__user_cap_data_struct& part : all) {
      part.effective = part.permitted;
    }
    Write(all);
  }
  ~AllCapabilities() {
    Sets after = Read();
    for (std::size_t i = 0; i < after.size(); ++i) {
      after.at(i).effective = before_.at(i).effective;
    }
    Write(after);
  }
  AllCapabilities(const AllCapabilities&) = delete;
  AllCapabilities& operator=(const AllCapabilities&) = delete;

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

/// A temporary disk with space for `pages` pages of 4096 bytes, visible only to this process and
/// the processes that it starts later. Needs the superuser, or a machine that lets every user
/// create namespaces and a process with a single thread.
class SmallDisk {
 public:
  static constexpr std::size_t kPageBytes = 4096;
  static constexpr const char* kNeeds =
      "a small disk needs the superuser, or user namespaces for all and a single thread";

  explicit SmallDisk(std::size_t pages) {
    // One page more, filled below, since size 0 would mean no limit.
    const std::string options = "size=" + std::to_string((pages + 1) * kPageBytes);
    const AllCapabilities capabilities;
    isMounted_ = (::unshare(CLONE_NEWNS) == 0 || EnterNewNamespace()) &&
                 ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                 ::mount("none", folder_.Path().c_str(), "tmpfs", 0, options.c_str()) == 0;
    if (isMounted_) {
      std::ofstream(PathOf("filler")) << std::string(kPageBytes, 'x');
    }
  }
  ~SmallDisk() {
    if (isMounted_) {
      const AllCapabilities capabilities;
      ::umount2(folder_.Path().c_str(), MNT_DETACH);
    }
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;

  bool IsMounted() const { return isMounted_; }
  std::string PathOf(const std::string& name) const { return folder_.PathOf(name); }

 private:
  /// Enters a new namespace in which the user stays the same but has all capabilities.
  static bool EnterNewNamespace() {
    const std::string user = std::to_string(::geteuid());
    const std::string group = std::to_string(::getegid());
    return ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && WriteTo("setgroups", "deny") &&
           WriteTo("uid_map", user + ' ' + user + " 1") &&
           WriteTo("gid_map", group + ' ' + group + " 1");
  }
  static bool WriteTo(const std::string& file, const std::string& text) {
    return static_cast<bool>(std::ofstream("/proc/self/" + file) << text << std::flush);
  }

  TemporaryFolder folder_;
  bool isMounted_ = false;
};

}  // namespace kelvara::test
