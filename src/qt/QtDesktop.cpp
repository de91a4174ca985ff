#include "qt/QtDesktop.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

#include "qt/QtFileSystem.h"
#include "qt/Text.h"

namespace kelvara::qt {

void QtBeeper::Beep() { QApplication::beep(); }

bool QtDocumentOpener::OpenDocument(const std::string& path) {
  return QDesktopServices::openUrl(
      QUrl::fromLocalFile(QFileInfo(MachinePath(path)).absoluteFilePath()));
}

bool QtDocumentOpener::OpenAddress(const std::string& address) {
  return QDesktopServices::openUrl(QUrl(ToQString(address)));
}

bool QtEventPump::ProcessEvents() {
  if (!ending_) {
    QCoreApplication::processEvents();
  }
  return !ending_;
}

}  // namespace kelvara::qt
