#include "link/ReportCollector.h"

#include <gtest/gtest.h>

#include "support/RecordedReports.h"

namespace kelvara::link {
namespace {

using Event = ReportCollector::Event;

class ReportCollectorTest : public ::testing::Test {
 protected:
  /// Appends all of a text and returns the last event.
  Event AppendAll(std::string_view text) {
    Event last = Event::None;
    while (!text.empty()) {
      const ReportCollector::Step step = collector.Append(text);
      EXPECT_GT(step.taken, 0U);
      text.remove_prefix(step.taken);
      last = step.event;
    }
    return last;
  }

  ReportCollector collector;
};

TEST_F(ReportCollectorTest, KeepsNothingBeforeAReportIsExpected) {
  EXPECT_EQ(AppendAll("stray\r\ntext"), Event::None);
  EXPECT_EQ(collector.Text(), "");
  EXPECT_EQ(collector.LinesLeft(), 0);
  EXPECT_FALSE(collector.IsUnfinished());
}

TEST_F(ReportCollectorTest, AReportIsCompleteAtIts29thLineFeed) {
  collector.Expect();
  EXPECT_EQ(collector.LinesLeft(), 29);
  for (int line = 1; line <= 28; ++line) {
    EXPECT_EQ(AppendAll("x\r\n"), Event::Line);
    EXPECT_EQ(collector.LinesLeft(), 29 - line);
  }
  EXPECT_EQ(AppendAll("x\r"), Event::None);
  EXPECT_TRUE(collector.IsUnfinished());
  EXPECT_EQ(AppendAll("\n"), Event::Report);
  EXPECT_EQ(collector.LinesLeft(), 0);
  EXPECT_FALSE(collector.IsUnfinished());
}

TEST_F(ReportCollectorTest, TheTextIncludesTheLineEnds) {
  const std::string report = test::OneNeighbourReport(1, 2, -11);
  collector.Expect();
  EXPECT_EQ(AppendAll(report), Event::Report);
  EXPECT_EQ(collector.Text(), report);
}

TEST_F(ReportCollectorTest, TextAfterTheLastLineIsNotCollected) {
  const std::string report = test::OneNeighbourReport(1, 2, -11);
  collector.Expect();
  EXPECT_EQ(AppendAll(report + "stray\r\n"), Event::None);
  EXPECT_EQ(collector.Text(), report);
}

TEST_F(ReportCollectorTest, LineFeedsCountWithoutCarriageReturns) {
  collector.Expect();
  EXPECT_EQ(AppendAll(std::string(28, '\n')), Event::Line);
  EXPECT_EQ(AppendAll("\r\r\r"), Event::None);
  EXPECT_EQ(AppendAll("\n"), Event::Report);
}

TEST_F(ReportCollectorTest, ExpectingAgainEmptiesTheBuffer) {
  collector.Expect();
  AppendAll("half a\r\nreport");
  collector.Expect();
  EXPECT_EQ(collector.Text(), "");
  EXPECT_EQ(collector.LinesLeft(), 29);
  EXPECT_FALSE(collector.IsUnfinished());
}

TEST_F(ReportCollectorTest, ResetExpectsNothing) {
  collector.Expect();
  AppendAll("half a\r\nreport");
  collector.Reset();
  EXPECT_EQ(collector.LinesLeft(), 0);
  EXPECT_FALSE(collector.IsUnfinished());
  EXPECT_EQ(AppendAll(std::string(29, '\n')), Event::None);
}

TEST_F(ReportCollectorTest, AReportThatHasNoLineFeedYetIsUnfinished) {
  collector.Expect();
  AppendAll("r");
  EXPECT_TRUE(collector.IsUnfinished());
}

TEST_F(ReportCollectorTest, OneMebibyteIsKept) {
  const std::string report = std::string(kMaxReportBytes - 29, 'x') + std::string(29, '\n');
  collector.Expect();
  EXPECT_EQ(AppendAll(report), Event::Report);
  EXPECT_EQ(collector.Text().size(), kMaxReportBytes);
}

TEST_F(ReportCollectorTest, OneByteMoreIsDroppedAtTheLastLine) {
  collector.Expect();
  AppendAll(std::string(kMaxReportBytes - 28, 'x') + std::string(28, '\n'));
  EXPECT_TRUE(collector.IsUnfinished());
  EXPECT_EQ(AppendAll("\n"), Event::Dropped);
  EXPECT_EQ(collector.Text(), "");
}

TEST_F(ReportCollectorTest, AReportAfterADroppedOneIsKept) {
  collector.Expect();
  EXPECT_EQ(AppendAll(std::string(kMaxReportBytes, 'x') + std::string(29, '\n')), Event::Dropped);
  collector.Expect();
  const std::string report = test::OneNeighbourReport(1, 2, -11);
  EXPECT_EQ(AppendAll(report), Event::Report);
  EXPECT_EQ(collector.Text(), report);
}

}  // namespace
}  // namespace kelvara::link
