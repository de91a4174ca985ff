#include "platform/qt/QtFileSystem.h"

#include <QFile>
#include <filesystem>

#include "base/Fault.h"
#include "platform/qt/OpenPath.h"
#include "platform/qt/PathText.h"
#include "platform/qt/Text.h"

namespace kelvara::qt {
namespace {

[[noreturn]] void ThrowFileFault(const std::string& name, const char* attempt,
                                 const std::string& reason) {
  throw base::Fault(base::FaultKind::File,
                    std::string("cannot ") + attempt + " \"" + name + "\": " + reason);
}

[[noreturn]] void ThrowFileFault(const QFile& file, const std::string& name, const char* attempt) {
  ThrowFileFault(name, attempt, ToText(file.errorString()));
}

void Open(QFile& file, const std::string& name, QIODevice::OpenMode mode) {
  const QString reason = OpenPath(file, name, mode);
  if (!reason.isEmpty()) {
    ThrowFileFault(name, "open", ToText(reason));
  }
}

class QtOutputFile : public platform::OutputFile {
 public:
  QtOutputFile(const std::string& path, QIODevice::OpenMode mode)
      : name_(path), appends_(mode.testFlag(QIODevice::Append)) {
    Open(file_, name_, mode);
    wasInFolder_ = IsInFolder(file_);
  }

  void Write(std::string_view bytes) override {
    if (wasInFolder_ && !IsInFolder(file_)) {
      ThrowFileFault(name_, "write", "the file has been removed");
    }
    qint64 total = 0;
    while (!bytes.empty()) {
      const qint64 written = file_.write(bytes.data(), static_cast<qint64>(bytes.size()));
      if (written <= 0) {
        const std::string reason = ToText(file_.errorString());
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
  /// Standard output may be a file without a folder from the start.
  bool wasInFolder_ = false;
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

  void Seek(std::uint64_t place) override {
    if (file_.isSequential() || !file_.seek(static_cast<qint64>(place))) {
      ThrowFileFault(name_, "read", "it is not a file that can be read at any place");
    }
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
  const fs::file_type type = fs::status(MachinePath(path), unknown).type();
  if (type != fs::file_type::fifo && type != fs::file_type::character &&
      type != fs::file_type::block && type != fs::file_type::socket) {
    const QtInputFile file(path);
  }
}

}  // namespace kelvara::qt
