#include "platform/widgets/QtDesktop.h"

#include <QApplication>

#include "platform/qt/DesktopOpening.h"

namespace kelvara::widgets {
namespace {

/// Checking the system for input and timers costs more than drawing a cell, and a user cannot tell
/// this interval from a check at every cell. Events posted within the program are processed every
/// time.
constexpr qint64 kLookNanoseconds = 200'000;

}  // namespace

void QtBeeper::Beep() { QApplication::beep(); }

bool QtDocumentOpener::OpenDocument(const std::string& path) { return qt::OpenDocument(path); }

bool QtDocumentOpener::OpenAddress(const std::string& address) { return qt::OpenAddress(address); }

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
