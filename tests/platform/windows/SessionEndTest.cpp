#include <gtest/gtest.h>
#include <windows.h>

#include <QWidget>

#include "platform/qt/StopSignal.h"

namespace kelvara::test {
namespace {

LRESULT Send(QWidget& window, UINT message, WPARAM isEnding) {
  return ::SendMessageW(reinterpret_cast<HWND>(window.winId()), message, isEnding, 0);
}

TEST(SessionEndTest, StopsTheProgramBeforeItsWindowsAnswer) {
  int stops = 0;
  const std::shared_ptr<void> stopSignal = qt::AtStopSignal([&] { ++stops; });
  QWidget window;
  window.show();
  EXPECT_TRUE(Send(window, WM_QUERYENDSESSION, FALSE)) << "the session may end";
  Send(window, WM_ENDSESSION, FALSE);
  EXPECT_EQ(stops, 0) << "another program has kept the session from ending";
  Send(window, WM_ENDSESSION, TRUE);
  EXPECT_EQ(stops, 1);
}

}  // namespace
}  // namespace kelvara::test
