#include "sessions/Journal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Doubles.h"
#include "support/MemorySessionFolder.h"
#include "support/RecordedReports.h"
#include "support/ReplayedTrace.h"

namespace kelvara::sessions {
namespace {

using test::OneNeighbourReport;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::string Mark(const std::string& text) { return "\x01" + text + "\x02"; }

const std::string kFirst = OneNeighbourReport(1, 2, -11);
const std::string kSecond = OneNeighbourReport(3, 4, 5);
const std::string kThird = OneNeighbourReport(5, 6, 7);
const std::string kTime = Mark("@1728000000000");
const std::string kName = "2024-10-04-000000.trace";
const std::string kOldName = "2024-10-03-235959.trace";

struct JournalTest : ::testing::Test {
  void Report(const std::string& report) {
    journal.Sent("rfps");
    journal.Received(report);
  }

  /// Puts a journal that was not ended into the folder and continues it.
  void ContinueOld(const std::string& text) {
    folder.files[kOldName] = text;
    std::optional<UnfinishedSession> session = FindUnfinishedSession(folder);
    ASSERT_TRUE(session);
    journal.Continue(std::move(*session));
    EXPECT_EQ(journal.Failure(), "");
  }

  /// The model that the reports make.
  static std::string ModelOf(const std::vector<std::string>& reports) {
    std::string trace;
    for (const std::string& report : reports) {
      trace += Mark("rfps") + report;
    }
    return test::ModelText(test::ReplayedTrace(trace).model);
  }

  std::string ReplayedModel(const std::string& name) {
    return test::ModelText(test::ReplayedTrace(folder.files[name]).model);
  }

  test::ManualClock clock;
  test::MemorySessionFolder folder;
  Journal journal{folder, clock};
};

TEST_F(JournalTest, IsMadeAtTheFirstByteWithTheTimeAndTheLastCommand) {
  journal.Cleared(false);
  journal.Sent("cho");
  journal.Sent("rfps");
  journal.Received("");
  EXPECT_THAT(folder.Names(), IsEmpty());
  journal.Received("a\n");
  EXPECT_THAT(folder.Names(), ElementsAre(kName));
  EXPECT_EQ(folder.files[kName], kTime + Mark("rfps") + "a\n");
  journal.Ended();
  EXPECT_EQ(folder.files[kName], kTime + Mark("rfps") + "a\n" + Mark("!end"));
  EXPECT_THAT(folder.locked, IsEmpty());
}

TEST_F(JournalTest, IsNotMadeWithoutAByte) {
  journal.Sent("rfps");
  journal.Ended();
  EXPECT_THAT(folder.Names(), IsEmpty());
}

TEST_F(JournalTest, TakesTheNextNameThatIsFree) {
  folder.files[kName] = "kept";
  folder.files["2024-10-04-000000-2.trace"] = "kept too";
  Report(kFirst);
  EXPECT_EQ(folder.files[kName], "kept");
  EXPECT_EQ(folder.files["2024-10-04-000000-2.trace"], "kept too");
  EXPECT_EQ(ReplayedModel("2024-10-04-000000-3.trace"), ModelOf({kFirst}));
  EXPECT_THAT(folder.locked, ElementsAre("2024-10-04-000000-3.trace"));
}

TEST_F(JournalTest, ThatCannotBeMadeIsToldAndNotTriedAgain) {
  folder.full = true;
  Report(kFirst);
  EXPECT_EQ(journal.Failure(), "the disk is full");
  folder.full = false;
  Report(kSecond);
  journal.Cleared(true);
  journal.Restored();
  journal.Ended();
  EXPECT_THAT(folder.Names(), IsEmpty());
}

TEST_F(JournalTest, ThatCannotBeWrittenIsTold) {
  Report(kFirst);
  folder.full = true;
  Report(kSecond);
  EXPECT_EQ(journal.Failure(), "the disk is full");
  journal.Ended();
  EXPECT_EQ(journal.Failure(), "the disk is full");
  EXPECT_EQ(ReplayedModel(kName), ModelOf({kFirst}));
}

TEST_F(JournalTest, OnlyTheNewestFiftyAreKept) {
  for (int day = 10; day < 70; ++day) {
    folder.files["2024-10-" + std::to_string(day) + "-120000.trace"] = "x";
  }
  folder.files["notes.txt"] = "x";
  folder.files["2024-10-01-12000x.trace"] = "x";
  folder.files["2024-10-01-120000 hall.trace"] = "x";
  folder.files["2024-10-01-120000-.trace"] = "x";
  folder.locked.insert("2024-10-10-120000.trace");
  RemoveOldJournals(folder);
  EXPECT_EQ(folder.files.size(), 55U);
  EXPECT_EQ(folder.files.count("2024-10-10-120000.trace"), 1U);
  EXPECT_EQ(folder.files.count("2024-10-19-120000.trace"), 0U);
  EXPECT_EQ(folder.files.count("2024-10-20-120000.trace"), 1U);
}

TEST_F(JournalTest, OnlyTheNewestFiveHundredMegabytesAreKept) {
  const std::vector<std::string> names = {"2024-10-04-000000-10.trace", "2024-10-04-000000-9.trace",
                                          "2024-10-04-000000.trace"};
  for (const std::string& name : names) {
    folder.files[name] = "x";
    folder.sizes[name] = 250'000'000;
  }
  RemoveOldJournals(folder);
  EXPECT_THAT(folder.Names(), ElementsAre(names[0], names[1]));
  folder.sizes[names[1]] += 1;
  RemoveOldJournals(folder);
  EXPECT_THAT(folder.Names(), ElementsAre(names[0]));
}

TEST_F(JournalTest, TheNewestIsKeptWhateverItsSize) {
  folder.files["2024-10-03-120000.trace"] = "x";
  folder.files["2024-10-04-120000.trace"] = "x";
  folder.sizes["2024-10-04-120000.trace"] = 600'000'000;
  RemoveOldJournals(folder);
  EXPECT_THAT(folder.Names(), ElementsAre("2024-10-04-120000.trace"));
}

TEST_F(JournalTest, AnUnfinishedSessionIsFoundWithItsResults) {
  folder.files[kOldName] = kTime + Mark("rfps") + kFirst + Mark("!clear") + Mark("rfps") + kSecond +
                           Mark("!undo") + Mark("@1728000005000") + Mark("rfps") + "cut\n" +
                           "\x01@17";
  const std::optional<UnfinishedSession> session = FindUnfinishedSession(folder);
  ASSERT_TRUE(session);
  EXPECT_EQ(test::ModelText(session->results), ModelOf({kFirst, kSecond}));
  EXPECT_EQ(session->lastTime, 1728000005000);
  EXPECT_EQ(session->wholeBytes, folder.files[kOldName].size() - 4);
  EXPECT_THAT(folder.locked, ElementsAre(kOldName));
}

TEST_F(JournalTest, ASessionThatEndedInOrderIsNotOfferedNorAnyOlderOne) {
  folder.files[kOldName] = Mark("rfps") + kFirst;
  folder.files[kName] = Mark("rfps") + kFirst + Mark("!end");
  EXPECT_FALSE(FindUnfinishedSession(folder));
  EXPECT_THAT(folder.locked, IsEmpty());
}

TEST_F(JournalTest, ASessionCutOffAfterAnotherHadBegunIsOfferedAlthoughThatEndedInOrder) {
  folder.files[kOldName] = Mark("@1000") + Mark("rfps") + kFirst + Mark("@5000") + Mark("rfps");
  folder.files[kName] = Mark("@4999") + Mark("rfps") + kSecond + Mark("!end");
  EXPECT_TRUE(FindUnfinishedSession(folder));
  folder.files[kName] = Mark("@5001") + Mark("rfps") + kSecond + Mark("!end");
  EXPECT_FALSE(FindUnfinishedSession(folder));
}

TEST_F(JournalTest, ALockedOrEmptyJournalIsPassedOver) {
  folder.files[kOldName] = Mark("rfps") + kFirst;
  folder.files["2024-10-04-000001.trace"] = Mark("rfps") + kSecond;
  folder.locked.insert("2024-10-04-000001.trace");
  folder.files["2024-10-04-000002.trace"] = "";
  folder.files["2024-10-04-000003.trace"] = Mark("rfps") + "no report";
  const std::optional<UnfinishedSession> session = FindUnfinishedSession(folder);
  ASSERT_TRUE(session);
  EXPECT_EQ(test::ModelText(session->results), ModelOf({kFirst}));
}

TEST_F(JournalTest, AReceivedTextThatLooksLikeAnOrderlyEndIsNone) {
  const std::string text = Mark("rfps") + kFirst;
  folder.files[kName] = text + "\x01" + Mark("!end");
  EXPECT_TRUE(FindUnfinishedSession(folder));
  folder.files[kName] = text + "\x01\x01" + Mark("!end");
  EXPECT_FALSE(FindUnfinishedSession(folder));
  folder.files[kName] = text + Mark("!end") + Mark("rfps");
  EXPECT_TRUE(FindUnfinishedSession(folder));
}

TEST_F(JournalTest, ContinuesBehindTheOldSessionWithoutItsUnfinishedMark) {
  journal.Sent("rfps");
  ContinueOld(Mark("rfps") + kFirst + "\x01rf");
  EXPECT_EQ(folder.files[kOldName], Mark("rfps") + kFirst + kTime + Mark("rfps"));
  journal.Received(kSecond);
  EXPECT_EQ(ReplayedModel(kOldName), ModelOf({kFirst, kSecond}));
  EXPECT_THAT(folder.Names(), ElementsAre(kOldName));
  EXPECT_THAT(folder.locked, ElementsAre(kOldName));
  journal.Ended();
  EXPECT_TRUE(folder.files[kOldName].ends_with(Mark("!end")));
}

TEST_F(JournalTest, MovesWhatCameSinceTheLastClear) {
  Report(kFirst);
  journal.Cleared(true);
  Report(kSecond);
  ContinueOld(Mark("rfps") + kThird);
  Report(kFirst);
  EXPECT_EQ(ReplayedModel(kOldName), ModelOf({kThird, kSecond, kFirst}));
}

TEST_F(JournalTest, WhatWasClearedStaysInAJournalOfItsOwn) {
  Report(kFirst);
  journal.Received("the beginning of a line");
  journal.Cleared(true);
  journal.Cleared(false);
  Report(kSecond);
  ContinueOld(Mark("rfps") + kThird);
  EXPECT_THAT(folder.Names(), ElementsAre(kOldName, kName));
  EXPECT_THAT(folder.locked, ElementsAre(kOldName));
  EXPECT_EQ(folder.files[kName], kTime + Mark("rfps") + kFirst + Mark("!end"));
}

TEST_F(JournalTest, MovesWhatAnUndoBroughtBack) {
  Report(kFirst);
  journal.Cleared(true);
  journal.Cleared(false);
  Report(kSecond);
  journal.Restored();
  ContinueOld(Mark("rfps") + kThird);
  EXPECT_THAT(folder.Names(), ElementsAre(kOldName));
  EXPECT_EQ(ReplayedModel(kOldName), ModelOf({kThird, kFirst, kSecond}));
}

TEST_F(JournalTest, MovesAReportThatWasArrivingAtTheClear) {
  for (const std::size_t place : {std::size_t{3}, std::size_t{60}, kSecond.size() - 1}) {
    test::MemorySessionFolder files;
    Journal whole(files, clock);
    whole.Sent("rfps");
    whole.Received(kFirst);
    whole.Sent("rfps");
    whole.Received(kSecond.substr(0, place));
    whole.Cleared(true);
    whole.Cleared(false);
    whole.Received(kSecond.substr(place));
    files.files[kOldName] = Mark("rfps") + kThird + Mark("rfps") + kThird.substr(0, 70);
    std::optional<UnfinishedSession> session = FindUnfinishedSession(files);
    // The file of this run is locked, so the older one is found.
    ASSERT_TRUE(session);
    whole.Continue(std::move(*session));
    EXPECT_EQ(test::ModelText(test::ReplayedTrace(files.files[kOldName]).model),
              ModelOf({kThird, kSecond}))
        << place;
  }
}

TEST_F(JournalTest, StrayTextDoesNotCompleteTheOldSessionsReport) {
  const std::string cut = Mark("rfps") + kFirst + Mark("rfps") + kThird.substr(0, 70);
  Report(kSecond);
  journal.Cleared(true);
  journal.Received(std::string(40, '\n'));
  ContinueOld(cut);
  journal.Received(std::string(40, '\n'));
  journal.Sent("cho");
  journal.Received(std::string(40, '\n'));
  EXPECT_EQ(ReplayedModel(kOldName), ModelOf({kFirst}));
  Report(kSecond);
  EXPECT_EQ(ReplayedModel(kOldName), ModelOf({kFirst, kSecond}));
}

TEST_F(JournalTest, ThatCannotContinueKeepsItsOwnFile) {
  Report(kFirst);
  folder.files[kOldName] = Mark("rfps") + kThird;
  std::optional<UnfinishedSession> session = FindUnfinishedSession(folder);
  ASSERT_TRUE(session);
  folder.full = true;
  journal.Continue(std::move(*session));
  EXPECT_EQ(journal.Failure(), "the disk is full");
  folder.full = false;
  Report(kSecond);
  EXPECT_EQ(ReplayedModel(kName), ModelOf({kFirst, kSecond}));
  EXPECT_EQ(ReplayedModel(kOldName), ModelOf({kThird}));
}

}  // namespace
}  // namespace kelvara::sessions
