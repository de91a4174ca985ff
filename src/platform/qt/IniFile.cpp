#include "platform/qt/IniFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <filesystem>
#include <system_error>

#include "base/Fault.h"
#include "platform/qt/FolderLock.h"

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

namespace kelvara::qt {
namespace {

constexpr qint64 kMostBytes = qint64{1} << 20U;

bool Synchronise(QFile& file) {
#ifdef Q_OS_WIN
  return file.flush() && ::_commit(file.handle()) == 0;
#else
  return file.flush() && ::fsync(file.handle()) == 0;
#endif
}

QString FolderOf(const QString& path) { return QFileInfo(path).path(); }

}  // namespace

// A link to the file stays a link: what it points to is replaced.
IniFile::IniFile(const QString& path, std::chrono::milliseconds patience)
    : path_(path), patience_(patience) {
  const QString target = QFileInfo(path).canonicalFilePath();
  if (QFileInfo(target).isFile()) {
    path_ = target;
  }
}

std::optional<IniText> IniFile::Read() const {
  Loaded loaded = Load();
  if (loaded.state == State::Broken) {
    const FolderLock lock(FolderOf(path_), patience_);
    if (lock.IsHeld()) {
      // By now another program may have put a good one in its place.
      loaded = Load();
      if (loaded.state == State::Broken) {
        SetAside();
      }
    }
  }
  return loaded.state == State::Good ? std::optional(loaded.text) : std::nullopt;
}

void IniFile::Change(const std::function<void(IniText&)>& change) const {
  QDir().mkpath(FolderOf(path_));
  const FolderLock lock(FolderOf(path_), patience_);
  if (!lock.IsHeld()) {
    ThrowFault(QStringLiteral("another program is writing to it"));
  }
  Loaded loaded = Load();
  if (loaded.state == State::Unreadable) {
    ThrowFault(QStringLiteral("it cannot be read"));
  }
  if (loaded.state == State::Broken && !SetAside()) {
    ThrowFault(QStringLiteral("it is broken and cannot be set aside"));
  }
  change(loaded.text);
  Replace(loaded.text);
}

IniFile::Loaded IniFile::Load() const {
  const QFileInfo info(path_);
  if (!info.exists() && !info.isSymLink()) {
    return {};
  }
  if (!info.isFile() || !info.isReadable() || info.size() > kMostBytes) {
    return {State::Broken, {}};
  }
  QFile file(path_);
  if (!file.open(QIODevice::ReadOnly)) {
    return {State::Unreadable, {}};
  }
  const QByteArray bytes = file.read(kMostBytes);
  if (file.error() != QFile::NoError) {
    return {State::Unreadable, {}};
  }
  std::optional<IniText> text = IniText::Parse(bytes.toStdString());
  return text ? Loaded{State::Good, std::move(*text)} : Loaded{State::Broken, {}};
}

bool IniFile::SetAside() const {
  for (int number = 1;; ++number) {
    const QString aside = path_ + QStringLiteral(".broken-%1").arg(number);
    const QFileInfo taken(aside);
    if (!taken.exists() && !taken.isSymLink()) {
      return QDir().rename(path_, aside);
    }
  }
}

void IniFile::Replace(const IniText& text) const {
  // One name for all: what a writer that was killed left behind is written over by the next.
  QFile file(path_ + QStringLiteral(".new"));
  const QByteArray bytes = QByteArray::fromStdString(text.Text());
  // Unbuffered: a file that still holds what a full disk did not take is not removed.
  constexpr auto kMode = QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered;
  if (!file.open(kMode) || file.write(bytes) != bytes.size() || !Synchronise(file)) {
    const QString reason = file.errorString();
    file.remove();
    ThrowFault(reason);
  }
  if (const QFileInfo old(path_); old.exists()) {
    file.setPermissions(old.permissions());
  }
  file.close();
  std::error_code error;
  std::filesystem::rename(QFileInfo(file).filesystemFilePath(),
                          QFileInfo(path_).filesystemFilePath(), error);
  if (error) {
    file.remove();
    ThrowFault(QString::fromStdString(error.message()));
  }
}

void IniFile::ThrowFault(const QString& reason) const {
  throw base::Fault(base::FaultKind::File,
                    "cannot write \"" + path_.toStdString() + "\": " + reason.toStdString());
}

}  // namespace kelvara::qt
