#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>

#include "platform/qt/Trimmed.h"
#include "ports/PortDevice.h"

namespace kelvara::ports {
namespace {

/// The next line of a file without surrounding blanks; empty at the end of the file.
std::string NextLine(std::istream& file) {
  std::string line;
  std::getline(file, line);
  return std::string(qt::Trimmed(line));
}

/// The program's name as the system keeps it, cut to 15 characters; empty if it is unknown.
std::string ProgramOf(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/comm");
  return NextLine(file);
}

bool IsRunning(pid_t process) { return ::kill(process, 0) == 0 || errno == EPERM; }

/// "NAME, process NUMBER", or "process NUMBER" if the name is unknown.
std::string NameOfProcess(pid_t process) {
  std::string text = ProgramOf(process);
  text += text.empty() ? "process " : ", process ";
  text += std::to_string(process);
  return text;
}

/// The path of a device's lock file, as serial programs name it; empty if there is none.
std::string LockFileOf(const std::string& device) {
  constexpr std::string_view kDevices = "/dev/";
  if (!device.starts_with(kDevices)) {
    return {};
  }
  std::string name = device.substr(kDevices.size());
  std::replace(name.begin(), name.end(), '/', '_');
  return "/var/lock/LCK.." + name;
}

/// What became of the process that a lock file names.
enum class LockOwner { Unknown, Running, Gone };

struct LockFile {
  LockOwner owner = LockOwner::Unknown;
  pid_t process = 0;
};

/// Reads a lock file. One that is missing or names no process has an unknown owner.
LockFile ReadLockFile(const std::string& path) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) {
    return {};
  }
  std::ifstream file(path);
  const std::string number = NextLine(file);
  pid_t process = 0;
  const auto [end, failure] =
      std::from_chars(number.data(), number.data() + number.size(), process);
  if (failure != std::errc() || end != number.data() + number.size() || process <= 0) {
    return {};
  }
  // Many programs write their name too. If it differs, the owner has died and its number now
  // belongs to an unrelated process.
  const std::string program = NextLine(file);
  const bool isRunning =
      IsRunning(process) && (program.empty() || program.starts_with(ProgramOf(process)));
  return {isRunning ? LockOwner::Running : LockOwner::Gone, process};
}

/// Whether this user may remove a lock file. Opening a port removes one that was left behind.
bool MayRemove(const std::string& path) {
  const std::string folder = std::filesystem::path(path).parent_path();
  struct stat file {};
  struct stat parent {};
  if (::stat(path.c_str(), &file) != 0 || ::stat(folder.c_str(), &parent) != 0 ||
      ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0 ||
      ::faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) != 0) {
    return false;
  }
  const uid_t user = ::geteuid();
  return (parent.st_mode & S_ISVTX) == 0 || user == 0 || user == file.st_uid ||
         user == parent.st_uid;
}

/// The process that holds an advisory lock on a device, as `PortLock` does, or nothing.
std::optional<pid_t> DeviceLockHolder(const struct stat& status) {
  std::array<char, 64> wanted{};
  std::snprintf(wanted.data(), wanted.size(), "%02x:%02x:%ju", major(status.st_dev),
                minor(status.st_dev), static_cast<std::uintmax_t>(status.st_ino));
  std::ifstream locks("/proc/locks");
  for (std::string line; std::getline(locks, line);) {
    std::istringstream fields(line);
    std::string number;
    std::string kind;
    std::string manner;
    std::string access;
    pid_t process = 0;
    std::string file;
    if (fields >> number >> kind >> manner >> access >> process >> file && kind == "FLOCK" &&
        file == wanted.data()) {
      return process;
    }
  }
  return std::nullopt;
}

PortFinding HeldBy(pid_t process, const std::string& device) {
  return process == ::getpid()
             ? FindingOf(PortState::HeldHere, device)
             : FindingOf(PortState::HeldElsewhere, device, NameOfProcess(process));
}

/// Whether the system lists a character device under a subsystem other than terminals, to which
/// serial ports belong. Pseudo-terminals are listed under none.
bool IsOtherKind(const struct stat& status) {
  std::error_code error;
  const std::filesystem::path kind =
      std::filesystem::read_symlink("/sys/dev/char/" + std::to_string(major(status.st_rdev)) + ":" +
                                        std::to_string(minor(status.st_rdev)) + "/subsystem",
                                    error);
  return !error && kind.filename() != "tty";
}

PortState StateOfError(int error) {
  switch (error) {
    case EACCES:
    case EPERM:
      return PortState::NoPermission;
    case EBUSY:
    case EWOULDBLOCK:
      return PortState::HeldElsewhere;
    case ENOENT:
    case ENOTDIR:
    case ENXIO:
    case ENODEV:
    case ELOOP:
      return PortState::Absent;
    case ENOTTY:
      return PortState::NotAPort;
    default:
      return PortState::Dead;
  }
}

}  // namespace

PortFinding LookAt(const std::string& device) {
  const std::string followed = FollowLinks(device);
  struct stat status {};
  if (::stat(followed.c_str(), &status) != 0) {
    return FindingOf(StateOfError(errno), followed);
  }
  if (!S_ISCHR(status.st_mode) || IsOtherKind(status)) {
    return FindingOf(PortState::NotAPort, followed);
  }
  const std::string lockFile = LockFileOf(followed);
  const LockFile lock = ReadLockFile(lockFile);
  if (lock.owner == LockOwner::Running) {
    return HeldBy(lock.process, followed);
  }
  if (::faccessat(AT_FDCWD, followed.c_str(), R_OK | W_OK, AT_EACCESS) != 0) {
    return FindingOf(StateOfError(errno), followed);
  }
  if (const std::optional<pid_t> holder = DeviceLockHolder(status)) {
    return HeldBy(*holder, followed);
  }
  if (lock.owner == LockOwner::Gone && !MayRemove(lockFile)) {
    return FindingOf(PortState::LockLeft, followed, lockFile);
  }
  return FindingOf(PortState::Free, followed);
}

PortLock::~PortLock() {
  if (handle_ >= 0) {
    ::close(static_cast<int>(handle_));
  }
}

PortFinding PortLock::Take(const std::string& device) {
  PortFinding finding = LookAt(device);
  if (finding.state != PortState::Free) {
    return finding;
  }
  const int handle = ::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  handle_ = handle;
  // A built-in port that the machine lacks can be opened, but its settings cannot be read.
  struct termios settings {};
  if (handle < 0 || ::flock(handle, LOCK_EX | LOCK_NB) != 0 ||
      ::tcgetattr(handle, &settings) != 0) {
    return FindingOf(StateOfError(errno), device);
  }
  return finding;
}

std::string FollowLinks(const std::string& device) {
  std::error_code error;
  const std::filesystem::path followed = std::filesystem::canonical(device, error);
  return error ? device : followed.string();
}

}  // namespace kelvara::ports
