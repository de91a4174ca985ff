#include "ports/PortLock.h"

#include <QFile>
#include <QFileInfo>

#include "ports/PortHolder.h"

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#else
#include <QSerialPortInfo>
#endif

namespace kelvara::ports {

PortLock::PortLock(const std::string& device) : state_(Take(device)) {}

#ifdef Q_OS_UNIX

namespace {

PortState StateOfError(int error) {
  switch (error) {
    case EACCES:
    case EPERM:
      return PortState::NoPermission;
    case EBUSY:
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

PortLock::~PortLock() {
  if (handle_ >= 0) {
    ::close(handle_);
  }
}

PortState PortLock::Take(const std::string& device) {
  struct stat status {};
  if (::stat(device.c_str(), &status) != 0) {
    return StateOfError(errno);
  }
  if (!S_ISCHR(status.st_mode)) {
    return PortState::NotAPort;
  }
  if (const std::optional<long> holder = HolderOf(device)) {
    return IsThisProcess(*holder) ? PortState::HeldHere : PortState::HeldElsewhere;
  }
  handle_ = ::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (handle_ < 0) {
    return StateOfError(errno);
  }
  if (::flock(handle_, LOCK_EX | LOCK_NB) != 0) {
    return errno == EWOULDBLOCK ? PortState::HeldElsewhere : StateOfError(errno);
  }
  // A built-in port that the machine does not have can be opened, but not asked.
  struct termios settings {};
  return ::tcgetattr(handle_, &settings) == 0 ? PortState::Free : StateOfError(errno);
}

std::string FollowLinks(const std::string& device) {
  const QString followed = QFileInfo(QFile::decodeName(device.c_str())).canonicalFilePath();
  return followed.isEmpty() ? device : QFile::encodeName(followed).toStdString();
}

#else

PortLock::~PortLock() = default;

PortState PortLock::Take(const std::string& device) {
  return QSerialPortInfo(QString::fromStdString(device)).isNull() ? PortState::Absent
                                                                  : PortState::Free;
}

std::string FollowLinks(const std::string& device) { return device; }

#endif

}  // namespace kelvara::ports
