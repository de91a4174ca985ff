#pragma once

#include <QCoreApplication>
#include <QTimer>
#include <QWidget>

#include "support/WindowDriver.h"

namespace kelvara::test {

/// Ends the program while a dialog is open: every event loop ends, and none runs again until this
/// is destroyed.
class EndOfProgram {
 public:
  explicit EndOfProgram(const char* dialog)
      : whenShown_(dialog, [](QWidget&) { QCoreApplication::exit(); }) {}
  ~EndOfProgram() {
    // Only starting the main event loop resets the request to exit.
    QTimer::singleShot(0, [] { QCoreApplication::exit(); });
    QCoreApplication::exec();
  }
  EndOfProgram(const EndOfProgram&) = delete;
  EndOfProgram& operator=(const EndOfProgram&) = delete;

 private:
  WhenShown whenShown_;
};

}  // namespace kelvara::test
