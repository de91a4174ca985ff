#include "sessions/KelvaraFile.h"

#include <gtest/gtest.h>

#include "support/Golden.h"
#include "support/RecordedReports.h"

namespace kelvara::sessions {
namespace {

TEST(KelvaraFileTest, RecognisesEachResultsFile) {
  EXPECT_EQ(KelvaraFile(test::Golden("json-empty.json")), "JSON results that Kelvara wrote");
  EXPECT_EQ(KelvaraFile(R"({"reports": 0, "abandoned": 0, "aas": []})"),
            "JSON results that Kelvara wrote");
  EXPECT_EQ(KelvaraFile(test::Golden("csv-empty-rfps-dec.csv")), "CSV results that Kelvara wrote");
  EXPECT_EQ(KelvaraFile(test::Golden("report-empty.html")), "an HTML report that Kelvara wrote");
}

TEST(KelvaraFileTest, RecognisesALogByItsStartOrByAnyOfItsReadings) {
  for (const char* const text :
       {"21.11.26 14:44:02, Log To File Started\r\n", "11/21/26 2:44:02 PM, 01->02=-11\r\n",
        "junk\r\n2026-11-21 14:44:02, 64[F]->0A[3]=240\r\n", "2026-11-21 14:44:02, 1->2=0\n"}) {
    EXPECT_EQ(KelvaraFile(text), "a log that Kelvara captured") << text;
  }
  for (const char* const display : {"dec-fps-off", "dec-fps-on", "hex-fps-off", "hex-fps-on"}) {
    const std::string log = test::Golden("log-four-antennas-" + std::string(display) + ".txt");
    EXPECT_EQ(KelvaraFile(log), "a log that Kelvara captured") << display;
    EXPECT_EQ(KelvaraFile(log.substr(log.find('\n') + 1)), "a log that Kelvara captured");
  }
}

TEST(KelvaraFileTest, RecognisesNoOtherText) {
  for (const std::string& text :
       {std::string(), std::string("{}"), std::string("<!DOCTYPE HTML><html></html>"),
        std::string("a, b->c=1\n"), std::string("\x01rfps\x02") + test::OneNeighbourReport(1, 2, 3),
        test::Golden("four-antennas.session.txt"), std::string(10000, '\0')}) {
    EXPECT_EQ(KelvaraFile(text), "") << text;
  }
}

TEST(KelvaraFileTest, LooksOnlyAtTheStart) {
  EXPECT_EQ(KelvaraFile(std::string(kFileStartBytes, 'x') + ", Log To File Started"), "");
}

}  // namespace
}  // namespace kelvara::sessions
