#include "sessions/WholeReport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/ReportCollector.h"
#include "sessions/ReadingRecorder.h"
#include "support/RecordedReports.h"

namespace kelvara::sessions {
namespace {

using test::OneNeighbourReport;
using test::ReadingRecorder;
using ::testing::ElementsAre;

std::vector<std::string> WholeEvents(const std::string& text) {
  return test::EventsOf<WholeReport>(text);
}

TEST(WholeReportTest, AFileIsOneReportWhateverItsLines) {
  const std::string report = OneNeighbourReport(1, 2, -11);
  for (const std::string& text :
       {std::string(), std::string("one line"), report, report + report, report.substr(0, 40),
        std::string("\x01rfps\x02") + report, std::string("\0\n\xFF", 3)}) {
    EXPECT_THAT(WholeEvents(text), ElementsAre(text));
  }
}

TEST(WholeReportTest, PiecesMakeNoDifference) {
  const std::string text = OneNeighbourReport(1, 2, -11) + OneNeighbourReport(2, 6, 40);
  for (const std::size_t size : {1U, 7U, 29U, 1000U}) {
    ReadingRecorder recorder;
    WholeReport whole(recorder);
    test::FeedFile(whole, text, size);
    EXPECT_THAT(recorder.events, ElementsAre(text)) << size;
  }
}

TEST(WholeReportTest, EachFileIsASeparateReport) {
  ReadingRecorder recorder;
  WholeReport whole(recorder);
  test::FeedFile(whole, "first", 2);
  test::FeedFile(whole, "second", 2);
  EXPECT_THAT(recorder.events, ElementsAre("first", "second"));
}

TEST(WholeReportTest, ALargeFileWithoutLinesIsRead) {
  const std::string large(3 * link::kMaxReportBytes, 'x');
  for (const std::size_t size : {std::size_t{4096}, std::size_t{1000003}, large.size()}) {
    ReadingRecorder recorder;
    WholeReport whole(recorder);
    test::FeedFile(whole, large, size);
    test::FeedFile(whole, "next", 2);
    ASSERT_EQ(recorder.events.size(), 2U) << size;
    EXPECT_TRUE(recorder.events[0] == large) << size;
    EXPECT_EQ(recorder.events[1], "next") << size;
  }
}

TEST(WholeReportTest, ALargeFileOfManyLinesIsRead) {
  std::string large;
  while (large.size() <= 2 * link::kMaxReportBytes) {
    large += OneNeighbourReport(1, 2, -11);
  }
  for (const std::size_t size : {std::size_t{4096}, large.size()}) {
    ReadingRecorder recorder;
    WholeReport whole(recorder);
    test::FeedFile(whole, large, size);
    ASSERT_EQ(recorder.events.size(), 1U) << size;
    EXPECT_TRUE(recorder.events[0] == large) << size;
  }
}

}  // namespace
}  // namespace kelvara::sessions
