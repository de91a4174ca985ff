#include "ports/QtSerialPort.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>

#include "ports/TerminalPort.h"
#include "support/EventLoop.h"

namespace kelvara::test {
namespace {

using testing::HasSubstr;

class QtSerialPortTest : public TerminalPortTest {};

TEST_F(QtSerialPortTest, CarriesEveryByteBothWays) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) {
    all += static_cast<char>(byte);
  }
  std::string received;
  port_.SetReceiveNotification([&] { received += port_.Input(kEverything); });
  Open();
  terminal_.Write(all);
  ASSERT_TRUE(RunUntil([&] { return received.size() == all.size(); }));
  EXPECT_EQ(received, all);

  port_.Output(all);
  std::string sent;
  ASSERT_TRUE(RunUntil([&] {
    sent += terminal_.ReadAll();
    return sent.size() == all.size();
  }));
  EXPECT_EQ(sent, all);
}

TEST_F(QtSerialPortTest, IsOpenedWithoutParityFlowControlOrLineEditing) {
  port_.SetSettings("57600,n,8,1");
  Open();
  const struct termios line = terminal_.LineSettings();
  EXPECT_EQ(cfgetospeed(&line), tcflag_t{B57600});
  EXPECT_EQ(cfgetispeed(&line), tcflag_t{B57600});
  EXPECT_EQ(line.c_cflag & (CSIZE | PARENB | CSTOPB | CRTSCTS), tcflag_t{CS8});
  EXPECT_EQ(line.c_iflag & (IXON | IXOFF | ICRNL | INLCR | ISTRIP), tcflag_t{0});
  EXPECT_EQ(line.c_lflag & (ICANON | ECHO | ISIG), tcflag_t{0});
  EXPECT_EQ(line.c_oflag & OPOST, tcflag_t{0});
}

TEST_F(QtSerialPortTest, AcceptsSettingsWhileOpen) {
  EXPECT_EQ(port_.Settings(), "19200,n,8,1");
  Open();
  port_.SetSettings("4800,n,8,1");
  const struct termios line = terminal_.LineSettings();
  EXPECT_EQ(cfgetospeed(&line), tcflag_t{B4800});
  EXPECT_EQ(port_.Settings(), "4800,n,8,1");
}

TEST_F(QtSerialPortTest, RefusesInvalidSettings) {
  port_.SetSettings("9600,n,8,1");
  for (const bool open : {false, true}) {
    port_.SetOpen(open);
    for (const char* settings :
         {"", ",n,8,1", "0,n,8,1", "-9600,n,8,1", "+9600,n,8,1", "9600", "9600,n,8", "9600,e,8,1",
          "9600,n,7,1", "9600,n,8,2", " 9600,n,8,1", "9600 ,n,8,1", "9600.5,n,8,1",
          "2147483648,n,8,1", "99999999999999999999,n,8,1", "fast,n,8,1", "9600,n,8,1,"}) {
      try {
        port_.SetSettings(settings);
        ADD_FAILURE() << "accepted \"" << settings << "\"";
      } catch (const base::Fault& fault) {
        EXPECT_EQ(fault.Kind(), base::FaultKind::Port);
        EXPECT_THAT(fault.what(), HasSubstr(settings));
      }
      EXPECT_EQ(port_.Settings(), "9600,n,8,1");
    }
  }
  const struct termios line = terminal_.LineSettings();
  EXPECT_EQ(cfgetospeed(&line), tcflag_t{B9600});
}

TEST_F(QtSerialPortTest, ANewNumberTakesEffectAtTheNextOpening) {
  PseudoTerminal other;
  table_.Assign({2, other.Device()});
  Open();
  port_.SetPortNumber(2);
  EXPECT_EQ(port_.PortNumber(), 2);
  port_.Output("one");
  ASSERT_TRUE(RunUntil([&] { return terminal_.ReadAll() == "one"; }));
  port_.SetOpen(false);
  port_.SetOpen(true);
  port_.Output("two");
  EXPECT_TRUE(RunUntil([&] { return other.ReadAll() == "two"; }));
}

TEST_F(QtSerialPortTest, ANumberOutsideTheTableCannotBeOpened) {
  for (const int number : {-1, 0, 13}) {
    port_.SetPortNumber(static_cast<std::int16_t>(number));
    EXPECT_EQ(FaultOfOpening(port_),
              "there is no port COM" + std::to_string(number) + "; the ports are COM1 to COM12");
    EXPECT_FALSE(port_.IsOpen());
  }
}

TEST_F(QtSerialPortTest, AnAbsentDeviceCannotBeOpened) {
  table_.Assign({1, "/dev/no-such-device"});
  EXPECT_EQ(FaultOfOpening(port_), "cannot open \"/dev/no-such-device\": there is no such device");
  EXPECT_FALSE(port_.IsOpen());
}

TEST_F(QtSerialPortTest, AClosedPortAcceptsEveryCallAndHasNoInput) {
  port_.SetOpen(false);
  port_.SetBreak(true);
  EXPECT_FALSE(port_.IsBreak());
  port_.Output("rfps\r");
  port_.DiscardOutput();
  port_.DiscardInput();
  port_.RestoreDevice();
  EXPECT_EQ(port_.InputCount(), 0U);
  EXPECT_EQ(port_.Input(kEverything), "");
  EXPECT_FALSE(port_.IsOpen());
}

TEST_F(QtSerialPortTest, TheBreakFlagIsKeptUntilThePortIsClosed) {
  Open();
  EXPECT_FALSE(port_.IsBreak());
  port_.SetBreak(true);
  EXPECT_TRUE(port_.IsBreak());
  RunEvents(20);
  EXPECT_TRUE(port_.HasDevice());
  port_.SetOpen(false);
  EXPECT_FALSE(port_.IsBreak());
  port_.SetOpen(true);
  EXPECT_FALSE(port_.IsBreak());
}

TEST_F(QtSerialPortTest, TheReceiverMayTakeOneCharacterAtATime) {
  std::string sent;
  for (int line = 0; line < 300; ++line) {
    sent += "line " + std::to_string(line) + "\n";
  }
  std::string received;
  std::size_t most = 0;
  port_.SetReceiveNotification([&] {
    most = std::max(most, port_.InputCount());
    received += port_.Input(1);
  });
  Open();
  ASSERT_EQ(terminal_.Write(sent), sent.size());
  ASSERT_TRUE(RunUntil([&] { return received.size() >= sent.size(); }));
  EXPECT_EQ(received, sent);
  EXPECT_LE(most, 1024U);
  EXPECT_GT(most, 1U);
}

TEST_F(QtSerialPortTest, AReceiverThatTakesNothingIsNotNotifiedAgainUntilMoreArrives) {
  int notifications = 0;
  port_.SetReceiveNotification([&] { ++notifications; });
  Open();
  terminal_.Write("abc");
  ASSERT_TRUE(RunUntil([&] { return port_.InputCount() == 3; }));
  RunEvents(100);
  EXPECT_EQ(notifications, 1);
  terminal_.Write("d");
  ASSERT_TRUE(RunUntil([&] { return port_.InputCount() == 4; }));
  RunEvents(100);
  EXPECT_EQ(notifications, 2);
  EXPECT_EQ(port_.Input(2), "ab");
  EXPECT_EQ(port_.Input(kEverything), "cd");
}

TEST_F(QtSerialPortTest, NotificationsAreNotNested) {
  int running = 0;
  int deepest = 0;
  std::string received;
  port_.SetReceiveNotification([&] {
    deepest = std::max(deepest, ++running);
    received += port_.Input(kEverything);
    if (received == "first") {
      terminal_.Write("second");
      RunEvents(50);
      EXPECT_EQ(received, "first");
    }
    --running;
  });
  Open();
  terminal_.Write("first");
  ASSERT_TRUE(RunUntil([&] { return received == "firstsecond"; }));
  EXPECT_EQ(deepest, 1);
}

TEST_F(QtSerialPortTest, InputThatArrivesWhileTheReceiverRunsIsNotified) {
  int notifications = 0;
  port_.SetReceiveNotification([&] {
    if (++notifications == 1) {
      terminal_.Write("more");
      EXPECT_TRUE(RunUntil([&] { return port_.InputCount() == 8; }));
    }
  });
  Open();
  terminal_.Write("some");
  EXPECT_TRUE(RunUntil([&] { return notifications == 2; }));
  RunEvents(50);
  EXPECT_EQ(notifications, 2);
}

TEST_F(QtSerialPortTest, TheReceiverMayReopenThePort) {
  std::string received;
  port_.SetReceiveNotification([&] {
    received += port_.Input(kEverything);
    port_.SetOpen(false);
    port_.DiscardInput();
    port_.SetOpen(true);
  });
  Open();
  terminal_.Write("x");
  ASSERT_TRUE(RunUntil([&] { return received == "x"; }));
  terminal_.Write("y");
  EXPECT_TRUE(RunUntil([&] { return received == "xy"; }));
}

TEST_F(QtSerialPortTest, DiscardedInputIsGoneAndNewInputArrives) {
  Open();
  // More than the buffer holds, so that some of it still waits in the system.
  ASSERT_EQ(terminal_.Write(std::string(3000, 'x')), 3000U);
  ASSERT_TRUE(RunUntil([&] { return port_.InputCount() == 1024; }));
  port_.DiscardInput();
  EXPECT_EQ(port_.InputCount(), 0U);
  RunEvents(50);
  EXPECT_EQ(port_.InputCount(), 0U);
  terminal_.Write("abc");
  ASSERT_TRUE(RunUntil([&] { return port_.InputCount() == 3; }));
  EXPECT_EQ(port_.Input(kEverything), "abc");
}

TEST_F(QtSerialPortTest, WritingNeverWaitsForABlockedLine) {
  Open();
  QElapsedTimer clock;
  clock.start();
  const std::string kilobyte(1024, 'y');
  for (int count = 0; count < 1024; ++count) {
    port_.Output(kilobyte);
    QCoreApplication::processEvents();
  }
  EXPECT_LT(clock.elapsed(), 1000);
  EXPECT_TRUE(port_.HasDevice());

  // Queued text is dropped. What the line had already accepted arrives, followed by the next text.
  port_.DiscardOutput();
  port_.Output("rfps\r");
  std::string sent;
  ASSERT_TRUE(RunUntil([&] {
    sent += terminal_.ReadAll();
    return sent.ends_with("rfps\r");
  }));
  EXPECT_LE(sent.size(), 4096U + 5U);

  port_.Output(std::string(500, 'z'));
  clock.restart();
  port_.SetOpen(false);
  EXPECT_LT(clock.elapsed(), 500);
}

TEST_F(QtSerialPortTest, QueuesNoMoreThanItsBufferHolds) {
  Open();
  const std::string piece(100, 'y');
  for (int count = 0; count < 1000; ++count) {
    port_.Output(piece);
  }
  // No event has run, so nothing is on the line yet.
  std::string sent;
  ASSERT_TRUE(RunUntil([&] {
    sent += terminal_.ReadAll();
    return sent.size() >= 512;
  }));
  RunEvents(50);
  sent += terminal_.ReadAll();
  EXPECT_EQ(sent, std::string(512, 'y'));
}

}  // namespace
}  // namespace kelvara::test
