#include "sessions/ReviewedSession.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "base/Fault.h"
#include "support/Doubles.h"
#include "support/RandomText.h"
#include "support/RecordedReports.h"
#include "support/ReplayedTrace.h"

namespace kelvara::sessions {
namespace {

using test::ModelText;
using test::OneNeighbourReport;
using test::RandomText;
using test::ReplayedTrace;

constexpr std::uint64_t kPieceBytes = 64 * 1024;
constexpr std::size_t kMostEntries = 100;
constexpr const char* kClear = "\x01!clear\x02";
constexpr const char* kUndo = "\x01!undo\x02";

std::string TimeMark(std::int64_t time) { return "\x01@" + std::to_string(time) + "\x02"; }

std::string Requested(const std::string& report, std::int64_t time = 0) {
  return TimeMark(time) + "\x01rfps\x02" + report;
}

/// A session in a file, and where its whole reports end.
class ReviewedSessionTest : public ::testing::TestWithParam<unsigned> {
 protected:
  void AddReport(const std::string& text) {
    trace_ += text;
    ends_.push_back(trace_.size());
  }

  ReviewedSession Open(std::uint64_t checkpointBytes = kCheckpointBytes) {
    files_.files["trace"] = trace_;
    return ReviewedSession(files_, "trace", checkpointBytes);
  }

  static void ReadAll(ReviewedSession& session) {
    while (session.ReadOn()) {
    }
  }

  /// The text that belongs to a report: up to a clear, the next report or the end of the file.
  std::string Until(int report) const {
    const std::size_t start = report == 0 ? 0 : ends_[std::size_t(report) - 1];
    const std::size_t next =
        std::size_t(report) < ends_.size() ? ends_[std::size_t(report)] - 1 : trace_.size();
    return trace_.substr(0, std::min(next, trace_.find(kClear, start)));
  }

  void ExpectMoment(ReviewedSession& session, int report) {
    SCOPED_TRACE(report);
    const ReviewedMoment moment = session.At(report, {}, kMostEntries);
    const std::string text = Until(report);
    const ReplayedTrace replayed(text);
    EXPECT_EQ(ModelText(moment.results), ModelText(replayed.model));
    const std::size_t clear = text.rfind(kClear);
    const std::size_t cleared =
        clear == std::string::npos ? 0 : ReplayedTrace(text.substr(0, clear)).log.entries.size();
    const std::vector<std::string>& entries = replayed.log.entries;
    const std::size_t shown = std::min(kMostEntries, entries.size() - cleared);
    ASSERT_EQ(moment.log.size(), shown);
    for (std::size_t entry = 0; entry < shown; ++entry) {
      EXPECT_EQ(moment.log[entry].text, entries[entries.size() - shown + entry]);
    }
  }

  test::MemoryFileSystem files_;
  std::string trace_;
  std::vector<std::size_t> ends_;
};

TEST_F(ReviewedSessionTest, GoesToEveryReportInAnyOrder) {
  AddReport(Requested(OneNeighbourReport(1, 2, -11), 1000));
  AddReport(Requested(OneNeighbourReport(1, 3, 7), 4000));
  ReviewedSession session = Open();
  ReadAll(session);
  EXPECT_EQ(session.Reports(), 2);
  EXPECT_EQ(session.Antennas(), 3);
  EXPECT_EQ(session.BytesRead(), trace_.size());
  for (const int report : {2, 0, 1, 2}) {
    ExpectMoment(session, report);
  }
  EXPECT_EQ(session.At(0, {}, 0).time, 1000);
  EXPECT_EQ(session.At(1, {}, 0).time, 1000);
  EXPECT_EQ(session.At(2, {}, 0).time, 4000);
}

TEST_F(ReviewedSessionTest, ShowsTheLogInTheOptionsChosenWithTheTimeOfEachReport) {
  AddReport(Requested(OneNeighbourReport(1, 10, -11), 1000));
  AddReport(Requested(OneNeighbourReport(1, 10, 7), 4000));
  ReviewedSession session = Open();
  ReadAll(session);
  const ReviewedMoment moment =
      session.At(2, {.units = sync::PhaseUnits::Rfps, .rpnHex = true, .fpsShown = true}, 5);
  ASSERT_EQ(moment.log.size(), 2U);
  EXPECT_EQ(moment.log[0].text, "01[3]->0A[3]=-11");
  EXPECT_EQ(moment.log[0].time, 1000);
  EXPECT_EQ(moment.log[1].time, 4000);
  EXPECT_TRUE(session.At(2, {}, 0).log.empty());
}

TEST_F(ReviewedSessionTest, AClearHidesNoReportAndAnUndoBelongsToTheReportBefore) {
  AddReport(Requested(OneNeighbourReport(1, 2, -11)));
  trace_ += kClear;
  AddReport(Requested(OneNeighbourReport(3, 4, 5)));
  trace_ += kUndo;
  trace_ += kClear;
  ReviewedSession session = Open();
  ReadAll(session);
  EXPECT_EQ(session.At(1, {}, 0).results.ReportCount(), 1);
  EXPECT_EQ(session.At(2, {}, 0).results.ReportCount(), 2);
  EXPECT_EQ(session.At(2, {}, 0).results.AaCount(), 4);
  EXPECT_EQ(session.At(2, {}, 9).log.size(), 1U);
}

TEST_F(ReviewedSessionTest, ReadsAStreamWithoutTimes) {
  AddReport(OneNeighbourReport(1, 2, -11));
  AddReport(OneNeighbourReport(1, 3, 7));
  trace_ += "half a report\r\n";
  ReviewedSession session = Open();
  ReadAll(session);
  EXPECT_EQ(session.Reports(), 2);
  ExpectMoment(session, 1);
  ExpectMoment(session, 2);
  EXPECT_FALSE(session.At(2, {}, 0).time);
}

TEST_F(ReviewedSessionTest, AFileThatKelvaraWroteAsSomethingElseIsAFault) {
  trace_ = "File Created by Kelvara\r\n";
  try {
    Open();
    FAIL();
  } catch (const base::Fault& fault) {
    EXPECT_STREQ(fault.what(),
                 "\"trace\" is CSV results that Kelvara wrote, not a recorded session");
  }
}

TEST_F(ReviewedSessionTest, AFileThatBecomesShorterIsAFaultAndStaysOpen) {
  AddReport(Requested(OneNeighbourReport(1, 2, -11)));
  AddReport(Requested(OneNeighbourReport(1, 3, 7)));
  test::MemoryFileSystem files;
  files.files["trace"] = trace_;
  ReviewedSession session(files, "trace");
  ReadAll(session);
  files.files["trace"].resize(ends_[0] + 3);
  EXPECT_THROW(session.At(2, {}, 0), base::Fault);
  EXPECT_THROW(session.At(1, {}, 0), base::Fault);
  files.files["trace"] = trace_;
  EXPECT_EQ(session.At(2, {}, 0).results.ReportCount(), 2);
}

TEST_F(ReviewedSessionTest, PassesOverWhatIsAddedWhileItIsOpen) {
  AddReport(Requested(OneNeighbourReport(1, 2, -11)));
  test::MemoryFileSystem files;
  files.files["trace"] = trace_;
  ReviewedSession session(files, "trace");
  files.files["trace"] += trace_;
  ReadAll(session);
  EXPECT_EQ(session.FileBytes(), trace_.size());
  EXPECT_EQ(session.Reports(), 1);
  EXPECT_EQ(session.At(1, {}, 0).results.ReportCount(), 1);
}

TEST_F(ReviewedSessionTest, KeepsItsCheckpointsFewInALongFile) {
  constexpr int kReports = 3000;
  for (int report = 0; report < kReports; ++report) {
    AddReport(Requested(OneNeighbourReport(report % 50, 50, report % 100)));
    trace_ += std::string(12'000, ' ');  // Text that belongs to no report.
  }
  ASSERT_GT(trace_.size(), 512 * kPieceBytes);
  ReviewedSession session = Open(kPieceBytes);
  ReadAll(session);
  ASSERT_EQ(session.Reports(), kReports);
  for (const int report : {kReports, 1, 1777}) {
    EXPECT_EQ(session.At(report, {}, 0).results.ReportCount(), report);
  }
}

TEST_P(ReviewedSessionTest, EveryReportIsAsInAReplayOfTheFileUpToThere) {
  RandomText random(GetParam());
  int readings = 0;
  while (trace_.size() < 10 * kPieceBytes) {
    const std::string report =
        random.Below(20) == 0
            ? test::CrowdedReport(random.Below(60), random.Below(50), 6 + random.Below(6))
            : OneNeighbourReport(random.Below(60), random.Below(60), random.Below(100));
    switch (random.Below(40)) {
      case 0:
        trace_ += kClear;
        break;
      case 1:
        trace_ += kUndo;
        break;
      case 2:  // A report cut short by the next.
        trace_ += Requested(report.substr(0, std::size_t(random.Below(int(report.size() - 1)))));
        AddReport(Requested(report));
        break;
      case 3: {  // Results cleared while a report arrives.
        const auto half = std::size_t(random.Below(int(report.size() - 1)));
        AddReport(Requested(report.substr(0, half) + kClear + report.substr(half)));
        break;
      }
      case 4:
        trace_ +=
            "\x01"
            "cho\x02"
            "text\r\n";
        break;
      default:
        AddReport(Requested(report, ++readings));
        break;
    }
  }
  ReviewedSession session = Open(kPieceBytes);
  ReadAll(session);
  ASSERT_EQ(session.Reports(), int(ends_.size()));
  for (int move = 0; move < 8; ++move) {
    ExpectMoment(session, random.Below(session.Reports() + 1));
  }
  ExpectMoment(session, session.Reports());
}

INSTANTIATE_TEST_SUITE_P(Seeds, ReviewedSessionTest, ::testing::Range(1U, 13U));

}  // namespace
}  // namespace kelvara::sessions
