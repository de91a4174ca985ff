#include "platform/qt/LockedFiles.h"

#include <windows.h>

#include <QDir>
#include <utility>

#include "base/Fault.h"
#include "platform/qt/Text.h"

namespace kelvara::qt {
namespace {

[[noreturn]] void ThrowFileFault(const char* attempt, const QString& path) {
  const std::string reason = ToText(qt_error_string(static_cast<int>(::GetLastError())));
  throw base::Fault(base::FaultKind::File,
                    std::string("cannot ") + attempt + " \"" + ToText(path) + "\": " + reason);
}

std::wstring Native(const QString& path) { return QDir::toNativeSeparators(path).toStdWString(); }

LARGE_INTEGER Place(std::uint64_t place) {
  LARGE_INTEGER large{};
  large.QuadPart = static_cast<LONGLONG>(place);
  return large;
}

/// The lock is that the file is shared with readers only.
class WindowsLockedFile : public platform::LockedFile {
 public:
  WindowsLockedFile(HANDLE handle, QString path) : handle_(handle), path_(std::move(path)) {}
  ~WindowsLockedFile() override {
    if (handle_ != INVALID_HANDLE_VALUE) {
      ::CloseHandle(handle_);
    }
  }
  WindowsLockedFile(const WindowsLockedFile&) = delete;
  WindowsLockedFile& operator=(const WindowsLockedFile&) = delete;

  void Write(std::string_view bytes) override {
    Seek(Size(), "write");
    while (!bytes.empty()) {
      DWORD written = 0;
      if (::WriteFile(handle_, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) ==
              0 ||
          written == 0) {
        ThrowFileFault("write", path_);
      }
      bytes.remove_prefix(written);
    }
  }

  std::uint64_t Size() const override {
    LARGE_INTEGER size{};
    return ::GetFileSizeEx(handle_, &size) != 0 ? static_cast<std::uint64_t>(size.QuadPart) : 0;
  }

  std::size_t Read(std::uint64_t place, std::span<char> buffer) override {
    Seek(place, "read");
    DWORD got = 0;
    if (::ReadFile(handle_, buffer.data(), static_cast<DWORD>(buffer.size()), &got, nullptr) == 0) {
      ThrowFileFault("read", path_);
    }
    return got;
  }

  void Cut(std::uint64_t size) override {
    Seek(size, "write");
    if (::SetEndOfFile(handle_) == 0) {
      ThrowFileFault("write", path_);
    }
  }

  // A handle that may delete would keep readers out that do not expect the file to be deleted.
  void Remove() override {
    ::CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE));
    if (::DeleteFileW(Native(path_).c_str()) == 0) {
      ThrowFileFault("remove", path_);
    }
  }

 private:
  void Seek(std::uint64_t place, const char* attempt) {
    if (::SetFilePointerEx(handle_, Place(place), nullptr, FILE_BEGIN) == 0) {
      ThrowFileFault(attempt, path_);
    }
  }

  HANDLE handle_;
  QString path_;
};

std::unique_ptr<platform::LockedFile> OpenWith(DWORD disposition, const QString& path) {
  const HANDLE handle =
      ::CreateFileW(Native(path).c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                    disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) {
    const DWORD error = ::GetLastError();
    const bool isAbsent = (disposition == OPEN_EXISTING && error == ERROR_PATH_NOT_FOUND);
    if (isAbsent || error == ERROR_FILE_EXISTS || error == ERROR_FILE_NOT_FOUND ||
        error == ERROR_SHARING_VIOLATION) {
      return nullptr;
    }
    ThrowFileFault("open", path);
  }
  return std::make_unique<WindowsLockedFile>(handle, path);
}

}  // namespace

std::unique_ptr<platform::LockedFile> CreateLocked(const QString& path) {
  return OpenWith(CREATE_NEW, path);
}

std::unique_ptr<platform::LockedFile> OpenLocked(const QString& path) {
  return OpenWith(OPEN_EXISTING, path);
}

}  // namespace kelvara::qt
