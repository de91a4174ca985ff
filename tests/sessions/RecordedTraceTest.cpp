#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "sessions/ReadingRecorder.h"
#include "sessions/RecordedSession.h"
#include "support/RecordedReports.h"

namespace kelvara::sessions {
namespace {

using test::CrLf;
using test::OneNeighbourReport;
using test::ReadingRecorder;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::string Command(const std::string& command) {
  std::string mark = "\x01";
  mark += command;
  mark += '\x02';
  return mark;
}

std::vector<std::string> TraceEvents(const std::string& text) {
  return test::EventsOf<RecordedSession>(text);
}

const std::string kReport = OneNeighbourReport(1, 2, -11);
const std::string kOther = OneNeighbourReport(2, 6, 40);

TEST(RecordedTraceTest, EachRfpsExpectsAReport) {
  EXPECT_THAT(TraceEvents(Command("rfps") + kReport + Command("rfps") + kOther),
              ElementsAre(kReport, kOther));
}

TEST(RecordedTraceTest, TextOutsideAReportIsNotCollected) {
  EXPECT_THAT(TraceEvents(Command("cho") + kOther + Command("rfps") + kReport + kOther +
                          Command("bho") + kOther + Command("rfps") + kOther),
              ElementsAre(kReport, kOther));
}

TEST(RecordedTraceTest, WithoutRfpsNothingIsCollected) {
  EXPECT_THAT(TraceEvents(Command("cho") + kReport + Command("bho") + kReport), IsEmpty());
}

TEST(RecordedTraceTest, OtherCommandsDoNotDisturbAReport) {
  for (const std::size_t place : {std::size_t{0}, std::size_t{7}, kReport.size() - 1}) {
    for (const char* command : {"cho", "bho", "", "RFPS", "rfps ", "rfp"}) {
      EXPECT_THAT(TraceEvents(Command("rfps") + kReport.substr(0, place) + Command(command) +
                              kReport.substr(place)),
                  ElementsAre(kReport))
          << command << " at " << place;
    }
  }
}

TEST(RecordedTraceTest, MarksOfResultsAndTimesAreToldInTheirOrder) {
  EXPECT_THAT(TraceEvents(Command("@1700000000123") + Command("rfps") + kReport +
                          Command("!clear") + kOther + Command("!undo") + Command("!end")),
              ElementsAre("(time 1700000000123)", kReport, ReadingRecorder::kClear,
                          ReadingRecorder::kUndo));
}

TEST(RecordedTraceTest, EveryMarkIsPassedOverInsideAReport) {
  for (const std::string mark :
       {"!clear", "!undo", "!end", "@17", "!later", "!", "@", "?", "!clear ", "rfps\r"}) {
    std::vector<std::string> events =
        TraceEvents(Command("rfps") + kReport.substr(0, 40) + Command(mark) + kReport.substr(40));
    ASSERT_FALSE(events.empty()) << mark;
    EXPECT_EQ(events.back(), kReport) << mark;
  }
}

TEST(RecordedTraceTest, ATimeIsDecimalDigitsUpToTheYear9999) {
  EXPECT_THAT(TraceEvents(Command("@0") + Command("@253402300799999")),
              ElementsAre("(time 0)", "(time 253402300799999)"));
  for (const std::string mark : {"@", "@-1", "@+1", "@ 1", "@1 ", "@1.5", "@1e3", "@0x1", "@abc",
                                 "@253402300800000", "@99999999999999999999"}) {
    EXPECT_THAT(TraceEvents(Command(mark)), IsEmpty()) << mark;
  }
}

TEST(RecordedTraceTest, ReceivedBytesThatLookLikeAnyMarkAreText) {
  for (const std::string mark : {"!clear", "!undo", "!end", "@17"}) {
    std::string received = kReport;
    received.insert(8, Command(mark));
    std::string traced = kReport;
    traced.insert(8, "\x01" + Command(mark));
    EXPECT_THAT(TraceEvents(Command("rfps") + traced), ElementsAre(received)) << mark;
  }
}

TEST(RecordedTraceTest, AReportCutShortByTheNextRfpsIsDiscarded) {
  for (const std::size_t length : {std::size_t{1}, std::size_t{100}, kOther.size() - 1}) {
    EXPECT_THAT(TraceEvents(Command("rfps") + kOther.substr(0, length) + Command("rfps") + kReport),
                ElementsAre(kReport))
        << length;
  }
}

TEST(RecordedTraceTest, ADoubledMarkIsAReceivedByte) {
  std::string received = kReport;
  received.insert(8, "\x01");
  std::string traced = kReport;
  traced.insert(8, "\x01\x01");
  EXPECT_THAT(TraceEvents(Command("rfps") + traced), ElementsAre(received));
}

TEST(RecordedTraceTest, ReceivedBytesThatLookLikeACommandAreText) {
  std::string received = kReport;
  received.insert(8, "\x01rfps\x02");
  std::string traced = kReport;
  traced.insert(8, "\x01\x01rfps\x02");
  EXPECT_THAT(TraceEvents(Command("rfps") + traced), ElementsAre(received));
}

TEST(RecordedTraceTest, ThreeMarksAreAByteAndACommand) {
  std::string text = Command("rfps");
  text += "lost\x01\x01";
  text += Command("rfps") + kReport;
  EXPECT_THAT(TraceEvents(text), ElementsAre(kReport));
}

TEST(RecordedTraceTest, ATraceMayBeginWithAReceivedMark) {
  std::string text = "\x01\x01";
  text += kOther + Command("rfps") + kReport;
  EXPECT_THAT(TraceEvents(text), ElementsAre(kReport));
}

TEST(RecordedTraceTest, ACommandEndAloneIsReceivedText) {
  std::string report = kReport;
  report.insert(8, "\x02");
  EXPECT_THAT(TraceEvents(Command("rfps") + report), ElementsAre(report));
}

TEST(RecordedTraceTest, AfterADamagedMarkTheNextReportIsRead) {
  std::string text = "\x01rfps";
  text += kOther + kOther + Command("rfps") + kReport;
  const std::vector<std::string> events = TraceEvents(text);
  ASSERT_FALSE(events.empty());
  EXPECT_EQ(events.back(), kReport);
}

TEST(RecordedTraceTest, ADamagedMarkInsideAReportLosesNoLine) {
  std::string damaged = kReport;
  damaged.insert(CrLf("rfps").size(), "\x01");
  std::string text = Command("rfps");
  text += damaged + kOther;
  const std::vector<std::string> events = TraceEvents(text);
  ASSERT_EQ(events.size(), 1U);
  EXPECT_NE(events[0].find(CrLf(test::NeighbourLine(2, -11))), std::string::npos);
}

TEST(RecordedTraceTest, AnUnfinishedReportAtTheEndIsDroppedWithANote) {
  EXPECT_THAT(TraceEvents(Command("rfps") + kReport + Command("rfps") + CrLf("rfps")),
              ElementsAre(kReport, ReadingRecorder::kUnfinished));
}

TEST(RecordedTraceTest, ATraceMayEndInsideAMark) {
  for (const char* end :
       {"\x01", "\x01r", "\x01rfps", "\x01@17000", "\x01!", "\x01!clear", "\x01!undo"}) {
    EXPECT_THAT(TraceEvents(Command("rfps") + kReport + end), ElementsAre(kReport));
  }
}

TEST(RecordedTraceTest, ATooLargeReportIsDroppedAndTheNextIsRead) {
  const std::string large = test::RecordedReport({std::string(link::kMaxReportBytes, 'x')});
  EXPECT_THAT(TraceEvents(Command("rfps") + large + Command("rfps") + kReport),
              ElementsAre(ReadingRecorder::kTooLarge, kReport));
}

/// A long trace with every kind of mark in it.
std::string MixedTrace() {
  std::string text;
  std::mt19937 random(7);
  for (int step = 0; step < 400; ++step) {
    switch (random() % 7) {
      case 6:
        text += Command(std::vector{"@1700000000000", "!clear", "!undo", "!end"}[random() % 4]);
        break;
      case 0:
        text += Command("rfps") + kReport;
        break;
      case 1:
        text += Command("rfps") + kOther.substr(0, random() % kOther.size());
        break;
      case 2:
        text += Command(random() % 2 == 0 ? "cho" : "bho");
        break;
      case 3:
        text += "\x01\x01";
        break;
      case 4:
        text += std::string(random() % 5, static_cast<char>(random() % 256));
        break;
      default:
        text += "stray\r\n";
        break;
    }
  }
  return Command("cho") + text;
}

TEST(RecordedTraceTest, ATraceReadsTheSameInPieces) {
  const std::string text = MixedTrace();
  const std::vector<std::string> whole = TraceEvents(text);
  ASSERT_GT(whole.size(), 40U);
  for (const std::size_t size : {1U, 2U, 3U, 7U, 64U, 1000U}) {
    ReadingRecorder recorder;
    RecordedSession session(recorder);
    test::FeedFile(session, text, size);
    EXPECT_EQ(recorder.events, whole) << size;
  }
}

TEST(RecordedTraceTest, AnyBytesReadTheSameInPieces) {
  std::mt19937 random(1);
  constexpr std::string_view kAlphabet = "\x01\x01\x02rfps\n\n\n";
  for (int round = 0; round < 300; ++round) {
    std::string text = "\x01";
    for (std::size_t length = random() % 2000; length > 0; --length) {
      text += random() % 8 == 0 ? std::string(Command("rfps"))
                                : std::string(1, kAlphabet[random() % kAlphabet.size()]);
    }
    const std::vector<std::string> whole = TraceEvents(text);
    ReadingRecorder recorder;
    RecordedSession session(recorder);
    test::FeedFile(session, text, 1 + random() % 10);
    ASSERT_EQ(recorder.events, whole) << round;
  }
}

}  // namespace
}  // namespace kelvara::sessions
