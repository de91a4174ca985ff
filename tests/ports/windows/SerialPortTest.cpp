#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QElapsedTimer>

#include "ports/windows/BeltpackPort.h"
#include "ports/windows/OpenHandles.h"

namespace kelvara::test {
namespace {

using testing::HasSubstr;

class SerialPortTest : public BeltpackPortTest {};

TEST_F(SerialPortTest, ReadsReports) {
  Open();
  for (int report = 0; report < 5; ++report) {
    ASSERT_TRUE(ReadsReport()) << received_;
  }
}

TEST_F(SerialPortTest, AcceptsEveryRateOfTheDialog) {
  Open();
  for (const char* rate : {"4800", "9600", "19200", "28800", "38400", "57600"}) {
    const std::string settings = std::string(rate) + ",n,8,1";
    try {
      port_.SetSettings(settings);
      EXPECT_EQ(port_.Settings(), settings);
    } catch (const base::Fault& fault) {
      // A port has no rate between those of its hardware.
      EXPECT_STREQ(rate, "28800") << fault.what();
    }
    EXPECT_TRUE(ReadsReport()) << rate;
  }
}

TEST_F(SerialPortTest, RefusesSettingsAndKeepsTheEarlierOnes) {
  Open();
  for (const char* settings : {"9600,e,8,1", "9600", "0,n,8,1"}) {
    try {
      port_.SetSettings(settings);
      ADD_FAILURE() << "accepted \"" << settings << "\"";
    } catch (const base::Fault& fault) {
      EXPECT_EQ(fault.Kind(), base::FaultKind::Port);
      EXPECT_THAT(fault.what(), HasSubstr("cannot take the settings \"" + std::string(settings)));
    }
    EXPECT_EQ(port_.Settings(), "19200,n,8,1");
    EXPECT_TRUE(ReadsReport());
  }
}

TEST_F(SerialPortTest, TheLineIsUsableAfterABreak) {
  Open();
  for (int tick = 0; tick < 3; ++tick) {
    port_.SetBreak(true);
    EXPECT_TRUE(port_.IsBreak());
    RunEvents(20);
    EXPECT_TRUE(port_.HasDevice());
    port_.SetBreak(false);
    EXPECT_FALSE(port_.IsBreak());
    EXPECT_TRUE(ReadsReport());
  }
  port_.SetBreak(true);
  port_.SetOpen(false);
  EXPECT_FALSE(port_.IsBreak());
}

TEST_F(SerialPortTest, InputThatIsNotTakenFillsTheBufferAndCanBeDiscarded) {
  port_.SetReceiveNotification([] {});
  Open();
  for (int report = 0; report < 4; ++report) {
    port_.Output("rfps\r");
    RunEvents(100);
    EXPECT_LE(port_.InputCount(), 1024U);
  }
  ASSERT_TRUE(RunUntil([this] { return port_.InputCount() == 1024; }));
  RunEvents(kLongestAnswerMilliseconds);
  EXPECT_EQ(port_.InputCount(), 1024U);
  port_.SetReceiveNotification([this] { received_ += port_.Input(1); });
  EXPECT_TRUE(ReadsReport()) << received_;
}

TEST_F(SerialPortTest, DiscardedInputDoesNotReturn) {
  port_.SetReceiveNotification([] {});
  Open();
  port_.Output("rfps\r");
  RunEvents(kLongestAnswerMilliseconds);
  EXPECT_GT(port_.InputCount(), 500U);
  port_.DiscardInput();
  EXPECT_EQ(port_.InputCount(), 0U);
  RunEvents(100);
  EXPECT_EQ(port_.InputCount(), 0U);
}

TEST_F(SerialPortTest, WritingAndClosingNeverWait) {
  Open();
  QElapsedTimer clock;
  clock.start();
  for (int count = 0; count < 100; ++count) {
    port_.Output(std::string(1024, 'y'));
    port_.DiscardOutput();
  }
  port_.Output(std::string(1024, 'y'));
  port_.SetOpen(false);
  EXPECT_LT(clock.elapsed(), 1000);
  port_.SetOpen(true);
  // Ends what was sent of that line, so that the beltpack knows the next command.
  port_.Output("\r");
  RunEvents(kLongestAnswerMilliseconds);
  EXPECT_TRUE(ReadsReport()) << received_;
}

TEST_F(SerialPortTest, ManyOpeningsAndPollsLeaveNoHandleOpen) {
  const auto session = [this] {
    Open();
    ASSERT_TRUE(ReadsReport());
    port_.SetOpen(false);
  };
  session();
  const std::ptrdiff_t before = OpenHandles();
  for (int count = 0; count < 20; ++count) {
    session();
  }
  EXPECT_LE(OpenHandles(), before);
  // They are indeed counted: an open port has more.
  Open();
  EXPECT_GT(OpenHandles(), before);
}

}  // namespace
}  // namespace kelvara::test
