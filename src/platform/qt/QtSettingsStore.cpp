#include "platform/qt/QtSettingsStore.h"

#include <QDir>

#include "platform/qt/IniFile.h"

namespace kelvara::qt {
namespace {

QString UserConfigFolder() {
#ifdef Q_OS_WIN
  return qEnvironmentVariable("APPDATA");
#else
  const QString folder = QFile::decodeName(qgetenv("XDG_CONFIG_HOME"));
  return QDir::isAbsolutePath(folder) ? folder : QDir::homePath() + QStringLiteral("/.config");
#endif
}

}  // namespace

QString UserSettingsFile(std::string_view application) {
  const QString name = QString::fromUtf8(application.data(), qsizetype(application.size()));
  return QStringLiteral("%1/%2/%2.ini").arg(UserConfigFolder(), name);
}

std::string QtSettingsStore::Read(std::string_view key, std::string_view defaultText) const {
  const IniText settings = IniFile(file_, patience_).Read();
  return settings.Value(section_, key).value_or(std::string(defaultText));
}

void QtSettingsStore::Write(std::string_view key, std::string_view text) {
  IniFile(file_, patience_).Change([&](IniText& settings) {
    settings.SetValue(section_, key, text);
  });
}

}  // namespace kelvara::qt
