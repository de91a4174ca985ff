#include "platform/widgets/QtDesktop.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <algorithm>
#include <filesystem>

#include "platform/qt/QtFileSystem.h"
#include "platform/qt/Text.h"

namespace kelvara::widgets {
namespace {

/// Checking the system for input and timers costs more than drawing a cell, and a user cannot tell
/// this interval from a check at every cell. Events posted within the program are processed every
/// time.
constexpr qint64 kLookNanoseconds = 200'000;

}  // namespace

QUrl AddressOf(const std::string& path) {
  if (qt::ToText(qt::ToQString(path)) == path) {
    return QUrl::fromLocalFile(QFileInfo(qt::MachinePath(path)).absoluteFilePath());
  }
  // The bytes of a name that is not valid text are percent-encoded one by one.
  std::string machinePath = path;
  std::replace(machinePath.begin(), machinePath.end(), '\\', '/');
  const std::string whole = std::filesystem::absolute(machinePath).lexically_normal().string();
  return QUrl::fromEncoded("file://" + QByteArray::fromStdString(whole).toPercentEncoding("/"));
}

void QtBeeper::Beep() { QApplication::beep(); }

bool QtDocumentOpener::OpenDocument(const std::string& path) {
  return QDesktopServices::openUrl(AddressOf(path));
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
