#include "platform/widgets/QtDesktop.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

#include "platform/qt/QtFileSystem.h"
#include "platform/qt/Text.h"

namespace kelvara::widgets {
namespace {

/// Asking the system for input and timers costs more than drawing a cell. A user cannot tell
/// whether it is done at each cell or this often; what is posted within the program is served each
/// time.
constexpr qint64 kLookNanoseconds = 200'000;

}  // namespace

void QtBeeper::Beep() { QApplication::beep(); }

bool QtDocumentOpener::OpenDocument(const std::string& path) {
  return QDesktopServices::openUrl(
      QUrl::fromLocalFile(QFileInfo(qt::MachinePath(path)).absoluteFilePath()));
}

bool QtDocumentOpener::OpenAddress(const std::string& address) {
  return QDesktopServices::openUrl(QUrl(qt::ToQString(address)));
}

bool QtEventPump::ProcessEvents() {
  if (ending_) {
    return false;
  }
  if (!sinceLook_.isValid() || sinceLook_.nsecsElapsed() > kLookNanoseconds) {
    QCoreApplication::processEvents();
    sinceLook_.start();
  } else {
    QCoreApplication::sendPostedEvents();
  }
  return !ending_;
}

}  // namespace kelvara::widgets
