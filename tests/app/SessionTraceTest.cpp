#include <gtest/gtest.h>

#include "app/LiveRig.h"
#include "support/MemorySessionFolder.h"
#include "support/RandomText.h"
#include "support/RecordedReports.h"
#include "support/ReplayedTrace.h"

namespace kelvara::test {
namespace {

constexpr const char* kOldName = "2024-01-01-120000.trace";

struct FolderRig {
  MemorySessionFolder folder;
};

struct SessionTraceTest : ::testing::TestWithParam<unsigned>, FolderRig, LiveRig {
  void StartTraced() {
    live.StartTrace("trace", true);
    Start();
  }

  void ExpectTraceReplaysToResults() {
    EXPECT_EQ(ModelText(ReplayedTrace(files.files["trace"]).model),
              ModelText(live.Results().Model()));
  }
};

TEST_F(SessionTraceTest, AnUndoIsTracedAndBringsTheResultsBack) {
  StartTraced();
  time.Pass(60 * 1000);
  const std::string before = ModelText(live.Results().Model());
  live.mnuClearGrid_Click();
  EXPECT_EQ(grid.Rows(), 1);
  EXPECT_EQ(live.RestoreClearedResults(), "");
  EXPECT_EQ(ModelText(live.Results().Model()), before);
  EXPECT_EQ(grid.Rows(), live.Results().Model().AaCount() + 1);
  ExpectTraceReplaysToResults();
}

TEST_F(SessionTraceTest, AnUndoThatFailsIsNotTraced) {
  StartTraced();
  const std::string before = files.files["trace"];
  EXPECT_NE(live.RestoreClearedResults(), "");
  EXPECT_EQ(files.files["trace"], before);
}

TEST_F(SessionTraceTest, ATraceThatIsAppendedToReplaysToTheLastSession) {
  files.files["trace"] = "\x01rfps\x02" + OneNeighbourReport(1, 2, -11);
  StartTraced();
  time.Pass(60 * 1000);
  live.Shutdown();
  EXPECT_TRUE(files.files["trace"].ends_with("\x01!end\x02"));
  ExpectTraceReplaysToResults();
}

TEST_F(SessionTraceTest, AContinuedSessionThatDoesNotFitIsLeftAlone) {
  std::string old;
  for (int first = 100; first < 145; first += 9) {
    old += "\x01rfps\x02" + CrowdedReport(99, first, 9);
  }
  folder.files[kOldName] = old;
  live.StartJournal(folder);
  StartTraced();
  time.Pass(300 * 1000);
  const std::string before = ModelText(live.Results().Model());
  std::optional<sessions::UnfinishedSession> session = sessions::FindUnfinishedSession(folder);
  ASSERT_TRUE(session);
  EXPECT_EQ(live.Continue(*session), "Together there would be more than 51 antennas");
  EXPECT_EQ(ModelText(live.Results().Model()), before);
  EXPECT_EQ(folder.files[kOldName], old);
  EXPECT_EQ(folder.files.size(), 2U);
}

TEST_P(SessionTraceTest, ContinuesTheOldJournalWheneverTheUserWants) {
  RandomText random(GetParam());
  const std::string report = OneNeighbourReport(1, 2, -11);
  const std::string old = "\x01rfps\x02" + report + "\x01rfps\x02" + report;
  folder.files[kOldName] =
      old.substr(0, report.size() + 6 +
                        static_cast<std::size_t>(random.Below(static_cast<int>(report.size()))));
  live.StartJournal(folder);
  std::optional<sessions::UnfinishedSession> session = sessions::FindUnfinishedSession(folder);
  ASSERT_TRUE(session);
  Start();
  const int continueAt = random.Below(30);
  std::optional<sync::SyncModel> cleared;
  for (int step = 0; step < 40; ++step) {
    if (step == continueAt) {
      if (live.Results().ClearedResults() != nullptr) {
        cleared = *live.Results().ClearedResults();
      }
      ASSERT_EQ(live.Continue(*session), "");
      EXPECT_EQ(live.Results().ClearedResults(), nullptr);
    }
    switch (random.Below(6)) {
      case 0:
        // Once the old session is continued, its results stay to the end.
        if (step < continueAt || random.Below(10) == 0) {
          live.mnuClearGrid_Click();
        }
        break;
      case 1:
        live.RestoreClearedResults();
        break;
      default:
        // Often in the middle of a report.
        time.Pass(random.Below(6000));
        break;
    }
  }
  ASSERT_EQ(folder.files.size(), cleared ? 2U : 1U);
  if (cleared) {
    EXPECT_EQ(ModelText(ReplayedTrace(folder.files.rbegin()->second).model), ModelText(*cleared));
  }
  EXPECT_EQ(live.JournalFailure(), "");
  time.Pass(2 * 1000);
  live.Shutdown();
  EXPECT_TRUE(folder.files[kOldName].ends_with("\x01!end\x02"));
  EXPECT_EQ(ModelText(ReplayedTrace(folder.files[kOldName]).model),
            ModelText(live.Results().Model()));
}

TEST_P(SessionTraceTest, ReplaysToTheResultsWhateverTheUserDid) {
  RandomText random(GetParam());
  live.StartJournal(folder);
  StartTraced();
  int restored = 0;
  for (int step = 0; step < 60; ++step) {
    switch (random.Below(9)) {
      case 0:
        live.mnuClearGrid_Click();
        break;
      case 1:
        live.Link().mnuForceSearch_Click();
        break;
      case 2:
        live.StartLink();
        break;
      case 3:
      case 4:
        restored += live.RestoreClearedResults().empty() ? 1 : 0;
        break;
      case 5:
        boxes.answer =
            random.Below(2) == 0 ? platform::MessageAnswer::Yes : platform::MessageAnswer::No;
        beltpack.SetFault({sim::LineFault::Silent});
        time.Pass(60 * 1000);
        beltpack.SetFault({});
        break;
      case 6: {
        const sim::LineFaultName* const faults = std::begin(sim::kLineFaultNames);
        beltpack.SetFault(
            {faults[random.Below(static_cast<int>(std::size(sim::kLineFaultNames)))].fault});
        time.Pass(random.Below(20000));
        beltpack.SetFault({});
        beltpack.Plug();
        break;
      }
      default:
        time.Pass(random.Below(30000));
        break;
    }
  }
  time.Pass(10 * 1000);
  live.Shutdown();
  EXPECT_GT(restored, 0);
  EXPECT_GT(live.Results().Model().ReportCount(), 0);
  ExpectTraceReplaysToResults();
  ASSERT_EQ(folder.files.size(), 1U);
  EXPECT_EQ(ModelText(ReplayedTrace(folder.files.begin()->second).model),
            ModelText(live.Results().Model()));
}

INSTANTIATE_TEST_SUITE_P(Seeds, SessionTraceTest, ::testing::Range(1U, 21U));

}  // namespace
}  // namespace kelvara::test
