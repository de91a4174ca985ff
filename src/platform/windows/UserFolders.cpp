#include "platform/qt/UserFolders.h"

#include <windows.h>

#include <shlobj.h>

#include <QDir>

namespace kelvara::qt {

// The environment variable comes first: users know the folder by it, and can keep the settings of a
// portable copy elsewhere by setting it.
QString UserConfigFolder() {
  const QString folder = qEnvironmentVariable("APPDATA");
  if (QDir::isAbsolutePath(folder)) {
    return QDir::fromNativeSeparators(folder);
  }
  PWSTR known = nullptr;
  ::SHGetKnownFolderPath(FOLDERID_RoamingAppData, 0, nullptr, &known);
  const QString knownFolder = QString::fromWCharArray(known == nullptr ? L"" : known);
  ::CoTaskMemFree(known);
  return QDir::fromNativeSeparators(knownFolder);
}

}  // namespace kelvara::qt
