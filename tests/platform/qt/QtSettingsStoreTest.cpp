#include "platform/qt/QtSettingsStore.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include "base/Fault.h"
#include "platform/qt/FolderLock.h"
#include "support/ChildProcess.h"

namespace kelvara::test {
namespace {

using qt::QtSettingsStore;
using testing::ElementsAre;

constexpr const char* kSection = "Settings";

class QtSettingsStoreTest : public testing::Test {
 protected:
  std::string Read(const std::string& key, const std::string& defaultText = "default") const {
    return store_.Read(key, defaultText);
  }
  void Write(const std::string& key, const std::string& text) { store_.Write(key, text); }

  std::string FileText() const {
    QFile file(path_);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "no file";
  }

  void PutFile(const std::string& text) {
    QDir().mkpath(QFileInfo(path_).path());
    QFile file(path_);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray::fromStdString(text));
  }

  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    constexpr auto kAll = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    for (const QString& name : QFileInfo(path_).dir().entryList(kAll, QDir::Name)) {
      names.push_back(name.toStdString());
    }
    return names;
  }

  QTemporaryDir folder_;
  const QString path_ = folder_.filePath("CorvanaSync/CorvanaSync.ini");
  QtSettingsStore store_{path_, kSection};
};

TEST_F(QtSettingsStoreTest, AnAbsentKeyHasItsDefault) {
  EXPECT_EQ(Read("ComPort", "1"), "1");
  EXPECT_EQ(FileText(), "no file");
  Write("Baudrate", "4800");
  EXPECT_EQ(Read("ComPort", "1"), "1");
  EXPECT_EQ(Read("Baudrate"), "4800");
}

TEST_F(QtSettingsStoreTest, TheFileCanBeReadByAPerson) {
  Write("ComPort", "3");
  Write("LastFile", R"(C:\temp\new log, hall 2.txt)");
  QtSettingsStore(path_, "Ports").Write("COM1", "/dev/ttyUSB0");
  Write("ComPort", "4");
  EXPECT_EQ(FileText(),
            "[Settings]\nComPort=4\nLastFile=C:\\temp\\new log, hall 2.txt\n\n"
            "[Ports]\nCOM1=/dev/ttyUSB0\n");
  EXPECT_EQ(Read("LastFile"), R"(C:\temp\new log, hall 2.txt)");
  EXPECT_THAT(Names(), ElementsAre("CorvanaSync.ini"));
}

TEST_F(QtSettingsStoreTest, TextsAreReadBackUnchanged) {
  for (const std::string text :
       {"", "True", "19200", "/home/x/a, b; c.log", R"(C:\new\table.txt)", " blanks around ",
        "\"quoted\"", "J\xC3\xBCrgen", "two\r\nlines", "General"}) {
    Write("LastFile", text);
    EXPECT_EQ(QtSettingsStore(path_, kSection).Read("LastFile", "default"), text);
  }
  for (const char* section : {"General", "general", "%General"}) {
    QtSettingsStore(path_, section).Write("Key", section);
  }
  EXPECT_EQ(QtSettingsStore(path_, "%General").Read("Key", ""), "%General");
}

TEST_F(QtSettingsStoreTest, AnApplicationsFileIsInTheUsersConfigurationFolder) {
  const QByteArray before = qgetenv("XDG_CONFIG_HOME");
  qputenv("XDG_CONFIG_HOME", folder_.path().toLocal8Bit());
  EXPECT_EQ(qt::UserSettingsFile("CorvanaSync"), path_);
  const QString home = QDir::homePath() + "/.config/CorvanaSync/CorvanaSync.ini";
  qputenv("XDG_CONFIG_HOME", "not/absolute");
  EXPECT_EQ(qt::UserSettingsFile("CorvanaSync"), home);
  qunsetenv("XDG_CONFIG_HOME");
  EXPECT_EQ(qt::UserSettingsFile("CorvanaSync"), home);
  if (!before.isNull()) {
    qputenv("XDG_CONFIG_HOME", before);
  }
}

TEST_F(QtSettingsStoreTest, BrokenFilesAreSetAsideAndNoneIsLost) {
  for (const std::string& broken :
       {std::string("\x89PNG\r\n\x1A\n\0\0", 10), std::string("[Settings\n")}) {
    PutFile(broken);
    EXPECT_EQ(Read("ComPort", "1"), "1");
    EXPECT_EQ(FileText(), "no file");
  }
  PutFile("half a li");
  Write("ComPort", "3");
  EXPECT_EQ(FileText(), "[Settings]\nComPort=3\n");
  EXPECT_THAT(Names(), ElementsAre("CorvanaSync.ini", "CorvanaSync.ini.broken-1",
                                   "CorvanaSync.ini.broken-2", "CorvanaSync.ini.broken-3"));
  QFile last(path_ + ".broken-3");
  ASSERT_TRUE(last.open(QIODevice::ReadOnly));
  EXPECT_EQ(last.readAll(), "half a li");
}

TEST_F(QtSettingsStoreTest, AFolderOrPipeInItsPlaceIsSetAside) {
  ASSERT_TRUE(QDir().mkpath(path_ + "/inner"));
  EXPECT_EQ(Read("ComPort", "1"), "1");
  EXPECT_TRUE(QFileInfo(path_ + ".broken-1/inner").isDir());
  ASSERT_EQ(::mkfifo(path_.toLocal8Bit().constData(), 0600), 0);
  Write("ComPort", "2");
  EXPECT_EQ(Read("ComPort"), "2");
  EXPECT_TRUE(QFileInfo::exists(path_ + ".broken-2"));
}

TEST_F(QtSettingsStoreTest, AFileThatTheUserMayNotReadIsSetAside) {
  PutFile("[Settings]\nComPort=3\n");
  ::chmod(folder_.path().toLocal8Bit().constData(), 0777);
  ::chmod(QFileInfo(path_).path().toLocal8Bit().constData(), 0777);
  ::chmod(path_.toLocal8Bit().constData(), 0);
  EXPECT_EQ(ReportOfChild([&](const auto& report) { report(Read("ComPort", "1")); }, RunAs::Nobody),
            "1");
  EXPECT_THAT(Names(), ElementsAre("CorvanaSync.ini.broken-1"));
}

TEST_F(QtSettingsStoreTest, ALinkToTheFileStaysALink) {
  ASSERT_TRUE(QDir(folder_.path()).mkpath("CorvanaSync"));
  ASSERT_TRUE(QDir(folder_.path()).mkpath("elsewhere"));
  QFile target(folder_.filePath("elsewhere/mine.ini"));
  ASSERT_TRUE(target.open(QIODevice::WriteOnly));
  target.write("[Settings]\nComPort=3\n");
  target.close();
  ::chmod(target.fileName().toLocal8Bit().constData(), 0600);
  ASSERT_TRUE(QFile::link(target.fileName(), path_));
  Write("Baudrate", "4800");
  EXPECT_TRUE(QFileInfo(path_).isSymLink());
  EXPECT_EQ(FileText(), "[Settings]\nComPort=3\nBaudrate=4800\n");
  EXPECT_EQ(QFileInfo(target).permissions() & (QFile::ReadGroup | QFile::ReadOther),
            QFile::Permissions());
}

TEST_F(QtSettingsStoreTest, AFolderThatCannotBeWrittenIsAFault) {
  PutFile("[Settings]\nComPort=3\n");
  const auto faultOfWriting = [](QtSettingsStore& store) -> std::string {
    try {
      store.Write("ComPort", "4");
      return "none";
    } catch (const base::Fault& fault) {
      return fault.Kind() == base::FaultKind::File ? fault.what() : "another fault";
    }
  };
  // A folder of the superuser, for an unprivileged user.
  ::chmod(folder_.path().toLocal8Bit().constData(), 0755);
  ::chmod(QFileInfo(path_).path().toLocal8Bit().constData(), 0555);
  EXPECT_EQ(
      ReportOfChild([&](const auto& report) { report(faultOfWriting(store_)); }, RunAs::Nobody),
      "cannot write \"" + path_.toStdString() + "\": Permission denied");
  EXPECT_EQ(Read("ComPort"), "3");
  ::chmod(QFileInfo(path_).path().toLocal8Bit().constData(), 0755);
  // A file in place of the folder, for every user.
  const QString blockedPath = path_ + "/CorvanaSync/CorvanaSync.ini";
  QtSettingsStore blocked(blockedPath, kSection);
  EXPECT_EQ(blocked.Read("ComPort", "1"), "1");
  EXPECT_EQ(faultOfWriting(blocked), "cannot write \"" + blockedPath.toStdString() +
                                         "\": " + std::generic_category().message(ENOTDIR));
}

TEST_F(QtSettingsStoreTest, WaitsForAnotherProgramNoLongerThanItsPatience) {
  PutFile("[Settings]\nComPort=3\n");
  const int held =
      ::open(QFileInfo(path_).path().toLocal8Bit().constData(), O_RDONLY | O_DIRECTORY);
  ASSERT_EQ(::flock(held, LOCK_EX), 0);
  QtSettingsStore hasty(path_, kSection, std::chrono::milliseconds(1));
  EXPECT_THROW(hasty.Write("ComPort", "4"), base::Fault);
  EXPECT_EQ(Read("ComPort"), "3");
  ::close(held);
  hasty.Write("ComPort", "4");
  EXPECT_EQ(Read("ComPort"), "4");
}

TEST_F(QtSettingsStoreTest, TwoProgramsKeepEachOthersKeys) {
  constexpr int kRounds = 100;
  const auto writeRounds = [this](const std::string& name) {
    for (int round = 1; round <= kRounds; ++round) {
      Write(name + std::to_string(round % 10), std::to_string(round));
      QThread::msleep(1);
    }
  };
  ChildProcess other([&](const auto& report) {
    writeRounds("theirs");
    report("done");
  });
  writeRounds("ours");
  EXPECT_EQ(other.ReadLine(), "done");
  for (int key = 0; key < 10; ++key) {
    const std::string last = std::to_string(key == 0 ? kRounds : kRounds - 10 + key);
    EXPECT_EQ(Read("ours" + std::to_string(key)), last);
    EXPECT_EQ(Read("theirs" + std::to_string(key)), last);
  }
}

TEST_F(QtSettingsStoreTest, AKilledWriterLeavesACompleteFile) {
  Write("Kept", "value");
  const std::string small = "small";
  const std::string large(200000, 'x');
  Write("Changing", small);
  int largeSeen = 0;
  for (unsigned long round = 0; round < 50; ++round) {
    ChildProcess writer([&](const auto& report) {
      report("started");
      while (true) {
        Write("Changing", large);
        Write("Changing", small);
      }
    });
    ASSERT_EQ(writer.ReadLine(), "started");
    QThread::usleep(500 * round);
    writer.Kill();
    const std::string changing = Read("Changing");
    ASSERT_TRUE(changing == small || changing == large) << changing.size();
    largeSeen += changing == large ? 1 : 0;
    ASSERT_EQ(Read("Kept"), "value");
  }
  EXPECT_GT(largeSeen, 0);
  // The lock and the partial file of a killed writer do not block others.
  QElapsedTimer clock;
  clock.start();
  Write("Changing", "last");
  EXPECT_LT(clock.elapsed(), 1000);
  EXPECT_EQ(Read("Changing"), "last");
  EXPECT_THAT(Names(), ElementsAre("CorvanaSync.ini"));
}

TEST_F(QtSettingsStoreTest, AHangingWriterDoesNotBlockOthersForLong) {
  Write("ComPort", "3");
  QElapsedTimer clock;
  ChildProcess hanging([&](const auto& report) {
    const qt::FolderLock lock(QFileInfo(path_).path(), QtSettingsStore::kPatience);
    report(lock.IsHeld() ? "locked" : "no lock");
    ::pause();
  });
  ASSERT_EQ(hanging.ReadLine(), "locked");
  EXPECT_EQ(Read("ComPort"), "3");
  clock.start();
  EXPECT_THROW(Write("ComPort", "4"), base::Fault);
  EXPECT_LT(clock.elapsed(), 5000);
  EXPECT_EQ(Read("ComPort"), "3");
  hanging.Kill();
  Write("ComPort", "5");
  EXPECT_EQ(Read("ComPort"), "5");
}

}  // namespace
}  // namespace kelvara::test
