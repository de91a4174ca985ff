#include "platform/qt/FolderLock.h"

#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#ifndef Q_OS_WIN
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#endif

namespace kelvara::qt {
namespace {

constexpr unsigned long kPauseMilliseconds = 2;

}  // namespace

#ifdef Q_OS_WIN

FolderLock::FolderLock(const QString& folder, std::chrono::milliseconds patience)
    : file_(folder + QStringLiteral("/.lock")) {
#else

FolderLock::FolderLock(const QString& folder, std::chrono::milliseconds patience)
    : handle_(::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
#endif
  QElapsedTimer waiting;
  waiting.start();
  while (!(held_ = TryToTake()) && waiting.elapsed() < patience.count()) {
    QThread::msleep(kPauseMilliseconds);
  }
}

#ifdef Q_OS_WIN

FolderLock::~FolderLock() = default;

bool FolderLock::TryToTake() {
  return file_.tryLock() || file_.error() != QLockFile::LockFailedError;
}

#else

FolderLock::~FolderLock() {
  if (handle_ >= 0) {
    ::close(handle_);
  }
}

bool FolderLock::TryToTake() {
  return ::flock(handle_, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

#endif

}  // namespace kelvara::qt
