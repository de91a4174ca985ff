#include "sessions/RecentSessions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Doubles.h"
#include "support/MemorySessionFolder.h"
#include "support/RecordedReports.h"

namespace kelvara::sessions {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RecentSessionsTest : public ::testing::Test {
 protected:
  void Add(const std::string& name, const std::string& text) {
    folder_.files[name] = text;
    files_.files[folder_.PathOf(name)] = text;
  }

  std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (const RecentSession& session : recent_.Sessions()) {
      texts.push_back(session.text);
    }
    return texts;
  }

  void Count() {
    while (recent_.CountOn()) {
    }
  }

  const std::string report_ = "\x01rfps\x02" + test::OneNeighbourReport(1, 2, -11);
  test::MemorySessionFolder folder_;
  test::MemoryFileSystem files_;
  RecentSessions recent_{folder_, files_};
};

TEST_F(RecentSessionsTest, AreListedNewestFirstAndThenCounted) {
  Add("2026-11-20-090000.trace", report_);
  Add("2026-11-21-112859.trace", report_ + report_);
  Add("notes.txt", "");
  recent_.List();
  EXPECT_THAT(Texts(), ElementsAre("2026-11-21 11:28", "2026-11-20 09:00"));
  EXPECT_EQ(recent_.Sessions()[1].path, "sessions/2026-11-20-090000.trace");
  Count();
  EXPECT_THAT(Texts(), ElementsAre("2026-11-21 11:28, 2 reports, 2 antennas",
                                   "2026-11-20 09:00, 1 report, 2 antennas"));
}

TEST_F(RecentSessionsTest, TheSessionBeingRecordedIsLeftOut) {
  Add("2026-11-21-112859.trace", report_);
  folder_.locked.insert("2026-11-21-112859.trace");
  recent_.List();
  EXPECT_THAT(Texts(), IsEmpty());
  EXPECT_FALSE(recent_.CountOn());
}

TEST_F(RecentSessionsTest, ResultsThatWereClearedCountToo) {
  Add("2026-11-21-112859.trace", report_ + "\x01!clear\x02\x01!end\x02");
  recent_.List();
  Count();
  EXPECT_THAT(Texts(), ElementsAre("2026-11-21 11:28, 1 report, 2 antennas"));
}

TEST_F(RecentSessionsTest, OneThatHoldsNothingCannotBeOpened) {
  Add("2026-11-21-112859.trace", "\x01rfps\x02half");
  folder_.files["2026-11-20-090000.trace"] = "unreadable";
  recent_.List();
  Count();
  EXPECT_THAT(Texts(),
              ElementsAre("2026-11-21 11:28, no reports", "2026-11-20 09:00, cannot be read"));
  EXPECT_FALSE(recent_.Sessions()[0].canOpen);
  EXPECT_FALSE(recent_.Sessions()[1].canOpen);
}

TEST_F(RecentSessionsTest, ASessionIsCountedAgainOnlyWhenItHasChanged) {
  Add("2026-11-20-090000.trace", report_);
  recent_.List();
  Count();
  recent_.List();
  EXPECT_THAT(Texts(), ElementsAre("2026-11-20 09:00, 1 report, 2 antennas"));
  EXPECT_FALSE(recent_.CountOn());
  Add("2026-11-20-090000.trace", report_ + report_);
  recent_.List();
  EXPECT_THAT(Texts(), ElementsAre("2026-11-20 09:00"));
  Count();
  EXPECT_THAT(Texts(), ElementsAre("2026-11-20 09:00, 2 reports, 2 antennas"));
}

}  // namespace
}  // namespace kelvara::sessions
