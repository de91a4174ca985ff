#include "platform/qt/UserFolders.h"

#include <QDir>
#include <QFile>

namespace kelvara::qt {

namespace {

QString Folder(const char* variable, const QString& inHome) {
  const QString folder = QFile::decodeName(qgetenv(variable));
  return QDir::isAbsolutePath(folder) ? folder : QDir::homePath() + inHome;
}

}  // namespace

QString UserConfigFolder() { return Folder("XDG_CONFIG_HOME", QStringLiteral("/.config")); }

QString UserDataFolder() { return Folder("XDG_DATA_HOME", QStringLiteral("/.local/share")); }

}  // namespace kelvara::qt
