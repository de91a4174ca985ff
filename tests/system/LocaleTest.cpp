#include <gtest/gtest.h>

#include <cstdio>
#include <ctime>
#include <regex>

#include "support/Golden.h"
#include "system/CliTest.h"

namespace kelvara::test {
namespace {

/// A language and the forms of its short date and of its time.
struct Language {
  const char* name;
  const char* date;
  const char* time;
};

class LocaleTest : public CliTest, public ::testing::WithParamInterface<Language> {
 protected:
  void Replay() const {
    Output({"replay", GoldenPath("four-antennas.session.txt"), "--log", "log.txt", "--csv",
            "results.csv", "--report", "report.html"});
  }

  /// The text after " on " in the CSV's first line.
  std::string CsvMoment() const {
    const std::string csv = Read("results.csv");
    const std::string start = "File Created by Kelvara v1.1.0 on ";
    EXPECT_EQ(csv.substr(0, start.size()), start);
    return csv.substr(start.size(), csv.find("\r\n") - start.size());
  }
};

TEST_P(LocaleTest, DatesHaveTheLanguagesFormWithoutATimeZone) {
  environment["LANG"] = GetParam().name;
  Replay();
  const std::string date = GetParam().date;
  const std::regex stamp(date + " " + GetParam().time);
  EXPECT_TRUE(std::regex_match(CsvMoment(), stamp)) << CsvMoment();
  const std::string log = Read("log.txt");
  const std::string moment = log.substr(0, log.find(", Log To File Started\r\n"));
  EXPECT_TRUE(std::regex_match(moment, stamp)) << moment;
  const std::string html = Read("report.html");
  EXPECT_TRUE(std::regex_search(html, std::regex("<b>Date</b></td>\r\n<td>" + date + "</td>")));
  EXPECT_TRUE(std::regex_search(html, std::regex("v1\\.1\\.0 on " + date + "</i>")));
}

INSTANTIATE_TEST_SUITE_P(
    Languages, LocaleTest,
    ::testing::Values(Language{"C", "\\d{4}-\\d\\d-\\d\\d", "\\d\\d:\\d\\d:\\d\\d"},
                      Language{"POSIX", "\\d{4}-\\d\\d-\\d\\d", "\\d\\d:\\d\\d:\\d\\d"},
                      Language{"en_US.UTF-8", "\\d{1,2}/\\d{1,2}/\\d\\d",
                               "\\d{1,2}:\\d\\d:\\d\\d [AP]M"},
                      Language{"en_GB.UTF-8", "\\d\\d/\\d\\d/\\d{4}", "\\d\\d:\\d\\d:\\d\\d"},
                      Language{"de_DE.UTF-8", "\\d\\d\\.\\d\\d\\.\\d\\d", "\\d\\d:\\d\\d:\\d\\d"},
                      Language{"fr_FR.UTF-8", "\\d\\d/\\d\\d/\\d{4}", "\\d\\d:\\d\\d:\\d\\d"}));

TEST_F(LocaleTest, WithoutALanguageDatesHaveTheFormOfTheCLocale) {
  environment.erase("LANG");
  Replay();
  EXPECT_TRUE(
      std::regex_match(CsvMoment(), std::regex("\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d")));
}

TEST_F(LocaleTest, TheTimeIsTheLocalWallTime) {
  for (const auto& [zone, hours] :
       {std::pair("UTC0", 0), std::pair("EAST-5", 5), std::pair("WEST+8", -8)}) {
    SCOPED_TRACE(zone);
    environment["TZ"] = zone;
    const std::time_t before = std::time(nullptr);
    Replay();
    const std::time_t after = std::time(nullptr);
    std::tm moment{};
    ASSERT_EQ(std::sscanf(CsvMoment().c_str(), "%d-%d-%d %d:%d:%d", &moment.tm_year, &moment.tm_mon,
                          &moment.tm_mday, &moment.tm_hour, &moment.tm_min, &moment.tm_sec),
              6);
    moment.tm_year -= 1900;
    moment.tm_mon -= 1;
    const std::time_t shown = ::timegm(&moment) - std::time_t{hours} * 3600;
    EXPECT_GE(shown, before);
    EXPECT_LE(shown, after);
  }
}

TEST_F(LocaleTest, NumbersDoNotFollowTheLanguage) {
  environment["LANG"] = "de_DE.UTF-8";
  EXPECT_EQ(Output({"convert", "rfps", "1000.5"}),
            "ohms 5455.027\nmetres 29014.500\naasync 223\ndelay 96.498\n");
  Replay();
  const std::string csv = Read("results.csv");
  const std::string golden = Golden("csv-four-antennas-rfps-dec.csv");
  EXPECT_EQ(csv.substr(csv.find('\n')), golden.substr(golden.find('\n')));
}

}  // namespace
}  // namespace kelvara::test
