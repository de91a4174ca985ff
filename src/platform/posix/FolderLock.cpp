#include "platform/qt/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QFile>
#include <QThread>
#include <cerrno>

namespace kelvara::qt {
namespace {

constexpr unsigned long kPauseMilliseconds = 2;

bool TryToTake(std::intptr_t handle) {
  return ::flock(static_cast<int>(handle), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

}  // namespace

FolderLock::FolderLock(const QString& folder, std::chrono::milliseconds patience)
    : handle_(::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  QElapsedTimer waiting;
  waiting.start();
  while (!(held_ = TryToTake(handle_)) && waiting.elapsed() < patience.count()) {
    QThread::msleep(kPauseMilliseconds);
  }
}

FolderLock::~FolderLock() {
  if (handle_ >= 0) {
    ::close(static_cast<int>(handle_));
  }
}

}  // namespace kelvara::qt
