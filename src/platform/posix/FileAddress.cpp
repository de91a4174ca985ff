#include "platform/posix/FileAddress.h"

#include <QFileInfo>
#include <filesystem>

#include "platform/qt/PathText.h"
#include "platform/qt/Text.h"

namespace kelvara::posix {

QUrl AddressOf(const std::string& path) {
  const std::filesystem::path machinePath = qt::MachinePath(path);
  if (qt::ToText(qt::ToQString(path)) == path) {
    return QUrl::fromLocalFile(QFileInfo(machinePath).absoluteFilePath());
  }
  // The bytes of a name that is not valid text are percent-encoded one by one.
  const std::string whole = std::filesystem::absolute(machinePath).lexically_normal().string();
  return QUrl::fromEncoded("file://" + QByteArray::fromStdString(whole).toPercentEncoding("/"));
}

std::string LocalPath(const QUrl& address) {
  const QByteArray path = address.path(QUrl::FullyEncoded).toLatin1();
  return QByteArray::fromPercentEncoding(path).toStdString();
}

}  // namespace kelvara::posix
