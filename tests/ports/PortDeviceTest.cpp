#include "ports/PortDevice.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/ioctl.h>

#include <QFile>

#include "ports/TerminalPort.h"
#include "support/ChildProcess.h"
#include "support/DeviceOpenings.h"

namespace kelvara::test {
namespace {

using ports::LookAt;
using ports::PortState;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class PortDeviceTest : public TerminalPortTest {
 protected:
  /// The fault that a second process gets when it opens COM1.
  std::string FaultOfSecondOpener(RunAs user) {
    return ReportOfChild(
        [this](const auto& report) {
          ports::QtSerialPort second(table_);
          report(FaultOfOpening(second));
        },
        user);
  }

  std::string SeenBySecond(RunAs user) {
    return ReportOfChild(
        [this](const auto& report) {
          const ports::PortFinding finding = LookAt(terminal_.Device());
          report((finding.IsPresent() ? "present: " : "absent: ") + finding.reason);
        },
        user);
  }

  /// The work of a process that keeps COM1 open until it is killed.
  ChildProcess::Work Session() {
    return [this](const auto& report) {
      ports::QtSerialPort session(table_);
      session.SetSettings("57600,n,8,1");
      report(FaultOfOpening(session));
      ::pause();
    };
  }

  std::string CannotOpen() const { return "cannot open \"" + terminal_.Device() + "\": "; }
};

TEST_F(PortDeviceTest, AFreeDeviceHasNoReason) {
  const ports::PortFinding finding = LookAt(terminal_.Device());
  EXPECT_EQ(finding.state, PortState::Free);
  EXPECT_TRUE(finding.IsPresent());
  EXPECT_EQ(finding.reason, "");
  // Looking has not locked the device.
  EXPECT_EQ(FaultOfOpening(port_), "");
}

TEST_F(PortDeviceTest, IsDescribedForTheUser) {
  EXPECT_EQ(port_.Describe(1), terminal_.Device() + ": ready to be opened.");
  table_.Assign({2, "/dev/no-such-device"});
  EXPECT_EQ(port_.Describe(2),
            "/dev/no-such-device: there is no such device. Plug the adapter in, or choose another "
            "port.");
  EXPECT_EQ(port_.Describe(13), "there is no port COM13; the ports are COM1 to COM12");
  Open();
  const QString link = folder_.filePath("link");
  ASSERT_TRUE(QFile::link(QString::fromStdString(terminal_.Device()), link));
  table_.Assign({3, link.toStdString()});
  EXPECT_EQ(port_.Describe(1), terminal_.Device() + ": open now, in this program.");
  EXPECT_EQ(port_.Describe(3), link.toStdString() + ": open now, in this program.");
}

TEST_F(PortDeviceTest, NamesItsAdapterOnlyWhileItIsPresent) {
  const ports::QtSerialPort named(table_, [](const std::string&) { return "Example USB Serial"; });
  table_.Assign({2, "/dev/no-such-device"});
  EXPECT_EQ(named.PresentAdapter(1), "Example USB Serial");
  EXPECT_EQ(named.PresentAdapter(2), "");
  EXPECT_EQ(named.PresentAdapter(13), "");
  const ports::QtSerialPort unnamed(table_, [](const std::string&) { return ""; });
  EXPECT_EQ(unnamed.PresentAdapter(1), "device");
}

TEST_F(PortDeviceTest, IsDescribedWithItsAdapter) {
  const ports::QtSerialPort port(table_, [this](const std::string& device) {
    return std::string(device == terminal_.Device() ? "Example USB Serial" : "");
  });
  EXPECT_EQ(port.Describe(1), terminal_.Device() + " (Example USB Serial): ready to be opened.");
  const QString link = folder_.filePath("link");
  ASSERT_TRUE(QFile::link(QString::fromStdString(terminal_.Device()), link));
  table_.Assign({2, link.toStdString()});
  EXPECT_EQ(port.Describe(2), link.toStdString() + " (Example USB Serial): ready to be opened.");
}

TEST_F(PortDeviceTest, IsOpenedOnlyWhenThePortIsOpened) {
  const DeviceOpenings openings(terminal_.Device());
  LookAt(terminal_.Device());
  port_.Describe(1);
  EXPECT_FALSE(openings.HasAny());
  ChildProcess session(Session());
  ASSERT_EQ(session.ReadLine(), "");
  EXPECT_TRUE(openings.HasAny());
  LookAt(terminal_.Device());
  port_.Describe(1);
  // A refused opening does not touch the session's device either.
  EXPECT_NE(FaultOfOpening(port_), "");
  EXPECT_FALSE(openings.HasAny());
}

TEST_F(PortDeviceTest, ReportsWhatIsNotAPort) {
  EXPECT_EQ(LookAt("/dev/no-such-device").state, PortState::Absent);
  EXPECT_EQ(LookAt("/dev/no-such-device").reason, "there is no such device");
  EXPECT_EQ(LookAt("/dev/null/serial").state, PortState::Absent);
  const std::string dangling = folder_.filePath("link").toStdString();
  ASSERT_TRUE(QFile::link("/dev/no-such-device", folder_.filePath("link")));
  EXPECT_EQ(LookAt(dangling).state, PortState::Absent);
  for (const std::string& other :
       {std::string("/dev/null"), folder_.path().toStdString(), std::string("/etc/passwd")}) {
    EXPECT_EQ(LookAt(other).state, PortState::NotAPort) << other;
    EXPECT_EQ(LookAt(other).reason, "it is not a serial port");
  }
}

TEST_F(PortDeviceTest, ReportsThatThisProgramHasThePortOpen) {
  Open();
  EXPECT_EQ(LookAt(terminal_.Device()).state, PortState::HeldHere);
  EXPECT_EQ(LookAt(terminal_.Device()).reason, "this program has it open");
  ports::QtSerialPort second(table_);
  EXPECT_EQ(FaultOfOpening(second), CannotOpen() + "this program has it open");
  EXPECT_TRUE(port_.HasDevice());
}

TEST_F(PortDeviceTest, ASecondProgramLearnsThatThePortIsInUse) {
  terminal_.OpenToEveryone();
  Open();
  for (const RunAs user : {RunAs::Same, RunAs::Nobody}) {
    EXPECT_THAT(FaultOfSecondOpener(user), StartsWith(CannotOpen() + "in use by another program"));
    EXPECT_THAT(SeenBySecond(user), StartsWith("present: in use by another program"));
  }
  port_.SetOpen(false);
  for (const RunAs user : {RunAs::Same, RunAs::Nobody}) {
    EXPECT_EQ(FaultOfSecondOpener(user), "");
    EXPECT_EQ(SeenBySecond(user), "present: ");
  }
}

TEST_F(PortDeviceTest, ARunningSessionIsNotDisturbed) {
  terminal_.OpenToEveryone();
  ChildProcess session(Session(), RunAs::Nobody);
  ASSERT_EQ(session.ReadLine(), "");
  terminal_.Write("waiting");
  const std::string holder = "process " + std::to_string(session.Id());
  EXPECT_THAT(FaultOfOpening(port_), HasSubstr(holder));
  EXPECT_THAT(LookAt(terminal_.Device()).reason, HasSubstr(holder));
  const struct termios line = terminal_.LineSettings();
  EXPECT_EQ(cfgetospeed(&line), tcflag_t{B57600});
}

TEST_F(PortDeviceTest, ThePortOfAKilledProgramIsFreeAgain) {
  terminal_.OpenToEveryone();
  ChildProcess session(Session());
  ASSERT_EQ(session.ReadLine(), "");
  EXPECT_NE(FaultOfOpening(port_), "");
  session.Kill();
  terminal_.ReadAll();
  EXPECT_EQ(LookAt(terminal_.Device()).state, PortState::Free);
  EXPECT_EQ(FaultOfOpening(port_), "");
}

TEST_F(PortDeviceTest, TheDeviceLockOfAnotherProgramIsDetected) {
  const ChildProcess::Work lockDevice = [this](const auto& report) {
    const int device = ::open(terminal_.Device().c_str(), O_RDWR | O_NOCTTY);
    report(::flock(device, LOCK_EX | LOCK_NB) == 0 ? "" : "no lock");
    ::pause();
  };
  ChildProcess other(lockDevice);
  ASSERT_EQ(other.ReadLine(), "");
  const std::string holder = ", process " + std::to_string(other.Id()) + ")";
  EXPECT_THAT(FaultOfOpening(port_), EndsWith(holder));
  EXPECT_THAT(LookAt(terminal_.Device()).reason, EndsWith(holder));
}

TEST_F(PortDeviceTest, ExclusiveModeOfAnotherProgramIsReportedAfterAFailedOpening) {
  terminal_.OpenToEveryone();
  const int device = ::open(terminal_.Device().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  ASSERT_EQ(::ioctl(device, TIOCEXCL), 0);
  EXPECT_EQ(FaultOfSecondOpener(RunAs::Nobody), CannotOpen() + "in use by another program");
  const ChildProcess::Work describe = [&](const auto& report) {
    ports::QtSerialPort second(table_);
    report(second.Describe(1));
    FaultOfOpening(second);
    report(second.Describe(1));
    ::ioctl(device, TIOCNXCL);
    FaultOfOpening(second);
    second.SetOpen(false);
    report(second.Describe(1));
  };
  ChildProcess second(describe, RunAs::Nobody);
  const std::string isReady = terminal_.Device() + ": ready to be opened.";
  EXPECT_EQ(second.ReadLine(), isReady);
  EXPECT_EQ(second.ReadLine(),
            terminal_.Device() + ": in use by another program. End the other program first.");
  EXPECT_EQ(second.ReadLine(), isReady);
  ::close(device);
}

/// The lock file of COM1's device, written by hand.
class LockFileTest : public PortDeviceTest {
 protected:
  void SetUp() override {
    if (!file_.open(QIODevice::WriteOnly)) {
      GTEST_SKIP() << "this user cannot write lock files";
    }
  }
  void TearDown() override {
    port_.SetOpen(false);
    file_.remove();
  }

  void Write(const std::string& text) {
    file_.resize(0);
    file_.seek(0);
    file_.write(text.c_str());
    file_.flush();
  }

  std::string Reason() const { return LookAt(terminal_.Device()).reason; }

  static std::string GoneProcess() {
    ChildProcess child([](const auto&) {});
    return std::to_string(child.Id());
  }

  QFile file_{"/var/lock/LCK.." +
              QString::fromStdString(terminal_.Device()).mid(5).replace('/', '_')};
};

TEST_F(LockFileTest, OfARunningProgramIsDetected) {
  Write("         1\n");
  EXPECT_THAT(Reason(), EndsWith(", process 1)"));
  EXPECT_THAT(FaultOfOpening(port_), StartsWith(CannotOpen() + "in use by another program ("));
}

TEST_F(LockFileTest, OfAProgramThatHasEndedIsIgnored) {
  // Its program has died, and its number now belongs to another process.
  Write("1\nanother-program\nhere\n");
  EXPECT_EQ(Reason(), "");
  Write("no number\n");
  EXPECT_EQ(Reason(), "");
  Write(GoneProcess() + "\n");
  EXPECT_EQ(Reason(), "");
  EXPECT_EQ(FaultOfOpening(port_), "");
}

TEST_F(LockFileTest, LeftBehindByAnotherUserIsNamed) {
  if (::getuid() != 0) {
    GTEST_SKIP() << "only the superuser can act as two users";
  }
  terminal_.OpenToEveryone();
  const std::string reason = "in the way is the lock file \"" + file_.fileName().toStdString() +
                             "\", left behind by a program that is gone; remove it";
  for (const std::string& text : {GoneProcess() + "\n", std::string("1\nanother-program\n")}) {
    Write(text);
    EXPECT_EQ(SeenBySecond(RunAs::Nobody), "present: " + reason);
    EXPECT_EQ(FaultOfSecondOpener(RunAs::Nobody), CannotOpen() + reason);
  }
  const ChildProcess::Work describe = [this](const auto& report) { report(port_.Describe(1)); };
  EXPECT_EQ(ReportOfChild(describe, RunAs::Nobody), terminal_.Device() + ": " + reason + ".");
  file_.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther | QFile::WriteOther);
  EXPECT_EQ(SeenBySecond(RunAs::Nobody), "present: " + reason)
      << "the folder's permissions protect it";
}

TEST_F(PortDeviceTest, AMissingPermissionNamesWhoHasIt) {
  if (::getuid() != 0) {
    GTEST_SKIP() << "only the superuser can give a device away";
  }
  ASSERT_EQ(::chown(terminal_.Device().c_str(), 0, 0), 0);
  ASSERT_EQ(::chmod(terminal_.Device().c_str(), 0660), 0);
  EXPECT_EQ(FaultOfSecondOpener(RunAs::Nobody),
            CannotOpen() + "no permission; members of the group \"root\" have it");
  EXPECT_EQ(SeenBySecond(RunAs::Nobody),
            "present: no permission; members of the group \"root\" have it");
  ASSERT_EQ(::chmod(terminal_.Device().c_str(), 0600), 0);
  EXPECT_EQ(SeenBySecond(RunAs::Nobody), "present: no permission; only the user \"root\" has it");
}

}  // namespace
}  // namespace kelvara::test
