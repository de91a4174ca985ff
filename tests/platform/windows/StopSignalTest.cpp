#include "platform/qt/StopSignal.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QThread>

#include "platform/windows/OwnProcess.h"

namespace kelvara::test {
namespace {

/// Processes events until `isDone` or 5 seconds have passed.
template <typename Condition>
void ProcessEventsUntil(Condition isDone) {
  QElapsedTimer waiting;
  waiting.start();
  while (!isDone() && waiting.elapsed() < 5000) {
    QCoreApplication::processEvents();
    QThread::msleep(5);
  }
}

TEST(StopSignalTest, ComesFromTheEventLoopAfterAKeyOfTheConsole) {
  ::FreeConsole();
  ASSERT_TRUE(::AllocConsole()) << ::GetLastError();
  for (const DWORD key : {CTRL_C_EVENT, CTRL_BREAK_EVENT}) {
    int stops = 0;
    const std::shared_ptr<void> stopSignal = qt::AtStopSignal([&] { ++stops; });
    if (::GenerateConsoleCtrlEvent(key, 0) == 0 && ::GetLastError() == ERROR_INVALID_HANDLE) {
      ::FreeConsole();
      GTEST_SKIP() << "needs a system that can press keys of a console for a program";
    }
    QThread::msleep(200);
    EXPECT_EQ(stops, 0);
    ProcessEventsUntil([&] { return stops > 0; });
    EXPECT_EQ(stops, 1) << key;
  }
  ::FreeConsole();
}

TEST(StopSignalTest, ComesWhenTheSessionEndsButNotWhenItGoesOn) {
  int stops = 0;
  const std::shared_ptr<void> stopSignal = qt::AtStopSignal([&] { ++stops; });
  const HWND window = ::CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPED, 0, 0, 1, 1, nullptr,
                                        nullptr, ::GetModuleHandleW(nullptr), nullptr);
  ASSERT_NE(window, nullptr);
  ::PostMessageW(window, WM_ENDSESSION, FALSE, 0);
  QCoreApplication::processEvents();
  EXPECT_EQ(stops, 0) << "another program has kept the session from ending";
  ::PostMessageW(window, WM_ENDSESSION, TRUE, 0);
  ProcessEventsUntil([&] { return stops > 0; });
  EXPECT_EQ(stops, 1);
  ::DestroyWindow(window);
}

}  // namespace
}  // namespace kelvara::test
