#include "sim/PseudoTerminal.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include "base/Fault.h"

namespace kelvara::sim {
namespace {

/// The far end, which this class holds open.
constexpr int kOwnHandle = 1;

[[noreturn]] void ThrowPortFault(const std::string& attempt, int error) {
  throw base::Fault(base::FaultKind::Port, "cannot " + attempt + " a pseudo-terminal: " +
                                               std::generic_category().message(error));
}

void CloseEnd(int& end) {
  if (end >= 0) {
    close(end);
    end = -1;
  }
}

/// Removes the lock file that a serial program has left for a terminal that no program has open.
/// False if this user may not remove it; then no program of this user can open the terminal.
bool RemoveLockFile(const std::string& deviceName) {
  const std::filesystem::path lockFile =
      "/var/lock/LCK..pts_" + std::filesystem::path(deviceName).filename().string();
  std::error_code error;
  std::filesystem::remove(lockFile, error);
  return !std::filesystem::exists(lockFile, error);
}

}  // namespace

void PseudoTerminal::Open() {
  if (IsOpen()) {
    return;
  }
  try {
    OpenEnds();
    if (!linkPath_.empty()) {
      MakeLink();
    }
  } catch (const base::Fault&) {
    Close();
    throw;
  }
}

void PseudoTerminal::Close() {
  RemoveLink();
  handles_.TakeClosing();
  if (IsOpen() && handles_.Count() <= kOwnHandle) {
    RemoveLockFile(deviceName_);
  }
  handles_.Unwatch();
  CloseEnd(far_);
  CloseEnd(near_);
  deviceName_.clear();
}

std::string PseudoTerminal::Read() {
  if (handles_.TakeClosing() && handles_.Count() <= kOwnHandle) {
    RemoveLockFile(deviceName_);
    ResetDevice();
  }
  std::array<char, 4096> piece{};
  const ssize_t got = IsOpen() ? read(near_, piece.data(), piece.size()) : 0;
  return got > 0 ? std::string(piece.data(), static_cast<std::size_t>(got)) : std::string();
}

std::size_t PseudoTerminal::Write(std::string_view bytes) {
  std::size_t taken = 0;
  while (IsOpen() && taken < bytes.size()) {
    const ssize_t written = write(near_, bytes.data() + taken, bytes.size() - taken);
    if (written > 0) {
      taken += static_cast<std::size_t>(written);
    } else if (written == 0 || errno != EINTR) {
      break;
    }
  }
  return taken;
}

void PseudoTerminal::OpenNearEnd() {
  // Unusable ones stay open until a usable one is found: the system gives out the lowest free
  // number.
  std::vector<int> unusable;
  int error = 0;
  do {
    near_ = posix_openpt(O_RDWR | O_NOCTTY);
    const char* const name = near_ < 0 || grantpt(near_) != 0 ? nullptr : ptsname(near_);
    error = name == nullptr ? errno : 0;
    deviceName_ = name == nullptr ? "" : name;
    if (error == 0 && !RemoveLockFile(deviceName_)) {
      unusable.push_back(std::exchange(near_, -1));
    }
  } while (error == 0 && near_ < 0);
  for (int& end : unusable) {
    CloseEnd(end);
  }
  if (error != 0) {
    ThrowPortFault("open", error);
  }
}

void PseudoTerminal::OpenEnds() {
  OpenNearEnd();
  // While it is locked, no program can open it without being counted.
  handles_.Watch(deviceName_);
  if (unlockpt(near_) != 0) {
    ThrowPortFault("open", errno);
  }
  far_ = open(deviceName_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (far_ < 0 || tcgetattr(far_, &lineSettings_) != 0) {
    ThrowPortFault("open", errno);
  }
  cfmakeraw(&lineSettings_);
  cfsetspeed(&lineSettings_, B19200);
  if (fcntl(near_, F_SETFL, O_NONBLOCK) != 0 || fcntl(near_, F_SETFD, FD_CLOEXEC) != 0 ||
      !ResetDevice()) {
    ThrowPortFault("set up", errno);
  }
}

bool PseudoTerminal::ResetDevice() {
  return tcsetattr(far_, TCSANOW, &lineSettings_) == 0 && tcflow(far_, TCOON) == 0 &&
         tcflush(far_, TCIFLUSH) == 0 && ioctl(far_, TIOCNXCL) == 0;
}

void PseudoTerminal::MakeLink() {
  std::error_code error;
  // Removes a link that an earlier simulation left behind; any other belongs to someone else.
  const bool isLink =
      std::filesystem::is_symlink(std::filesystem::symlink_status(linkPath_, error));
  if (isLink && (std::filesystem::read_symlink(linkPath_, error).parent_path() == "/dev/pts" ||
                 !std::filesystem::exists(linkPath_, error))) {
    std::filesystem::remove(linkPath_, error);
  }
  // Fails if anything is still at the path.
  std::filesystem::create_symlink(deviceName_, linkPath_, error);
  if (error) {
    throw base::Fault(base::FaultKind::File,
                      "cannot make the link \"" + linkPath_ + "\": " + error.message());
  }
  hasLink_ = true;
}

void PseudoTerminal::RemoveLink() {
  if (hasLink_ && IsLinkOurs()) {
    std::error_code ignored;
    std::filesystem::remove(linkPath_, ignored);
  }
  hasLink_ = false;
}

bool PseudoTerminal::IsLinkOurs() const {
  std::error_code error;
  return std::filesystem::read_symlink(linkPath_, error) == deviceName_;
}

bool PassOn(Beltpack& beltpack, PseudoTerminal& terminal, std::int64_t nowMs) {
  beltpack.Receive(terminal.Read(), nowMs);
  if (!beltpack.IsPresent(nowMs)) {
    terminal.Close();
    return false;
  }
  const bool isBack = !terminal.IsOpen();
  terminal.Open();
  terminal.Write(beltpack.TakeOutput(nowMs));
  return isBack;
}

}  // namespace kelvara::sim
