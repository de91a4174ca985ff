#include "platform/qt/DurableFile.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <QDir>
#include <QElapsedTimer>
#include <QThread>
#include <cstring>
#include <memory>
#include <type_traits>
#include <vector>

namespace kelvara::qt {
namespace {

constexpr unsigned long kPauseMilliseconds = 2;
/// FileRenameInfoEx, which the headers of mingw-w64 hide.
constexpr auto kFileRenameInfoEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22);
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

struct HandleCloser {
  void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};
using UniqueHandle = std::unique_ptr<std::remove_pointer_t<HANDLE>, HandleCloser>;

std::wstring Native(const QString& path) { return QDir::toNativeSeparators(path).toStdWString(); }

/// Opens an existing file while other programs keep it open. Empty on failure.
UniqueHandle Open(const QString& path, DWORD access) {
  const HANDLE handle = ::CreateFileW(Native(path).c_str(), access, kShareAll, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  return UniqueHandle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

/// Replaces a file, even while programs have it open, if they allow its deletion. Not every system
/// and file system can.
bool RenameInUse(const QString& newPath, const QString& path) {
  const UniqueHandle file = Open(newPath, DELETE | SYNCHRONIZE);
  if (!file) {
    return false;
  }
  const std::wstring name = Native(path);
  const std::size_t nameBytes = name.size() * sizeof(wchar_t);
  std::vector<std::byte> buffer(sizeof(FILE_RENAME_INFO) + nameBytes);
  auto* const information = new (buffer.data()) FILE_RENAME_INFO{};
  information->Flags = FILE_RENAME_FLAG_REPLACE_IF_EXISTS | FILE_RENAME_FLAG_POSIX_SEMANTICS;
  information->FileNameLength = static_cast<DWORD>(nameBytes);
  std::memcpy(information->FileName, name.c_str(), nameBytes + sizeof(wchar_t));
  return ::SetFileInformationByHandle(file.get(), kFileRenameInfoEx, information,
                                      static_cast<DWORD>(buffer.size())) != 0;
}

bool Move(const QString& newPath, const QString& path) {
  return ::MoveFileExW(Native(newPath).c_str(), Native(path).c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

/// Does the same as `RenameInUse` on every system, but in two steps: for a moment there is no file.
bool ReplaceInUse(const QString& newPath, const QString& path) {
  return Open(path, DELETE) && ::ReplaceFileW(Native(path).c_str(), Native(newPath).c_str(),
                                              nullptr, 0, nullptr, nullptr) != 0;
}

/// Tries until it succeeds, fails for another reason than a program that has the file open, or
/// `patience` has passed. Returns the system's last error, ERROR_SUCCESS after success.
template <typename Attempt>
DWORD Retry(std::chrono::milliseconds patience, Attempt attempt) {
  QElapsedTimer waiting;
  waiting.start();
  while (!attempt()) {
    const DWORD error = ::GetLastError();
    // A file that is about to be deleted, too, denies the access.
    const bool isInUse = error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED;
    if (!isInUse || waiting.elapsed() >= patience.count()) {
      return error;
    }
    QThread::msleep(kPauseMilliseconds);
  }
  return ERROR_SUCCESS;
}

}  // namespace

bool OpenShared(QFile& file, std::chrono::milliseconds patience) {
  UniqueHandle handle;
  const auto open = [&] {
    handle = Open(file.fileName(), GENERIC_READ);
    return handle != nullptr;
  };
  if (Retry(patience, open) != ERROR_SUCCESS) {
    return false;
  }
  const int descriptor =
      ::_open_osfhandle(reinterpret_cast<std::intptr_t>(handle.get()), _O_RDONLY | _O_BINARY);
  if (descriptor < 0) {
    return false;
  }
  // The descriptor closes the handle.
  static_cast<void>(handle.release());
  if (!file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
    ::_close(descriptor);
    return false;
  }
  return true;
}

// Each call of QFile::handle() would use up a descriptor. The disk does not care which handle it is
// asked through.
bool Synchronise(QFile& file) {
  const UniqueHandle handle = Open(file.fileName(), GENERIC_WRITE);
  return handle && ::FlushFileBuffers(handle.get()) != 0;
}

// The new file has the access rights of its folder, as the old one had.
QString PutInPlace(const QString& newPath, const QString& path,
                   std::chrono::milliseconds patience) {
  const DWORD error =
      Retry(patience, [&] { return RenameInUse(newPath, path) || Move(newPath, path); });
  // A program that keeps the file open for longer is the only reason to risk the moment without
  // one.
  const bool isDone = error == ERROR_SUCCESS || ReplaceInUse(newPath, path);
  return isDone ? QString() : qt_error_string(static_cast<int>(error));
}

}  // namespace kelvara::qt
