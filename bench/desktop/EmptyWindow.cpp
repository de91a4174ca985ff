// The smallest program with a window: shows an empty window, waits until it is painted and prints
// the resident memory in kilobytes.

#include <QApplication>
#include <QMainWindow>
#include <cstdio>

#include "desktop/FirstPaint.h"
#include "desktop/ResidentMemory.h"

int main(int argumentCount, char** arguments) {
  const QApplication application(argumentCount, arguments);
  QMainWindow window;
  window.resize(900, 620);
  const kelvara::bench::FirstPaint firstPaint([](QWidget&) {
    std::printf("%ld\n", kelvara::bench::ResidentKilobytes());
    std::fflush(stdout);
    std::_Exit(0);
  });
  window.show();
  return QApplication::exec();
}
