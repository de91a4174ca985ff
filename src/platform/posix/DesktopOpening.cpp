#include "platform/qt/DesktopOpening.h"

#include <QDesktopServices>

#include "platform/posix/FileAddress.h"
#include "platform/qt/Text.h"

namespace kelvara::qt {

bool OpenDocument(const std::string& path) {
  return QDesktopServices::openUrl(posix::AddressOf(path));
}

bool OpenAddress(const std::string& address) {
  return QDesktopServices::openUrl(QUrl(ToQString(address)));
}

}  // namespace kelvara::qt
