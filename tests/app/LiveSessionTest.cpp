#include "app/LiveSession.h"

#include <gtest/gtest.h>

#ifdef __GLIBC__
#include <malloc.h>
#endif

#include "app/LiveRig.h"
#include "base/Fault.h"
#include "report/CableLengths.h"

namespace kelvara::test {
namespace {

/// The bytes that the program holds on the heap; 0 if the system cannot tell.
std::size_t HeldBytes() {
#ifdef __GLIBC__
  return mallinfo2().uordblks;
#else
  return 0;
#endif
}

TEST(StartLink, SearchesWithClearedResultsAndAppliesTheStoredOptions) {
  LiveRig rig;
  rig.store.SetValue("RFPSUnits", "2");
  rig.Start();
  EXPECT_TRUE(rig.rfpsTimer.IsOn());
  EXPECT_TRUE(rig.timerComPort.IsOn());
  EXPECT_EQ(rig.live.Link().StatusText(), "Attempting To Connect To Beltpack...");
  EXPECT_EQ(rig.live.Results().Options().units, sync::PhaseUnits::Metres);
  EXPECT_FALSE(rig.live.Link().CanClear());
  EXPECT_EQ(rig.grid.Text(0, 0), "RPN");
}

TEST(StartLink, ClearsTheLoggingFlagOfARunningCaptureUntilPauseAndResume) {
  LiveRig rig;
  rig.Start();
  capture::DataCapture& capture = rig.live.Results().Capture();
  ASSERT_TRUE(capture.StartLoggingToFile("log"));
  rig.live.StartLink();
  EXPECT_FALSE(capture.IsLoggingActive());
  const std::string before = rig.files.files["log"];
  capture.PrintLogEntry("unseen");
  EXPECT_EQ(rig.files.files["log"], before);
  capture.PauseLoggingToFile();
  capture.ResumeLoggingToFile();
  capture.PrintLogEntry("seen");
  EXPECT_NE(rig.files.files["log"].find("seen"), std::string::npos);
  capture.StopLoggingToFile();
  EXPECT_EQ(rig.files.openFiles, 0);
}

TEST(LiveSession, FillsTheGridFromTheBeltpack) {
  LiveRig rig;
  rig.Start();
  rig.time.Pass(600 * 1000);
  EXPECT_EQ(rig.live.Link().StatusText(), "Beltpack Connected...");
  EXPECT_EQ(rig.live.Results().Model().AaCount(), 12);
  // Seven of nine ticks ask for a report.
  EXPECT_GE(rig.live.Results().Model().ReportCount(), 150);
  EXPECT_EQ(rig.grid.Rows(), 13);
  EXPECT_TRUE(rig.live.Link().CanClear());
}

TEST(LiveSession, TheClearCommandEmptiesModelAndGrid) {
  LiveRig rig;
  rig.Start();
  rig.time.Pass(60 * 1000);
  ASSERT_GT(rig.live.Results().Model().AaCount(), 0);
  rig.live.mnuClearGrid_Click();
  EXPECT_EQ(rig.live.Results().Model().AaCount(), 0);
  EXPECT_EQ(rig.grid.Rows(), 1);
  EXPECT_FALSE(rig.live.Link().CanClear());
}

TEST(LiveSession, ADayOfPollingCountsCorrectlyAndUsesNoMoreMemory) {
  LiveRig rig;
  rig.Start();
  int ticks = 0;
  rig.beltpack.SetCommandNotification([&](std::string_view, std::int64_t) { ++ticks; });
  rig.time.Pass(std::int64_t{3600} * 1000);
  const std::size_t heldAfterAnHour = HeldBytes();
  rig.time.Pass(std::int64_t{23 * 3600} * 1000);
  EXPECT_EQ(ticks, 28800);
  EXPECT_LE(HeldBytes(), heldAfterAnHour + 16384);
  const sync::SyncModel& model = rig.live.Results().Model();
  // 3200 cycles of nine ticks, seven of which ask for a report; the last one may still be arriving.
  EXPECT_GE(model.ReportCount(), 3200 * 7 - 1);
  EXPECT_LE(model.ReportCount(), 3200 * 7);
  EXPECT_EQ(rig.live.Results().Parser().AbandonedCount(), 0);
  EXPECT_EQ(model.AaCount(), 12);
  EXPECT_EQ(rig.beeper.count, 0);
}

TEST(LiveSession, APulledCableLosesNoResultsAndTheLinkRecovers) {
  LiveRig rig;
  rig.Start();
  rig.time.Pass(300 * 1000);
  const int before = rig.live.Results().Model().ReportCount();
  rig.boxes.answer = platform::MessageAnswer::No;
  rig.beltpack.Unplug();
  rig.time.Pass(120 * 1000);
  EXPECT_EQ(rig.boxes.boxes.size(), 1U);
  EXPECT_TRUE(rig.port.IsOpen());
  EXPECT_LE(rig.live.Results().Model().ReportCount(), before + 1);
  rig.beltpack.Plug();
  rig.time.Pass(60 * 1000);
  EXPECT_EQ(rig.live.Link().StatusText(), "Beltpack Connected...");
  EXPECT_GT(rig.live.Results().Model().ReportCount(), before + 5);
}

TEST(LiveSession, EveryLineFaultInEveryLinkStateLeavesTheSessionUsable) {
  for (const sim::LineFaultName& fault : sim::kLineFaultNames) {
    for (int state = 0; state < 4; ++state) {
      SCOPED_TRACE(std::string(fault.name) + " in state " + std::to_string(state));
      LiveRig rig;
      rig.boxes.answer = platform::MessageAnswer::No;
      rig.Start();
      if (state > 0) {
        rig.time.Pass(30 * 1000);
      }
      if (state == 2) {
        rig.beltpack.SetFault({sim::LineFault::Silent});
        rig.time.Pass(40 * 1000);
        ASSERT_EQ(rig.live.Link().bLinkLossPending(), 1);
      }
      if (state == 3) {
        rig.live.Link().mnuForceSearch_Click();
      }
      rig.beltpack.SetFault({fault.fault});
      rig.time.Pass(120 * 1000);
      EXPECT_LE(rig.live.Results().Model().AaCount(), 52);
      EXPECT_LE(rig.live.Link().iRfpsLinesLeft(), link::kRfpsReportLines);
      rig.beltpack.SetFault({});
      rig.beltpack.Plug();
      rig.live.Link().mnuForceSearch_Click();
      rig.time.Pass(60 * 1000);
      EXPECT_EQ(rig.live.Link().StatusText(), "Beltpack Connected...");
      EXPECT_GT(rig.live.Results().Model().ReportCount(), 5);
    }
  }
}

TEST(LiveSession, TenMinutesOfFloodStayWithinBounds) {
  LiveRig rig;
  rig.boxes.answer = platform::MessageAnswer::No;
  rig.Start();
  rig.beltpack.SetFault({sim::LineFault::Flood});
  rig.time.Pass(600 * 1000);
  EXPECT_LE(rig.port.InputCount(), platform::kInputBufferBytes);
  EXPECT_LE(rig.live.Results().Model().AaCount(), 52);
}

TEST(Shutdown, SwitchesTimersOffAndClosesPortAndLog) {
  LiveRig rig;
  rig.Start();
  ASSERT_TRUE(rig.live.Results().Capture().StartLoggingToFile("log"));
  rig.live.Shutdown();
  EXPECT_FALSE(rig.rfpsTimer.IsOn());
  EXPECT_FALSE(rig.timerComPort.IsOn());
  EXPECT_FALSE(rig.port.IsOpen());
  EXPECT_EQ(rig.files.openFiles, 0);
  EXPECT_EQ(rig.files.files["log"].find("Stopped"), std::string::npos);
}

}  // namespace
}  // namespace kelvara::test
