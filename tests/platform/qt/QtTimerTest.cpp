#include "platform/qt/QtTimer.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

#include "support/EventLoop.h"

namespace kelvara::test {
namespace {

using qt::QtTimer;

TEST(QtTimerTest, TicksAtItsIntervalWhileOn) {
  QtTimer timer(50);
  int ticks = 0;
  timer.SetTick([&] { ++ticks; });
  EXPECT_FALSE(timer.IsOn());
  RunEvents(120);
  EXPECT_EQ(ticks, 0);
  QElapsedTimer clock;
  clock.start();
  timer.SwitchOn();
  EXPECT_TRUE(timer.IsOn());
  ASSERT_TRUE(RunUntil([&] { return ticks == 4; }));
  EXPECT_GE(clock.elapsed(), 195);
  EXPECT_TRUE(timer.IsOn());
  timer.SwitchOff();
  EXPECT_FALSE(timer.IsOn());
  RunEvents(120);
  EXPECT_EQ(ticks, 4);
}

TEST(QtTimerTest, RunsWithoutATickHandler) {
  QtTimer timer(1);
  timer.SwitchOn();
  RunEvents(20);
  EXPECT_TRUE(timer.IsOn());
}

TEST(QtTimerTest, DrivesAWindowsTimerPrecisely) {
  QTimer windowsTimer;
  windowsTimer.setSingleShot(true);
  windowsTimer.start(1);
  int ticks = 0;
  QtTimer timer(windowsTimer, 3000);
  timer.SetTick([&] { ++ticks; });
  EXPECT_FALSE(windowsTimer.isActive());
  EXPECT_FALSE(windowsTimer.isSingleShot());
  EXPECT_EQ(windowsTimer.interval(), 3000);
  EXPECT_EQ(windowsTimer.timerType(), Qt::PreciseTimer);
  timer.SwitchOn();
  EXPECT_TRUE(windowsTimer.isActive());
  windowsTimer.stop();
  EXPECT_FALSE(timer.IsOn());
  windowsTimer.start();
  EXPECT_TRUE(timer.IsOn());
}

TEST(QtTimerTest, SwitchingOnDoesNotRestart) {
  QTimer windowsTimer;
  QtTimer timer(windowsTimer, 10000);
  timer.SwitchOn();
  QThread::msleep(300);
  timer.SwitchOn();
  EXPECT_LE(windowsTimer.remainingTime(), 9700);
  timer.SwitchOff();
  timer.SwitchOn();
  EXPECT_GT(windowsTimer.remainingTime(), 9700);
}

TEST(QtTimerTest, ATickFromBeforeSwitchingOffIsDropped) {
  QTimer windowsTimer;
  QtTimer timer(windowsTimer, 10000);
  int ticks = 0;
  timer.SetTick([&] { ++ticks; });
  // The signal simulates the end of an interval.
  const auto endInterval = [&] { QMetaObject::invokeMethod(&windowsTimer, "timeout"); };
  timer.SwitchOn();
  endInterval();
  timer.SwitchOff();
  timer.SwitchOn();
  RunEvents(20);
  EXPECT_EQ(ticks, 0);
  endInterval();
  RunEvents(20);
  EXPECT_EQ(ticks, 1);
  endInterval();
  windowsTimer.stop();
  RunEvents(20);
  EXPECT_EQ(ticks, 1);
}

TEST(QtTimerTest, TicksContinueWhileAnEarlierOneWaits) {
  QtTimer timer(20);
  int ticks = 0;
  bool answered = false;
  timer.SetTick([&] {
    if (++ticks == 1) {
      // Simulates a question to the user, which runs its own event loop until it is answered.
      EXPECT_TRUE(RunUntil([&] { return ticks >= 4; }));
      answered = true;
    }
  });
  timer.SwitchOn();
  EXPECT_TRUE(RunUntil([&] { return answered; }));
}

TEST(QtTimerTest, LateTicksDoNotPileUp) {
  QtTimer timer(10);
  int ticks = 0;
  timer.SetTick([&] { ++ticks; });
  timer.SwitchOn();
  QThread::msleep(200);
  QCoreApplication::processEvents();
  QCoreApplication::processEvents();
  EXPECT_LE(ticks, 3);
}

TEST(QtTimerTest, StaysOffOnceTheWindowsTimerIsDestroyed) {
  auto windowsTimer = std::make_unique<QTimer>();
  QtTimer timer(*windowsTimer, 1);
  timer.SwitchOn();
  windowsTimer.reset();
  EXPECT_FALSE(timer.IsOn());
  timer.SwitchOn();
  EXPECT_FALSE(timer.IsOn());
  timer.SwitchOff();
}

TEST(QtTimerTest, MayBeDestroyedWithATickPending) {
  int ticks = 0;
  QTimer windowsTimer;
  {
    QtTimer timer(windowsTimer, 10000);
    timer.SetTick([&] { ++ticks; });
    timer.SwitchOn();
    QMetaObject::invokeMethod(&windowsTimer, "timeout");
  }
  RunEvents(20);
  EXPECT_EQ(ticks, 0);
}

}  // namespace
}  // namespace kelvara::test
