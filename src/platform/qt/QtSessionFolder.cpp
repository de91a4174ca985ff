#include "platform/qt/QtSessionFolder.h"

#include <QDir>
#include <QFileInfo>

#include "platform/qt/LockedFiles.h"
#include "platform/qt/PathText.h"
#include "platform/qt/UserFolders.h"

namespace kelvara::qt {

QString UserSessionsFolder(std::string_view application) {
  const QString name = QString::fromUtf8(application.data(), qsizetype(application.size()));
  return QStringLiteral("%1/%2/sessions").arg(UserDataFolder(), name);
}

std::vector<platform::SessionFolder::Entry> QtSessionFolder::List() const {
  std::vector<Entry> entries;
  const QFileInfoList files = QDir(folder_).entryInfoList(QDir::Files | QDir::Hidden);
  for (const QFileInfo& file : files) {
    entries.push_back({file.fileName().toStdString(), static_cast<std::uint64_t>(file.size())});
  }
  return entries;
}

std::string QtSessionFolder::PathOf(const std::string& name) const {
  return PathFromQString(FilePath(name));
}

std::unique_ptr<platform::LockedFile> QtSessionFolder::Create(const std::string& name) {
  // A folder that cannot be made is noticed when the file cannot be.
  QDir().mkpath(folder_);
  return CreateLocked(FilePath(name));
}

std::unique_ptr<platform::LockedFile> QtSessionFolder::Open(const std::string& name) {
  return OpenLocked(FilePath(name));
}

QString QtSessionFolder::FilePath(const std::string& name) const {
  return folder_ + QLatin1Char('/') + QString::fromStdString(name);
}

}  // namespace kelvara::qt
