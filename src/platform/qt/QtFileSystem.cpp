#include "platform/qt/QtFileSystem.h"

#include <QFile>
#include <algorithm>
#include <filesystem>

#include "base/Fault.h"

#ifndef _WIN32
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#endif

namespace kelvara::qt {
namespace {

[[noreturn]] void ThrowFileFault(const std::string& name, const char* attempt,
                                 const std::string& reason) {
  throw base::Fault(base::FaultKind::File,
                    std::string("cannot ") + attempt + " \"" + name + "\": " + reason);
}

[[noreturn]] void ThrowFileFault(const QFile& file, const std::string& name, const char* attempt) {
  ThrowFileFault(name, attempt, file.errorString().toStdString());
}

/// The path with the machine's separators.
std::string MachineBytes(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

#ifdef _WIN32

void Open(QFile& file, const std::string& name, QIODevice::OpenMode mode) {
  file.setFileName(MachinePath(name));
  if (!file.open(mode | QIODevice::Unbuffered)) {
    ThrowFileFault(file, name, "open");
  }
}

#else

/// A file name is a sequence of bytes that need not be text in any character set. Qt's file names
/// are text, so Qt is given the open file instead.
void Open(QFile& file, const std::string& name, QIODevice::OpenMode mode) {
  const int flags = !mode.testFlag(QIODevice::WriteOnly) ? O_RDONLY
                    : mode.testFlag(QIODevice::Append)   ? O_WRONLY | O_CREAT | O_APPEND
                                                         : O_WRONLY | O_CREAT | O_TRUNC;
  int handle = -1;
  do {
    handle = ::open(MachineBytes(name).c_str(), flags | O_CLOEXEC, 0666);
  } while (handle < 0 && errno == EINTR);
  struct stat status {};
  if (handle >= 0 && ::fstat(handle, &status) == 0 && S_ISDIR(status.st_mode)) {
    ::close(handle);
    ThrowFileFault(name, "open", qt_error_string(EISDIR).toStdString());
  }
  if (handle < 0) {
    ThrowFileFault(name, "open", qt_error_string(errno).toStdString());
  }
  // The open file already appends. Told to append, Qt would seek to the end, which fails on a pipe.
  mode.setFlag(QIODevice::Append, false);
  if (!file.open(handle, mode | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle)) {
    ::close(handle);
    ThrowFileFault(file, name, "open");
  }
}

#endif

class QtOutputFile : public platform::OutputFile {
 public:
  QtOutputFile(const std::string& path, QIODevice::OpenMode mode)
      : name_(path), appends_(mode.testFlag(QIODevice::Append)) {
    Open(file_, name_, mode);
  }

  void Write(std::string_view bytes) override {
    qint64 total = 0;
    while (!bytes.empty()) {
      const qint64 written = file_.write(bytes.data(), static_cast<qint64>(bytes.size()));
      if (written <= 0) {
        const std::string reason = file_.errorString().toStdString();
        RemoveLast(total);
        ThrowFileFault(name_, "write", reason);
      }
      total += written;
      bytes.remove_prefix(static_cast<std::size_t>(written));
    }
  }

 private:
  /// Removes an entry that was written only in part, so that the next one starts in its place once
  /// there is space again.
  void RemoveLast(qint64 bytes) {
    if (bytes > 0 && appends_ && !file_.isSequential()) {
      file_.resize(file_.size() - bytes);
    }
  }

  std::string name_;
  bool appends_;
  QFile file_;
};

class QtInputFile : public platform::InputFile {
 public:
  explicit QtInputFile(const std::string& path) : name_(path) {
    Open(file_, name_, QIODevice::ReadOnly);
  }

  std::size_t Read(std::span<char> buffer) override {
    const qint64 got = file_.read(buffer.data(), static_cast<qint64>(buffer.size()));
    if (got < 0) {
      ThrowFileFault(file_, name_, "read");
    }
    return static_cast<std::size_t>(got);
  }

  std::size_t Size() const override {
    return file_.isSequential() ? 0 : static_cast<std::size_t>(file_.size());
  }

 private:
  std::string name_;
  QFile file_;
};

}  // namespace

std::unique_ptr<platform::OutputFile> QtFileSystem::OpenForOutput(const std::string& path) {
  return std::make_unique<QtOutputFile>(path, QIODevice::WriteOnly | QIODevice::Truncate);
}

std::unique_ptr<platform::OutputFile> QtFileSystem::OpenForAppend(const std::string& path) {
  return std::make_unique<QtOutputFile>(path, QIODevice::WriteOnly | QIODevice::Append);
}

std::unique_ptr<platform::InputFile> QtFileSystem::OpenForInput(const std::string& path) {
  return std::make_unique<QtInputFile>(path);
}

void ExpectReadable(const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code unknown;
  const fs::file_type type = fs::status(MachineBytes(path), unknown).type();
  if (type != fs::file_type::fifo && type != fs::file_type::character &&
      type != fs::file_type::block && type != fs::file_type::socket) {
    const QtInputFile file(path);
  }
}

QString MachinePath(const std::string& path) {
  QString machinePath = QFile::decodeName(QByteArray::fromStdString(path));
  return machinePath.replace(u'\\', u'/');
}

}  // namespace kelvara::qt
