#include "sessions/LineTrace.h"

#include <gtest/gtest.h>

#include "sessions/RecordedSession.h"
#include "support/LinkRig.h"
#include "support/RecordedReports.h"

namespace kelvara::test {
namespace {

class ReportList : public sessions::RecordedTextReader {
 public:
  void ProcessRfpsReport(std::string_view report) override { reports.emplace_back(report); }
  void NoteDropped(sessions::DropReason /*reason*/) override {}

  std::vector<std::string> reports;
};

std::vector<std::string> Replayed(const std::string& trace) {
  ReportList list;
  sessions::RecordedSession session(list);
  session.Feed(trace);
  session.End();
  return list.reports;
}

/// The mark for the time of a clock that no test has advanced.
const std::string kTime = "\x01@1728000000000\x02";
const std::string kEnd = "\x01!end\x02";

TEST(LineTrace, MarksCommandsAndDoublesTheMarkInReceivedText) {
  MemoryFileSystem files;
  ManualClock clock;
  sessions::LineTrace trace(files.OpenForOutput("trace"), clock);
  trace.Sent("rfps");
  trace.Received(
      "a\x01"
      "b\n");
  trace.Sent("cho");
  trace.Ended();
  EXPECT_EQ(files.files["trace"], kTime +
                                      "\x01rfps\x02"
                                      "a\x01\x01"
                                      "b\n" +
                                      kTime +
                                      "\x01"
                                      "cho\x02" +
                                      kEnd);
}

TEST(LineTrace, BeginsWithAMarkEvenWhenTextComesFirst) {
  MemoryFileSystem files;
  ManualClock clock;
  sessions::LineTrace trace(files.OpenForOutput("trace"), clock);
  trace.Received("early\n");
  trace.Ended();
  EXPECT_EQ(files.files["trace"], kTime +
                                      "\x01\x02"
                                      "early\n" +
                                      kEnd);
  EXPECT_TRUE(Replayed(files.files["trace"]).empty());
}

TEST(LineTrace, ReachesTheFileAtEachLineFeedAndCommand) {
  MemoryFileSystem files;
  ManualClock clock;
  sessions::LineTrace trace(files.OpenForOutput("trace"), clock);
  trace.Sent("rfps");
  EXPECT_EQ(files.files["trace"], kTime + "\x01rfps\x02");
  trace.Received("line\r");
  trace.Received("\n");
  EXPECT_EQ(files.files["trace"], kTime + "\x01rfps\x02line\r\n");
}

TEST(LineTrace, TellsTheTimeOfEachCommand) {
  MemoryFileSystem files;
  ManualClock clock;
  sessions::LineTrace trace(files.OpenForOutput("trace"), clock);
  trace.Sent("rfps");
  clock.Advance(3.25);
  trace.Sent("rfps");
  EXPECT_EQ(files.files["trace"],
            kTime + "\x01rfps\x02" + "\x01@1728000003250\x02" + "\x01rfps\x02");
}

TEST(LineTrace, MarksClearsAndUndosAtOnce) {
  MemoryFileSystem files;
  ManualClock clock;
  sessions::LineTrace trace(files.OpenForOutput("trace"), clock);
  trace.Cleared(true);
  EXPECT_EQ(files.files["trace"], "\x01!clear\x02");
  trace.Received("a");
  trace.Restored();
  EXPECT_EQ(files.files["trace"],
            "\x01!clear\x02"
            "a\x01!undo\x02");
}

TEST(LineTrace, EndsAtAFailedWriteAndSaysWhy) {
  MemoryFileSystem files;
  files.writesLeft = 1;
  ManualClock clock;
  sessions::LineTrace trace(files.OpenForOutput("trace"), clock);
  trace.Sent("rfps");
  EXPECT_EQ(trace.Failure(), "");
  trace.Received("line\n");
  EXPECT_EQ(trace.Failure(), "cannot write trace");
  trace.Received("line\n");
  trace.Ended();
  EXPECT_EQ(files.files["trace"], kTime + "\x01rfps\x02");
}

TEST(LineTrace, OfALiveLinkReplaysToTheSameReports) {
  MemoryFileSystem files;
  ManualClock clock;
  sessions::LineTrace trace(files.OpenForOutput("trace"), clock);
  LinkRig rig;
  rig.link.SetLineListener(&trace);
  rig.Start();
  const std::string report = RecordedReport({"24", "100ec5A301 Sync", "\x01 odd"});
  rig.port.Receive("early\r\n");
  rig.time.Pass(3000);
  rig.port.Receive(report);
  rig.time.Pass(3000);
  rig.port.Receive(report.substr(0, 100));
  rig.time.Pass(3000);
  // Text that is held back as a possible goodbye and discarded by the next command is in neither.
  rig.port.Receive(report.substr(0, 60) + "\n2");
  rig.link.SendChoCommand();
  rig.port.Receive(report.substr(60));
  rig.time.Pass(3000);
  trace.Ended();
  ASSERT_GE(rig.actions.reports.size(), 2U);
  EXPECT_EQ(Replayed(files.files["trace"]), rig.actions.reports);
}

}  // namespace
}  // namespace kelvara::test
