#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <optional>

#include "ports/TerminalPort.h"
#include "support/EventLoop.h"

namespace kelvara::test {
namespace {

double ProcessorSeconds() {
  struct rusage usage {};
  ::getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// How many of this process's open files refer to the device, whether it has vanished or not.
int OpenHandlesOf(const std::string& device) {
  int count = 0;
  for (const QFileInfo& file : QDir("/proc/self/fd").entryInfoList(QDir::Files | QDir::System)) {
    count += file.symLinkTarget().startsWith(QString::fromStdString(device)) ? 1 : 0;
  }
  return count;
}

/// A port that is opened through a link, like a stable device name.
class QtSerialPortLossTest : public TerminalPortTest {
 protected:
  QtSerialPortLossTest() {
    table_.Assign({1, link_.toStdString()});
    PointLinkTo(terminal_);
    port_.SetReceiveNotification([this] {
      ++notifications_;
      received_ += port_.Input(kEverything);
    });
    Open();
  }

  void PointLinkTo(const PseudoTerminal& terminal) {
    QFile::remove(link_);
    ASSERT_TRUE(QFile::link(QString::fromStdString(terminal.Device()), link_));
  }

  void LoseDevice() {
    terminal_.HangUp();
    ASSERT_TRUE(RunUntil([this] { return !port_.HasDevice(); }));
  }

  const QString link_ = folder_.filePath("adapter");
  std::string received_;
  int notifications_ = 0;
};

TEST_F(QtSerialPortLossTest, ALostDeviceIsClosedOnceAndUsesNoProcessorTime) {
  constexpr int kOfTheTerminalItself = 1;
  ASSERT_GT(OpenHandlesOf(terminal_.Device()), kOfTheTerminalItself);
  const std::string device = terminal_.Device();
  LoseDevice();
  EXPECT_TRUE(port_.IsOpen());
  EXPECT_EQ(OpenHandlesOf(device), 0);
  const int notificationsBefore = notifications_;
  const double before = ProcessorSeconds();
  RunEvents(1000);
  EXPECT_LT(ProcessorSeconds() - before, 0.2);
  EXPECT_EQ(notifications_, notificationsBefore);
  EXPECT_TRUE(port_.IsOpen());
  EXPECT_FALSE(port_.HasDevice());
}

TEST_F(QtSerialPortLossTest, APortWithoutADeviceHasNoInputAndDropsOutput) {
  LoseDevice();
  port_.Output("rfps\r");
  port_.DiscardOutput();
  port_.DiscardInput();
  EXPECT_EQ(port_.InputCount(), 0U);
  EXPECT_EQ(port_.Input(kEverything), "");
  PseudoTerminal returned;
  PointLinkTo(returned);
  port_.RestoreDevice();
  ASSERT_TRUE(port_.HasDevice());
  RunEvents(50);
  EXPECT_EQ(returned.ReadAll(), "");
}

TEST_F(QtSerialPortLossTest, TheDeviceIsRestoredThroughItsLink) {
  port_.SetSettings("57600,n,8,1");
  port_.SetBreak(true);
  LoseDevice();
  for (int tick = 0; tick < 3; ++tick) {
    port_.RestoreDevice();
    EXPECT_FALSE(port_.HasDevice());
    EXPECT_TRUE(port_.IsOpen());
  }
  QFile::remove(link_);
  port_.RestoreDevice();
  EXPECT_FALSE(port_.HasDevice());

  PseudoTerminal returned;
  PointLinkTo(returned);
  port_.RestoreDevice();
  ASSERT_TRUE(port_.HasDevice());
  EXPECT_TRUE(port_.IsBreak());
  EXPECT_EQ(port_.Settings(), "57600,n,8,1");
  const struct termios line = returned.LineSettings();
  EXPECT_EQ(cfgetospeed(&line), tcflag_t{B57600});
  returned.Write("back");
  ASSERT_TRUE(RunUntil([this] { return received_ == "back"; }));
  port_.Output("rfps\r");
  EXPECT_TRUE(RunUntil([&] { return returned.ReadAll() == "rfps\r"; }));
}

TEST_F(QtSerialPortLossTest, SettingsMadeMeanwhileApplyWhenTheDeviceIsBack) {
  LoseDevice();
  port_.SetSettings("4800,n,8,1");
  port_.SetBreak(true);
  port_.SetBreak(false);
  PseudoTerminal returned;
  PointLinkTo(returned);
  port_.RestoreDevice();
  const struct termios line = returned.LineSettings();
  EXPECT_EQ(cfgetospeed(&line), tcflag_t{B4800});
  EXPECT_FALSE(port_.IsBreak());
}

TEST_F(QtSerialPortLossTest, AnotherPortNumberDoesNotChangeWhatIsRestored) {
  PseudoTerminal other;
  table_.Assign({2, other.Device()});
  LoseDevice();
  port_.SetPortNumber(2);
  PseudoTerminal returned;
  PointLinkTo(returned);
  port_.RestoreDevice();
  port_.Output("here");
  EXPECT_TRUE(RunUntil([&] { return returned.ReadAll() == "here"; }));
  EXPECT_EQ(other.ReadAll(), "");
}

TEST_F(QtSerialPortLossTest, InputFromBeforeTheLossIsStillDelivered) {
  bool busy = true;
  port_.SetReceiveNotification([&] { received_ += busy ? "" : port_.Input(4); });
  terminal_.Write("last words");
  ASSERT_TRUE(RunUntil([this] { return port_.InputCount() == 10; }));
  terminal_.HangUp();
  busy = false;
  ASSERT_TRUE(RunUntil([this] { return !port_.HasDevice(); }));
  EXPECT_TRUE(RunUntil([this] { return received_ == "last words"; }));
  EXPECT_EQ(port_.InputCount(), 0U);
}

TEST_F(QtSerialPortLossTest, SurvivesALossWhileTheReceiverRuns) {
  port_.SetReceiveNotification([this] {
    received_ += port_.Input(kEverything);
    terminal_.HangUp();
    RunEvents(50);
    EXPECT_FALSE(port_.HasDevice());
    port_.Output("nobody hears this");
  });
  terminal_.Write("x");
  ASSERT_TRUE(RunUntil([this] { return !port_.HasDevice(); }));
  EXPECT_EQ(received_, "x");
  EXPECT_TRUE(port_.IsOpen());
}

TEST_F(QtSerialPortLossTest, SurvivesALossWithFullBuffers) {
  port_.SetReceiveNotification([] {});
  terminal_.Write(std::string(4000, 'x'));
  ASSERT_TRUE(RunUntil([this] { return port_.InputCount() == 1024; }));
  for (int count = 0; count < 200; ++count) {
    port_.Output(std::string(512, 'y'));
    RunEvents(0);
  }
  terminal_.HangUp();
  // The discards of the next command detect the loss at the latest.
  RunEvents(50);
  port_.DiscardInput();
  port_.DiscardOutput();
  ASSERT_TRUE(RunUntil([this] { return !port_.HasDevice(); }));
  const double before = ProcessorSeconds();
  RunEvents(500);
  EXPECT_LT(ProcessorSeconds() - before, 0.1);
  EXPECT_TRUE(port_.IsOpen());
}

TEST_F(QtSerialPortLossTest, ALostPortCanBeClosedAndReopened) {
  LoseDevice();
  port_.SetOpen(false);
  EXPECT_FALSE(port_.IsOpen());
  port_.RestoreDevice();
  EXPECT_FALSE(port_.HasDevice());
  PseudoTerminal returned;
  PointLinkTo(returned);
  port_.SetOpen(true);
  returned.Write("new");
  EXPECT_TRUE(RunUntil([this] { return received_ == "new"; }));
}

TEST_F(QtSerialPortLossTest, ManyLossesLeaveNothingOpen) {
  std::optional<PseudoTerminal> current;
  LoseDevice();
  const int handles = static_cast<int>(QDir("/proc/self/fd").count());
  for (int loss = 0; loss < 50; ++loss) {
    current.emplace();
    PointLinkTo(*current);
    port_.RestoreDevice();
    ASSERT_TRUE(port_.HasDevice());
    current->HangUp();
    ASSERT_TRUE(RunUntil([this] { return !port_.HasDevice(); }));
  }
  current.reset();
  EXPECT_EQ(static_cast<int>(QDir("/proc/self/fd").count()), handles);
}

}  // namespace
}  // namespace kelvara::test
