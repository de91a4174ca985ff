#include "platform/qt/UserFolders.h"

#include <QDir>
#include <QFile>

namespace kelvara::qt {

QString UserConfigFolder() {
  const QString folder = QFile::decodeName(qgetenv("XDG_CONFIG_HOME"));
  return QDir::isAbsolutePath(folder) ? folder : QDir::homePath() + QStringLiteral("/.config");
}

}  // namespace kelvara::qt
