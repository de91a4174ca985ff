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

TEST(LineTrace, MarksCommandsAndDoublesTheMarkInReceivedText) {
  MemoryFileSystem files;
  sessions::LineTrace trace(files.OpenForOutput("trace"));
  trace.Sent("rfps");
  trace.Received(
      "a\x01"
      "b\n");
  trace.Sent("cho");
  trace.Close();
  EXPECT_EQ(files.files["trace"],
            "\x01rfps\x02"
            "a\x01\x01"
            "b\n\x01"
            "cho\x02");
}

TEST(LineTrace, BeginsWithAMarkEvenWhenTextComesFirst) {
  MemoryFileSystem files;
  sessions::LineTrace trace(files.OpenForOutput("trace"));
  trace.Received("early\n");
  trace.Close();
  EXPECT_EQ(files.files["trace"],
            "\x01\x02"
            "early\n");
  EXPECT_TRUE(Replayed(files.files["trace"]).empty());
}

TEST(LineTrace, ReachesTheFileAtEachLineFeedAndCommand) {
  MemoryFileSystem files;
  sessions::LineTrace trace(files.OpenForOutput("trace"));
  trace.Sent("rfps");
  EXPECT_EQ(files.files["trace"], "\x01rfps\x02");
  trace.Received("line\r");
  trace.Received("\n");
  EXPECT_EQ(files.files["trace"], "\x01rfps\x02line\r\n");
}

TEST(LineTrace, EndsAtAFailedWriteAndSaysWhy) {
  MemoryFileSystem files;
  files.writesLeft = 1;
  sessions::LineTrace trace(files.OpenForOutput("trace"));
  trace.Sent("rfps");
  EXPECT_EQ(trace.Failure(), "");
  trace.Received("line\n");
  EXPECT_EQ(trace.Failure(), "cannot write trace");
  trace.Received("line\n");
  trace.Close();
  EXPECT_EQ(files.files["trace"], "\x01rfps\x02");
}

TEST(LineTrace, OfALiveLinkReplaysToTheSameReports) {
  MemoryFileSystem files;
  sessions::LineTrace trace(files.OpenForOutput("trace"));
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
  trace.Close();
  ASSERT_GE(rig.actions.reports.size(), 2U);
  EXPECT_EQ(Replayed(files.files["trace"]), rig.actions.reports);
}

}  // namespace
}  // namespace kelvara::test
