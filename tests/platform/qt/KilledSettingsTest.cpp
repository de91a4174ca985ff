#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QThread>
#include <random>

#include "platform/qt/QtSettingsStore.h"
#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace kelvara::test {
namespace {

constexpr int kKeys = 5;

class KilledSettingsTest : public testing::Test {
 protected:
  std::string Key(int number) const { return "Key" + std::to_string(number % kKeys); }
  std::string Value(int number) const {
    // The lengths differ widely, so that half of a long text would be noticed.
    return std::to_string(number) + std::string(number % 3 == 0 ? 9000 : 3, 'x');
  }
  int NumberIn(const std::string& value) const { return value.empty() ? -1 : std::stoi(value); }

  /// Changes one setting after another without end and reports each as soon as it is written.
  void ChangeWithoutEnd(int first, const std::function<void(const std::string&)>& report) {
    for (int number = first;; ++number) {
      store.Write(Key(number), Value(number));
      report(std::to_string(number));
    }
  }

  TemporaryFolder folder;
  qt::QtSettingsStore store{QString::fromStdString(folder.PathOf("CorvanaSync/CorvanaSync.ini")),
                            "Settings"};
};

TEST_F(KilledSettingsTest, KeepEveryFinishedChangeWhenKilledAtTwoHundredMoments) {
  constexpr int kKills = 200;
  constexpr unsigned kMostMicroseconds = 20000;
  std::mt19937 random(5);
  int number = 0;
  for (int kill = 0; kill < kKills; ++kill) {
    const int first = number;
    ChildProcess writer([&](const auto& report) { ChangeWithoutEnd(first, report); });
    number = std::stoi(writer.ReadLine());
    QThread::usleep(random() % kMostMicroseconds);
    writer.Kill();
    for (std::string line = writer.ReadLine(); !line.empty(); line = writer.ReadLine()) {
      number = std::stoi(line);
    }
    for (int key = std::max(0, number - kKeys + 1); key <= number; ++key) {
      const std::string value = store.Read(Key(key), "");
      const int found = NumberIn(value);
      // The interrupted write may be finished but not reported.
      ASSERT_TRUE(found == key || (found == number + 1 && Key(key) == Key(number + 1)))
          << found << " instead of " << key << " after kill " << kill;
      ASSERT_EQ(value, Value(found));
    }
    ++number;
  }
  EXPECT_GT(number, kKills) << "no writer got past its first change";
}

}  // namespace
}  // namespace kelvara::test
