#pragma once

#include <QCoreApplication>
#include <QTimer>
#include <QWidget>

#include "support/WindowDriver.h"

namespace kelvara::test {

/// Lets the program end while a dialog is open: every event loop ends, and none runs any more until
/// this goes.
class EndOfProgram {
 public:
  explicit EndOfProgram(const char* dialog)
      : whenShown_(dialog, [](QWidget&) { QCoreApplication::exit(); }) {}
  ~EndOfProgram() {
    // Only the main event loop takes the end back, when it starts.
    QTimer::singleShot(0, [] { QCoreApplication::exit(); });
    QCoreApplication::exec();
  }
  EndOfProgram(const EndOfProgram&) = delete;
  EndOfProgram& operator=(const EndOfProgram&) = delete;

 private:
  WhenShown whenShown_;
};

}  // namespace kelvara::test
