#include "platform/qt/IniFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "base/Fault.h"
#include "platform/qt/DurableFile.h"
#include "platform/qt/FolderLock.h"
#include "platform/qt/PathText.h"
#include "platform/qt/Text.h"

namespace kelvara::qt {
namespace {

QString FolderOf(const QString& path) { return QFileInfo(path).path(); }

}  // namespace

// A link to the file stays a link; the file that it points to is replaced.
IniFile::IniFile(const QString& path, std::chrono::milliseconds patience)
    : path_(path), patience_(patience) {
  const QString target = QFileInfo(path).canonicalFilePath();
  if (QFileInfo(target).isFile()) {
    path_ = target;
  }
}

IniText IniFile::Read() const {
  try {
    std::optional<IniText> text = Load();
    if (!text) {
      const FolderLock lock(FolderOf(path_), patience_);
      if (lock.IsHeld()) {
        // Another program may have replaced the file in the meantime.
        text = Load();
        if (!text) {
          SetAside();
        }
      }
    }
    return text.value_or(IniText());
  } catch (const base::Fault&) {
    return {};
  }
}

void IniFile::Change(const std::function<void(IniText&)>& change) const {
  QDir().mkpath(FolderOf(path_));
  const FolderLock lock(FolderOf(path_), patience_);
  if (!lock.IsHeld()) {
    ThrowFault(QStringLiteral("another program is writing to it"));
  }
  const std::optional<IniText> loaded = Load();
  if (!loaded && !SetAside()) {
    ThrowFault(QStringLiteral("it is broken and cannot be set aside"));
  }
  IniText text = loaded.value_or(IniText());
  change(text);
  Replace(text);
}

std::optional<IniText> IniFile::Load() const {
  const QFileInfo info(path_);
  if (!info.exists() && !info.isSymLink()) {
    return IniText();
  }
  if (!info.isFile() || !info.isReadable()) {
    return std::nullopt;
  }
  QFile file(path_);
  const bool isOpen = OpenShared(file, patience_);
  const QByteArray bytes = isOpen ? file.readAll() : QByteArray();
  if (!isOpen || file.error() != QFile::NoError) {
    ThrowFault(QStringLiteral("it cannot be read"));
  }
  return IniText::Parse(bytes.toStdString());
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
  // All writers use the same temporary name, so that the next one overwrites what a killed one left
  // behind.
  QFile file(path_ + QStringLiteral(".new"));
  const QByteArray bytes = QByteArray::fromStdString(text.Text());
  // Unbuffered, because a file is not removed while its buffer holds data that a full disk refused.
  constexpr auto kMode = QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered;
  if (!file.open(kMode) || file.write(bytes) != bytes.size() || !Synchronise(file)) {
    const QString reason = file.errorString();
    file.remove();
    ThrowFault(reason);
  }
  file.close();
  const QString reason = PutInPlace(file.fileName(), path_, patience_);
  if (!reason.isEmpty()) {
    file.remove();
    ThrowFault(reason);
  }
}

void IniFile::ThrowFault(const QString& reason) const {
  throw base::Fault(base::FaultKind::File,
                    "cannot write \"" + PathFromQString(path_) + "\": " + ToText(reason));
}

}  // namespace kelvara::qt
