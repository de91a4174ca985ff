#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <io.h>
#include <windows.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <thread>

#include "base/Fault.h"
#include "platform/qt/FolderLock.h"
#include "platform/qt/QtSettingsStore.h"
#include "platform/windows/OwnProcess.h"

namespace kelvara::test {
namespace {

using qt::QtSettingsStore;
using testing::ElementsAre;

constexpr const char* kSection = "Settings";

class SettingsFileTest : public testing::Test {
 protected:
  static QString PathIn(const QString& folder) {
    return folder + QStringLiteral("/CorvanaSync/CorvanaSync.ini");
  }

  std::string Read(const std::string& key) const { return store.Read(key, "default"); }

  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    constexpr auto kAll = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    for (const QString& name : QFileInfo(path).dir().entryList(kAll, QDir::Name)) {
      names.push_back(name.toStdString());
    }
    return names;
  }

  /// Opens the settings file as another program does.
  HANDLE OpenElsewhere(DWORD share) const {
    return ::CreateFileW(QDir::toNativeSeparators(path).toStdWString().c_str(), GENERIC_READ, share,
                         nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  }

  QTemporaryDir folder{QDir::tempPath() + QStringLiteral("/\u0416-XXXXXX")};
  QString path = PathIn(folder.path());
  QtSettingsStore store{path, kSection};
};

TEST_F(SettingsFileTest, AreReplacedWhileAReaderThatAllowsItHasThemOpen) {
  store.Write("ComPort", "3");
  const HANDLE reader = OpenElsewhere(FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
  ASSERT_NE(reader, INVALID_HANDLE_VALUE);
  store.Write("ComPort", "4");
  EXPECT_EQ(Read("ComPort"), "4");
  // The reader still has the whole old text.
  std::array<char, 100> text{};
  DWORD size = 0;
  ASSERT_TRUE(::ReadFile(reader, text.data(), static_cast<DWORD>(text.size()), &size, nullptr));
  EXPECT_EQ(std::string(text.data(), size), "[Settings]\nComPort=3\n");
  ::CloseHandle(reader);
  EXPECT_THAT(Names(), ElementsAre("CorvanaSync.ini"));
}

TEST_F(SettingsFileTest, AreReplacedOnceAReaderThatForbidsItHasClosedThem) {
  store.Write("ComPort", "3");
  const HANDLE reader = OpenElsewhere(FILE_SHARE_READ);
  ASSERT_NE(reader, INVALID_HANDLE_VALUE);
  std::thread closing([reader] {
    QThread::msleep(300);
    ::CloseHandle(reader);
  });
  EXPECT_NO_THROW(store.Write("ComPort", "4"));
  closing.join();
  EXPECT_EQ(Read("ComPort"), "4");
  EXPECT_THAT(Names(), ElementsAre("CorvanaSync.ini"));
}

TEST_F(SettingsFileTest, AreReadOnceAProgramThatKeepsThemToItselfHasClosedThem) {
  store.Write("ComPort", "3");
  const HANDLE other = OpenElsewhere(0);
  ASSERT_NE(other, INVALID_HANDLE_VALUE);
  std::thread closing([other] {
    QThread::msleep(300);
    ::CloseHandle(other);
  });
  EXPECT_EQ(Read("ComPort"), "3");
  closing.join();
}

TEST_F(SettingsFileTest, AWriterWaitsForTheLockNoLongerThanItsPatience) {
  store.Write("ComPort", "3");
  std::thread other([this] {
    const qt::FolderLock lock(QFileInfo(path).path(), QtSettingsStore::kPatience);
    EXPECT_TRUE(lock.IsHeld());
    // The lock belongs to a thread, so the second writer is another one.
    std::thread hasty([this] {
      QtSettingsStore impatient(path, kSection, std::chrono::milliseconds(1));
      EXPECT_THROW(impatient.Write("ComPort", "4"), base::Fault);
    });
    hasty.join();
  });
  other.join();
  EXPECT_EQ(Read("ComPort"), "3");
  store.Write("ComPort", "4");
  EXPECT_EQ(Read("ComPort"), "4");
}

TEST_F(SettingsFileTest, TheLockIsThatOfTheFolderHoweverItIsWritten) {
  store.Write("ComPort", "3");
  const qt::FolderLock lock(QFileInfo(path).path(), QtSettingsStore::kPatience);
  bool isHeld = true;
  std::thread other([&] {
    const QString spelling = QFileInfo(path).path().toUpper() + QStringLiteral("/./");
    isHeld = qt::FolderLock(spelling, std::chrono::milliseconds(1)).IsHeld();
  });
  other.join();
  EXPECT_FALSE(isHeld);
}

TEST_F(SettingsFileTest, UseUpNoFileDescriptors) {
  const auto firstFree = [] {
    const int descriptor = ::_open("NUL", _O_RDONLY);
    ::_close(descriptor);
    return descriptor;
  };
  store.Write("ComPort", "3");
  const int before = firstFree();
  for (int round = 0; round < 20; ++round) {
    store.Write("ComPort", std::to_string(round));
    EXPECT_EQ(Read("ComPort"), std::to_string(round));
  }
  EXPECT_EQ(firstFree(), before);
}

/// The second process of the test below.
TEST_F(SettingsFileTest, DISABLED_WriteWithoutEnd) {
  ASSERT_FALSE(OwnProcess::Folder().isEmpty());
  QtSettingsStore shared(PathIn(OwnProcess::Folder()), kSection);
  for (int round = 1;; ++round) {
    shared.Write("Changing", std::to_string(round) + std::string(round % 2 * 200000, 'x'));
  }
}

TEST_F(SettingsFileTest, AreCompleteAndFreeAfterAWriterWasKilled) {
  store.Write("Kept", "value");
  int written = 0;
  for (unsigned long kill = 0; kill < 15; ++kill) {
    const std::string before = Read("Changing");
    OwnProcess writer(L"SettingsFileTest.DISABLED_WriteWithoutEnd", folder.path());
    QElapsedTimer waiting;
    waiting.start();
    while (Read("Changing") == before && waiting.elapsed() < 20000) {
      QThread::msleep(5);
    }
    QThread::usleep(700 * kill);
    ASSERT_TRUE(writer.IsRunning());
    writer.Kill();
    ASSERT_EQ(Read("Kept"), "value");
    const std::string changing = Read("Changing");
    const int round = std::stoi(changing);
    EXPECT_EQ(changing, std::to_string(round) + std::string(round % 2 * 200000, 'x'));
    written += round;
    QElapsedTimer clock;
    clock.start();
    store.Write("Kept", "value");
    EXPECT_LT(clock.elapsed(), 1000);
  }
  EXPECT_GT(written, 15);
  EXPECT_THAT(Names(), ElementsAre("CorvanaSync.ini"));
}

TEST_F(SettingsFileTest, AnApplicationsFileIsInTheRoamingFolder) {
  const QByteArray before = qgetenv("APPDATA");
  qunsetenv("APPDATA");
  EXPECT_TRUE(qt::UserSettingsFile("CorvanaSync")
                  .endsWith(QStringLiteral("/AppData/Roaming/CorvanaSync/CorvanaSync.ini")))
      << qt::UserSettingsFile("CorvanaSync").toStdString();
  qputenv("APPDATA", "C:\\portable");
  EXPECT_EQ(qt::UserSettingsFile("CorvanaSync"),
            QStringLiteral("C:/portable/CorvanaSync/CorvanaSync.ini"));
  qputenv("APPDATA", before);
}

}  // namespace
}  // namespace kelvara::test
