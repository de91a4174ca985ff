#include "platform/qt/OpenPath.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/qt/PathText.h"

namespace kelvara::qt {

/// A file name is a sequence of bytes that need not be text in any character set. Qt's file names
/// are text, so Qt is given the open file instead.
QString OpenPath(QFile& file, const std::string& path, QIODevice::OpenMode mode) {
  const int flags = !mode.testFlag(QIODevice::WriteOnly) ? O_RDONLY
                    : mode.testFlag(QIODevice::Append)   ? O_WRONLY | O_CREAT | O_APPEND
                                                         : O_WRONLY | O_CREAT | O_TRUNC;
  int handle = -1;
  do {
    handle = ::open(MachinePath(path).c_str(), flags | O_CLOEXEC, 0666);
  } while (handle < 0 && errno == EINTR);
  struct stat status {};
  if (handle >= 0 && ::fstat(handle, &status) == 0 && S_ISDIR(status.st_mode)) {
    ::close(handle);
    return qt_error_string(EISDIR);
  }
  if (handle < 0) {
    return qt_error_string(errno);
  }
  // The open file already appends. Told to append, Qt would seek to the end, which fails on a pipe.
  mode.setFlag(QIODevice::Append, false);
  if (!file.open(handle, mode | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle)) {
    ::close(handle);
    return file.errorString();
  }
  return {};
}

bool IsInFolder(const QFile& file) {
  struct stat status {};
  return ::fstat(file.handle(), &status) != 0 || status.st_nlink > 0;
}

}  // namespace kelvara::qt
