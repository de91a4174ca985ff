#include "platform/qt/QtSettingsStore.h"

#include "platform/qt/IniFile.h"
#include "platform/qt/UserFolders.h"

namespace kelvara::qt {

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
