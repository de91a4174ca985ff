#include "platform/qt/PathText.h"

#include <QUrl>
#include <algorithm>

#include "platform/posix/FileAddress.h"
#include "platform/qt/Text.h"

namespace kelvara::qt {

QString QStringFromPath(std::string_view path) { return ToFieldText(path); }

std::string PathFromQString(const QString& path) { return ToText(path); }

std::string ChosenPath(const QString& path, const QUrl& address) {
  // If a name is not valid text, only the URL from a desktop's own chooser keeps its bytes.
  if (path.contains(QChar(QChar::ReplacementCharacter)) && address.isLocalFile()) {
    return posix::LocalPath(address);
  }
  return ToText(path);
}

std::filesystem::path MachinePath(std::string_view path) {
  std::string bytes(path);
  std::replace(bytes.begin(), bytes.end(), '\\', '/');
  return bytes;
}

bool IsSamePath(const std::filesystem::path& one, const std::filesystem::path& other) {
  return one == other;
}

QString MessageText(std::string_view text) { return ToQString(text); }

}  // namespace kelvara::qt
