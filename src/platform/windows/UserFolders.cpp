#include "platform/qt/UserFolders.h"

#include <windows.h>

#include <shlobj.h>

#include <QDir>

namespace kelvara::qt {
namespace {

// The environment variable comes first: users know the folder by it, and can keep the settings of a
// portable copy elsewhere by setting it.
QString Folder(const char* variable, REFKNOWNFOLDERID id) {
  const QString folder = qEnvironmentVariable(variable);
  if (QDir::isAbsolutePath(folder)) {
    return QDir::fromNativeSeparators(folder);
  }
  PWSTR known = nullptr;
  ::SHGetKnownFolderPath(id, 0, nullptr, &known);
  const QString knownFolder = QString::fromWCharArray(known == nullptr ? L"" : known);
  ::CoTaskMemFree(known);
  return QDir::fromNativeSeparators(knownFolder);
}

}  // namespace

QString UserConfigFolder() { return Folder("APPDATA", FOLDERID_RoamingAppData); }

QString UserDataFolder() { return Folder("LOCALAPPDATA", FOLDERID_LocalAppData); }

}  // namespace kelvara::qt
