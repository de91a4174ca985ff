#include "sessions/RecordedSession.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "sessions/ReadingRecorder.h"
#include "support/RecordedReports.h"

namespace kelvara::sessions {
namespace {

using test::CrLf;
using test::EventsOf;
using test::OneNeighbourReport;
using test::ReadingRecorder;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> SessionEvents(const std::string& text) {
  return EventsOf<RecordedSession>(text);
}

TEST(RecordedSessionTest, AnEmptyFileHasNoReports) { EXPECT_THAT(SessionEvents(""), IsEmpty()); }

TEST(RecordedSessionTest, AReportEndsAtEvery29thLineFeed) {
  const std::string first = OneNeighbourReport(1, 2, -11);
  const std::string second = OneNeighbourReport(2, 6, 40);
  EXPECT_THAT(SessionEvents(first + second), ElementsAre(first, second));
}

TEST(RecordedSessionTest, LinesAreCountedWhateverTheyContain) {
  std::string text;
  for (int line = 0; line < 58; ++line) {
    text += std::to_string(line) + "\n";
  }
  const std::size_t end = text.find("\n29\n") + 1;
  EXPECT_THAT(SessionEvents(text), ElementsAre(text.substr(0, end), text.substr(end)));
}

TEST(RecordedSessionTest, AnUnfinishedReportIsDroppedWithANote) {
  const std::string report = OneNeighbourReport(1, 2, -11);
  EXPECT_THAT(SessionEvents(report + CrLf("rfps")),
              ElementsAre(report, ReadingRecorder::kUnfinished));
  EXPECT_THAT(SessionEvents(report + "r"), ElementsAre(report, ReadingRecorder::kUnfinished));
  EXPECT_THAT(SessionEvents(report.substr(0, report.size() - 1)),
              ElementsAre(ReadingRecorder::kUnfinished));
}

TEST(RecordedSessionTest, AnUnfinishedReportDoesNotReachTheNextFile) {
  ReadingRecorder recorder;
  RecordedSession session(recorder);
  const std::string report = OneNeighbourReport(1, 2, -11);
  test::FeedFile(session, CrLf("left over"), 100);
  test::FeedFile(session, report, 100);
  EXPECT_THAT(recorder.events, ElementsAre(ReadingRecorder::kUnfinished, report));
}

TEST(RecordedSessionTest, EachFileIsATraceOrAStreamByItsOwnFirstByte) {
  ReadingRecorder recorder;
  RecordedSession session(recorder);
  const std::string report = OneNeighbourReport(1, 2, -11);
  test::FeedFile(session, "\x01rfps\x02" + report + "stray\n", 100);
  test::FeedFile(session, report, 100);
  test::FeedFile(session, "\x01rfps\x02" + report, 100);
  EXPECT_THAT(recorder.events, ElementsAre(report, report, report));
}

TEST(RecordedSessionTest, BytesAreReadUnchanged) {
  std::string report = OneNeighbourReport(1, 2, -11);
  report.insert(10, std::string("\0\x80\xFF\x01rfps\x02\x1A\r", 11));
  EXPECT_THAT(SessionEvents(report + report), ElementsAre(report, report));
}

TEST(RecordedSessionTest, ATooLargeReportIsDroppedAndLaterOnesAreRead) {
  const std::string first = OneNeighbourReport(1, 2, -11);
  const std::string large = test::RecordedReport({std::string(link::kMaxReportBytes, 'x')});
  const std::string last = OneNeighbourReport(2, 6, 40);
  EXPECT_THAT(SessionEvents(first + large + last),
              ElementsAre(first, ReadingRecorder::kTooLarge, last));
}

TEST(RecordedSessionTest, EachTooLargeReportIsNotedOnce) {
  const std::string large = test::RecordedReport({std::string(3 * link::kMaxReportBytes, 'x')});
  EXPECT_THAT(SessionEvents(large + large),
              ElementsAre(ReadingRecorder::kTooLarge, ReadingRecorder::kTooLarge));
}

TEST(RecordedSessionTest, TheLargestReportIsRead) {
  const std::string report(link::kMaxReportBytes - 29, 'x');
  const std::string whole = report + std::string(29, '\n');
  const std::vector<std::string> events = SessionEvents(whole);
  ASSERT_EQ(events.size(), 1U);
  EXPECT_TRUE(events[0] == whole);
  EXPECT_THAT(SessionEvents("x" + whole), ElementsAre(ReadingRecorder::kTooLarge));
}

TEST(RecordedSessionTest, AnEndlessLineIsNotedOnce) {
  EXPECT_EQ(SessionEvents(std::string(3 * link::kMaxReportBytes, 'x')).size(), 1U);
}

/// A stream with a large report, binary bytes and an unfinished report.
std::string MixedStream() {
  std::string text = OneNeighbourReport(1, 2, -11);
  text += std::string(29, '\n');
  text += test::RecordedReport({std::string(link::kMaxReportBytes, '\x01')});
  text += test::RecordedReport({std::string("\0\x01\x02\r", 4), test::SyncLine(1)});
  text += OneNeighbourReport(2, 6, 40);
  text += CrLf("left over");
  return text;
}

class PiecesTest : public ::testing::TestWithParam<std::size_t> {};

TEST_P(PiecesTest, AStreamReadsTheSameInPieces) {
  const std::string text = MixedStream();
  ReadingRecorder recorder;
  RecordedSession session(recorder);
  test::FeedFile(session, text, GetParam());
  const std::vector<std::string> whole = SessionEvents(text);
  ASSERT_EQ(whole.size(), 6U);
  EXPECT_TRUE(recorder.events == whole);
}

INSTANTIATE_TEST_SUITE_P(Sizes, PiecesTest, ::testing::Values(1, 2, 7, 29, 4096, 262144));

TEST(RecordedSessionTest, AStreamReadsTheSameInRandomPieces) {
  const std::string text = MixedStream();
  const std::vector<std::string> whole = SessionEvents(text);
  std::mt19937 random(29);
  for (int round = 0; round < 20; ++round) {
    SCOPED_TRACE(round);
    ReadingRecorder recorder;
    RecordedSession session(recorder);
    std::uniform_int_distribution<std::size_t> size(0, std::size_t{1} << (round % 18));
    for (std::size_t start = 0; start < text.size();) {
      const std::string_view piece = std::string_view(text).substr(start, size(random));
      session.Feed(piece);
      start += piece.size();
    }
    session.End();
    EXPECT_TRUE(recorder.events == whole);
  }
}

}  // namespace
}  // namespace kelvara::sessions
