#include "platform/qt/LockedFiles.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <cerrno>

#include "base/Fault.h"
#include "platform/qt/Text.h"

namespace kelvara::qt {
namespace {

[[noreturn]] void ThrowFileFault(const char* attempt, const QString& path,
                                 const std::string& reason = ToText(qt_error_string(errno))) {
  throw base::Fault(base::FaultKind::File,
                    std::string("cannot ") + attempt + " \"" + ToText(path) + "\": " + reason);
}

class PosixLockedFile : public platform::LockedFile {
 public:
  PosixLockedFile(int handle, QString path) : handle_(handle), path_(std::move(path)) {}
  ~PosixLockedFile() override { ::close(handle_); }
  PosixLockedFile(const PosixLockedFile&) = delete;
  PosixLockedFile& operator=(const PosixLockedFile&) = delete;

  void Write(std::string_view bytes) override {
    if (!IsInFolder()) {
      ThrowFileFault("write", path_, "the file has been removed");
    }
    while (!bytes.empty()) {
      const ssize_t written = ::write(handle_, bytes.data(), bytes.size());
      if (written < 0 && errno == EINTR) {
        continue;
      }
      if (written <= 0) {
        ThrowFileFault("write", path_);
      }
      bytes.remove_prefix(static_cast<std::size_t>(written));
    }
  }

  std::uint64_t Size() const override {
    struct stat status {};
    return ::fstat(handle_, &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
  }

  std::size_t Read(std::uint64_t place, std::span<char> buffer) override {
    const ssize_t got = ::pread(handle_, buffer.data(), buffer.size(), static_cast<off_t>(place));
    if (got < 0) {
      ThrowFileFault("read", path_);
    }
    return static_cast<std::size_t>(got);
  }

  void Cut(std::uint64_t size) override {
    if (::ftruncate(handle_, static_cast<off_t>(size)) != 0) {
      ThrowFileFault("write", path_);
    }
  }

  void Remove() override {
    if (::unlink(QFile::encodeName(path_).constData()) != 0) {
      ThrowFileFault("remove", path_);
    }
  }

  /// A file system without locks counts as locked: being able to write matters more.
  bool Lock() const {
    // Another program may have removed the file before it was locked.
    return (::flock(handle_, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) && IsInFolder();
  }

 private:
  bool IsInFolder() const {
    struct stat status {};
    return ::fstat(handle_, &status) == 0 && status.st_nlink > 0;
  }

  int handle_;
  QString path_;
};

std::unique_ptr<platform::LockedFile> OpenWith(int flags, int absence, const QString& path) {
  const int handle =
      ::open(QFile::encodeName(path).constData(), O_RDWR | O_APPEND | O_CLOEXEC | flags, 0666);
  if (handle < 0) {
    if (errno == absence) {
      return nullptr;
    }
    ThrowFileFault("open", path);
  }
  auto file = std::make_unique<PosixLockedFile>(handle, path);
  return file->Lock() ? std::move(file) : nullptr;
}

}  // namespace

std::unique_ptr<platform::LockedFile> CreateLocked(const QString& path) {
  return OpenWith(O_CREAT | O_EXCL, EEXIST, path);
}

std::unique_ptr<platform::LockedFile> OpenLocked(const QString& path) {
  return OpenWith(0, ENOENT, path);
}

}  // namespace kelvara::qt
