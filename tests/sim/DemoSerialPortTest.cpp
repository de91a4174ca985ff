#include "sim/DemoSerialPort.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>

#include "sim/BeltpackRig.h"
#include "support/Doubles.h"
#include "support/Faults.h"

namespace kelvara::sim {
namespace {

using test::CountLines;
using test::IsWholeReport;

constexpr std::size_t kAll = std::numeric_limits<std::size_t>::max();

/// A timer that ticks only when the test calls `Tick`.
class HandTimer : public platform::Timer {
 public:
  void SwitchOn() override { isOn_ = true; }
  void SwitchOff() override { isOn_ = false; }
  bool IsOn() const override { return isOn_; }
  void SetTick(std::function<void()> tick) override { tick_ = std::move(tick); }

  bool HasTick() const { return static_cast<bool>(tick_); }
  void Tick() {
    if (isOn_ && tick_) {
      tick_();
    }
  }

 private:
  bool isOn_ = false;
  std::function<void()> tick_;
};

class DemoSerialPortTest : public ::testing::Test {
 protected:
  DemoSerialPortTest() {
    port.SetReceiveNotification([this] {
      ++notifications;
      if (reads) {
        received += port.Input(kAll);
      }
    });
  }

  /// Lets time pass while the delivery timer ticks.
  void Pass(int milliseconds, int tickMs = kDeliveryMilliseconds) {
    for (int passed = 0; passed < milliseconds; passed += tickMs) {
      clock.Advance(tickMs / 1000.0);
      timer.Tick();
    }
  }

  void Open() { port.SetOpen(true); }

  std::string Ask(std::string_view command) {
    received.clear();
    port.Output(command);
    port.Output("\r");
    Pass(3000);
    return received;
  }

  Beltpack beltpack{DemoSite()};
  test::ManualClock clock;
  HandTimer timer;
  DemoSerialPort port{beltpack, clock, timer};
  std::string received;
  int notifications = 0;
  bool reads = true;
};

TEST_F(DemoSerialPortTest, IsClosedAtFirstAndAnyPortNumberOpens) {
  EXPECT_FALSE(port.IsOpen());
  EXPECT_FALSE(timer.IsOn());
  for (std::int16_t number = 1; number <= 12; ++number) {
    port.SetPortNumber(number);
    Open();
    EXPECT_EQ(port.PortNumber(), number);
    EXPECT_TRUE(port.IsOpen());
    EXPECT_TRUE(timer.IsOn());
    port.SetOpen(false);
    EXPECT_FALSE(port.IsOpen());
    EXPECT_FALSE(timer.IsOn());
  }
}

TEST_F(DemoSerialPortTest, TakesAnyRateButNoOtherSettings) {
  for (const char* settings : {"4800,n,8,1", "19200,n,8,1", "57600,n,8,1"}) {
    port.SetSettings(settings);
    EXPECT_EQ(port.Settings(), settings);
  }
  for (const char* settings :
       {"", "19200", ",n,8,1", "19200,e,8,1", "fast,n,8,1", "19200,n,8,1,"}) {
    EXPECT_EQ(test::FaultOf([&] { port.SetSettings(settings); }), base::FaultKind::Port)
        << settings;
  }
  EXPECT_EQ(port.Settings(), "57600,n,8,1");
}

TEST_F(DemoSerialPortTest, DeliversTheAnswerInPiecesWithANotificationEach) {
  Open();
  EXPECT_TRUE(IsWholeReport(Ask("rfps")));
  EXPECT_GT(notifications, 3);
  EXPECT_EQ(Ask("cho"), "cho ok\r\n");
  notifications = 0;
  Pass(10000);
  EXPECT_EQ(notifications, 0);
}

TEST_F(DemoSerialPortTest, InputWaitsUntilItIsRead) {
  reads = false;
  Open();
  Ask("cho");
  EXPECT_EQ(port.InputCount(), 8U);
  EXPECT_EQ(port.Input(1), "c");
  EXPECT_EQ(port.Input(2), "ho");
  EXPECT_EQ(port.InputCount(), 5U);
  EXPECT_EQ(port.Input(kAll), " ok\r\n");
  EXPECT_EQ(port.InputCount(), 0U);
  EXPECT_EQ(port.Input(kAll), "");
}

TEST_F(DemoSerialPortTest, OneThousandAndTwentyFourCharactersWaitAndLaterOnesAreLost) {
  reads = false;
  beltpack.SetFault({LineFault::Flood});
  Open();
  Ask("rfps");
  EXPECT_EQ(port.InputCount(), 1024U);
  const std::string kept = port.Input(kAll);
  Beltpack same{DemoSite()};
  same.SetFault({LineFault::Flood});
  same.Receive("rfps\r", 0);
  EXPECT_EQ(kept, same.TakeOutput(1000).substr(0, 1024));
}

TEST_F(DemoSerialPortTest, AProgramThatReadsGetsEverythingEvenWithAFastClock) {
  Open();
  for (int poll = 0; poll < 20; ++poll) {
    received.clear();
    port.Output("rfps\rrfps\rrfps\r");
    Pass(6000, 6000);
    EXPECT_EQ(CountLines(received), 3U * 29U);
  }
}

TEST_F(DemoSerialPortTest, DiscardingInputDropsOnlyWhatHasArrived) {
  reads = false;
  Open();
  port.Output("cho\r");
  // Four characters have arrived; the timer has not ticked yet.
  clock.Advance(0.0425);
  port.DiscardInput();
  EXPECT_EQ(port.InputCount(), 0U);
  Pass(1000);
  EXPECT_EQ(port.Input(kAll), " ok\r\n");
  Ask("cho");
  port.DiscardInput();
  EXPECT_EQ(port.InputCount(), 0U);
  Pass(1000);
  EXPECT_EQ(port.InputCount(), 0U);
}

TEST_F(DemoSerialPortTest, ClosingDropsWaitingInputAndOpeningDropsWhatCameMeanwhile) {
  reads = false;
  Open();
  Ask("cho");
  port.Output("rfps\r");
  port.SetOpen(false);
  EXPECT_EQ(port.InputCount(), 0U);
  clock.Advance(10);
  port.Output("rfps\r");
  Open();
  Pass(3000);
  EXPECT_EQ(port.InputCount(), 0U);
}

TEST_F(DemoSerialPortTest, OpeningAndClosingTwiceIsHarmless) {
  Open();
  port.Output("cho\r");
  Open();
  Pass(1000);
  EXPECT_EQ(received, "cho ok\r\n");
  port.SetOpen(false);
  port.SetOpen(false);
  EXPECT_FALSE(port.IsOpen());
}

TEST_F(DemoSerialPortTest, ABreakIsOnlyAFlag) {
  Open();
  EXPECT_FALSE(port.IsBreak());
  port.SetBreak(true);
  EXPECT_TRUE(port.IsBreak());
  EXPECT_EQ(Ask("cho"), "cho ok\r\n");
  port.SetBreak(false);
  EXPECT_FALSE(port.IsBreak());
}

TEST_F(DemoSerialPortTest, TheProgramMayCloseThePortWhileItReads) {
  Open();
  port.SetReceiveNotification([this] {
    received += port.Input(1);
    port.SetOpen(false);
  });
  port.Output("rfps\r");
  Pass(3000, 3000);
  EXPECT_EQ(received, "r");
  EXPECT_EQ(port.InputCount(), 0U);
}

TEST_F(DemoSerialPortTest, TheProgramMayReplaceTheNotificationWhileItReads) {
  Open();
  port.SetReceiveNotification([this] {
    received += "first:" + port.Input(kAll);
    port.SetReceiveNotification([this] { received += "second:" + port.Input(kAll); });
  });
  port.Output("cho\r");
  Pass(3000, 3000);
  port.Output("bho\r");
  Pass(3000, 3000);
  EXPECT_EQ(received, "first:cho ok\r\nsecond:bho ok\r\n");
}

TEST_F(DemoSerialPortTest, ATickDuringAReadKeepsTheOrder) {
  std::size_t deepest = 0;
  std::size_t depth = 0;
  port.SetReceiveNotification([&] {
    deepest = std::max(deepest, ++depth);
    received += port.Input(kAll);
    clock.Advance(0.01);
    timer.Tick();
    --depth;
  });
  Open();
  EXPECT_TRUE(IsWholeReport(Ask("rfps")));
  EXPECT_GT(deepest, 10U);
}

TEST_F(DemoSerialPortTest, ADeviceThatVanishedIsBackOnlyWhenItIsRestored) {
  Open();
  beltpack.Unplug();
  Pass(100);
  EXPECT_TRUE(port.IsOpen());
  EXPECT_EQ(Ask("cho"), "");
  port.RestoreDevice();
  EXPECT_EQ(Ask("cho"), "");
  beltpack.Plug();
  EXPECT_EQ(Ask("cho"), "");
  port.RestoreDevice();
  EXPECT_EQ(Ask("cho"), "cho ok\r\n");
}

TEST_F(DemoSerialPortTest, AHangUpEndsByItself) {
  beltpack.SetFault({LineFault::HangUp, 1, true});
  Open();
  int polls = 0;
  while (Ask("cho").empty() && polls < 100) {
    port.RestoreDevice();
    ++polls;
  }
  EXPECT_EQ(polls, 4);
}

TEST_F(DemoSerialPortTest, APortWithoutItsDeviceDoesNotOpen) {
  beltpack.Unplug();
  EXPECT_EQ(test::FaultOf([&] { Open(); }), base::FaultKind::Port);
  EXPECT_FALSE(port.IsOpen());
  EXPECT_FALSE(timer.IsOn());
  beltpack.Plug();
  Open();
  EXPECT_EQ(Ask("cho"), "cho ok\r\n");
}

TEST_F(DemoSerialPortTest, ReleasesTheTimerWhenItIsDestroyed) {
  HandTimer ownTimer;
  {
    DemoSerialPort ownPort(beltpack, clock, ownTimer);
    ownPort.SetOpen(true);
    EXPECT_TRUE(ownTimer.HasTick());
  }
  EXPECT_FALSE(ownTimer.IsOn());
  EXPECT_FALSE(ownTimer.HasTick());
}

}  // namespace
}  // namespace kelvara::sim
