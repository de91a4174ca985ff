#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <regex>
#include <sstream>

#include "system/CliTest.h"

namespace kelvara::test {
namespace {

/// Two programs that run at the same time.
class TwoProgramsTest : public CliTest {
 protected:
  /// The number of readings in the results of a record.
  int ReadingsIn(const std::string& name) const {
    const QJsonObject results =
        QJsonDocument::fromJson(QByteArray::fromStdString(Read(name))).object();
    int readings = 0;
    for (const QJsonValue cell : results["cells"].toArray()) {
      readings += cell[u"count"].toInt();
    }
    return readings;
  }

  int CountOfLines(const std::string& name, const std::regex& form) const {
    std::istringstream log(Read(name));
    int count = 0;
    for (std::string line; std::getline(log, line);) {
      count += std::regex_match(line, form) ? 1 : 0;
    }
    return count;
  }
};

TEST_F(TwoProgramsTest, CapturingToTheSameFileLosesAndCutsNoLine) {
  const auto request = [this](const std::string& json) {
    return Request({"record", "--demo", "--speed", "300", "--reports", "400", "--log", "log.txt",
                    "--json", json});
  };
  Process first(request("first.json"));
  Process second(request("second.json"));
  EXPECT_EQ(first.Finish().exitCode, 0);
  EXPECT_EQ(second.Finish().exitCode, 0);
  const std::string stamp = "\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d, ";
  const int readings = ReadingsIn("first.json") + ReadingsIn("second.json");
  EXPECT_GT(readings, 2000);
  EXPECT_EQ(CountOfLines("log.txt", std::regex(stamp + "\\d\\d->\\d\\d=-?\\d+\r")), readings);
  EXPECT_EQ(CountOfLines("log.txt", std::regex(stamp + "Log To File Started\r")), 2);
  EXPECT_EQ(CountOfLines("log.txt", std::regex(stamp + "Log To File Stopped\r")), 2);
  EXPECT_EQ(CountOfLines("log.txt", std::regex("[^]*")), readings + 4);
}

}  // namespace
}  // namespace kelvara::test
