#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <chrono>
#include <thread>

#include "ports/windows/BeltpackPort.h"
#include "ports/windows/OpenHandles.h"

namespace kelvara::test {
namespace {

using testing::StartsWith;

double ProcessorSeconds() {
  FILETIME created{};
  FILETIME ended{};
  FILETIME kernel{};
  FILETIME user{};
  ::GetProcessTimes(::GetCurrentProcess(), &created, &ended, &kernel, &user);
  constexpr double kTicksPerSecond = 1e7;
  return (static_cast<double>(kernel.dwLowDateTime) + static_cast<double>(user.dwLowDateTime)) /
         kTicksPerSecond;
}

class SerialPortLossTest : public BeltpackPortTest {
 protected:
  void SetUp() override {
    BeltpackPortTest::SetUp();
    if (!HasFatalFailure()) {
      Open();
    }
  }
  void TearDown() override { Control("plug"); }

  void Unplug() {
    Control("unplug");
    // A tick of the polling notices it at the latest.
    ASSERT_TRUE(RunUntil([this] {
      port_.DiscardInput();
      return !port_.HasDevice();
    }));
  }

  bool IsBackAfterPlugging() {
    Control("plug");
    return RunUntil([this] {
      port_.RestoreDevice();
      return port_.HasDevice();
    });
  }
};

TEST_F(SerialPortLossTest, AnUnpluggedDeviceIsNoticedWithoutATickAndUsesNoProcessorTime) {
  ASSERT_TRUE(ReadsReport());
  Control("unplug");
  ASSERT_TRUE(RunUntil([this] { return !port_.HasDevice(); }));
  EXPECT_TRUE(port_.IsOpen());
  const double before = ProcessorSeconds();
  RunEvents(1000);
  EXPECT_LT(ProcessorSeconds() - before, 0.2);
}

TEST_F(SerialPortLossTest, TheDeviceIsReopenedWhenItIsBack) {
  ASSERT_TRUE(ReadsReport());
  port_.SetSettings("57600,n,8,1");
  port_.SetBreak(true);
  Unplug();
  for (int tick = 0; tick < 3; ++tick) {
    port_.RestoreDevice();
    EXPECT_FALSE(port_.HasDevice());
    EXPECT_TRUE(port_.IsOpen());
  }
  port_.Output("lost");
  EXPECT_EQ(port_.InputCount(), 0U);
  ASSERT_TRUE(IsBackAfterPlugging());
  EXPECT_TRUE(port_.IsBreak());
  EXPECT_EQ(port_.Settings(), "57600,n,8,1");
  port_.SetBreak(false);
  EXPECT_TRUE(ReadsReport());
}

TEST_F(SerialPortLossTest, InputFromBeforeTheLossIsStillDelivered) {
  bool busy = true;
  port_.SetReceiveNotification([&] { received_ += busy ? "" : port_.Input(4); });
  port_.Output("rfps\r");
  RunEvents(kLongestAnswerMilliseconds);
  const std::size_t count = port_.InputCount();
  ASSERT_GT(count, 500U);
  Control("unplug");
  ASSERT_TRUE(RunUntil([this] { return !port_.HasDevice(); }));
  EXPECT_EQ(port_.InputCount(), count);
  busy = false;
  port_.SetReceiveNotification([this] { received_ += port_.Input(4); });
  EXPECT_TRUE(RunUntil([&] { return received_.size() == count; }));
}

TEST_F(SerialPortLossTest, SettingsAreRefusedByADeviceThatIsGone) {
  Control("unplug");
  // Without events, the port has not noticed it.
  std::this_thread::sleep_for(std::chrono::milliseconds(500));
  ASSERT_TRUE(port_.HasDevice());
  try {
    port_.SetSettings("9600,n,8,1");
    ADD_FAILURE() << "accepted";
  } catch (const base::Fault& fault) {
    EXPECT_EQ(fault.Kind(), base::FaultKind::Port);
    EXPECT_THAT(fault.what(),
                StartsWith("\"" + com_ + "\" cannot take the settings \"9600,n,8,1\": "));
  }
  EXPECT_EQ(port_.Settings(), "19200,n,8,1");
  ASSERT_TRUE(RunUntil([this] { return !port_.HasDevice(); }));
  EXPECT_TRUE(IsBackAfterPlugging());
}

TEST_F(SerialPortLossTest, ALostPortCanBeClosedAndReopened) {
  Unplug();
  port_.SetOpen(false);
  EXPECT_NE(FaultOfOpening(port_), "");
  EXPECT_FALSE(port_.IsOpen());
  Control("plug");
  EXPECT_TRUE(RunUntil([this] { return FaultOfOpening(port_).empty(); }));
  EXPECT_TRUE(ReadsReport());
}

TEST_F(SerialPortLossTest, ManyLossesLeaveNoHandleOpen) {
  Unplug();
  ASSERT_TRUE(IsBackAfterPlugging());
  const std::ptrdiff_t before = OpenHandles();
  for (int loss = 0; loss < 10; ++loss) {
    Unplug();
    port_.RestoreDevice();
    ASSERT_TRUE(IsBackAfterPlugging());
    ASSERT_TRUE(ReadsReport());
  }
  EXPECT_LE(OpenHandles(), before);
}

}  // namespace
}  // namespace kelvara::test
