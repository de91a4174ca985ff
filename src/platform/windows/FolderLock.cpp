#include "platform/qt/FolderLock.h"

#include <windows.h>

#include <QCryptographicHash>
#include <QFileInfo>

namespace kelvara::qt {
namespace {

/// The name of a folder's mutex, the same for every spelling of the folder. The user's sessions
/// share it.
std::wstring MutexName(const QString& folder) {
  const QFileInfo info(folder);
  const QString path = info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
  const QByteArray hash =
      QCryptographicHash::hash(path.toCaseFolded().toUtf8(), QCryptographicHash::Sha1);
  return L"Global\\kelvara-" + QString::fromLatin1(hash.toHex()).toStdWString();
}

}  // namespace

// A mutex, unlike a lock file, leaves nothing behind when the process is killed.
FolderLock::FolderLock(const QString& folder, std::chrono::milliseconds patience)
    : handle_(reinterpret_cast<std::intptr_t>(
          ::CreateMutexW(nullptr, FALSE, MutexName(folder).c_str()))) {
  const HANDLE mutex = reinterpret_cast<HANDLE>(handle_);
  held_ = mutex == nullptr ||
          ::WaitForSingleObject(mutex, static_cast<DWORD>(patience.count())) != WAIT_TIMEOUT;
}

FolderLock::~FolderLock() {
  const HANDLE mutex = reinterpret_cast<HANDLE>(handle_);
  if (mutex != nullptr) {
    if (held_) {
      ::ReleaseMutex(mutex);
    }
    ::CloseHandle(mutex);
  }
}

}  // namespace kelvara::qt
