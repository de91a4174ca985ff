#include "platform/qt/DurableFile.h"

#include <unistd.h>

#include <QFileInfo>
#include <filesystem>
#include <system_error>

namespace kelvara::qt {

bool OpenShared(QFile& file, std::chrono::milliseconds /*patience*/) {
  return file.open(QIODevice::ReadOnly);
}

bool Synchronise(QFile& file) { return ::fsync(file.handle()) == 0; }

QString PutInPlace(const QString& newPath, const QString& path,
                   std::chrono::milliseconds /*patience*/) {
  if (const QFileInfo old(path); old.exists()) {
    QFile::setPermissions(newPath, old.permissions());
  }
  std::error_code error;
  std::filesystem::rename(QFileInfo(newPath).filesystemFilePath(),
                          QFileInfo(path).filesystemFilePath(), error);
  return error ? QString::fromStdString(error.message()) : QString();
}

}  // namespace kelvara::qt
