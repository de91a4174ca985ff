#include <gtest/gtest.h>

#include "base/Fault.h"
#include "capture/CaptureRig.h"
#include "capture/DataCapture.h"

namespace kelvara::capture {
namespace {

using base::Fault;
using base::FaultKind;
using test::EntryLine;

class DataCaptureFaultsTest : public ::testing::Test, public test::CaptureRig {
 protected:
  const std::string& Log() { return files.files["log.txt"]; }

  void FailToStart() {
    files.unopenable["locked.txt"] = true;
    ASSERT_FALSE(capture.StartLoggingToFile("locked.txt"));
  }

  void ExpectStartFailureBox() {
    ASSERT_EQ(boxes.boxes.size(), 1U);
    EXPECT_EQ(boxes.boxes[0].text, "Could not start Logging to specified file.");
    EXPECT_EQ(boxes.boxes[0].title, "File Error");
    EXPECT_EQ(boxes.boxes[0].icon, platform::MessageIcon::Critical);
    EXPECT_EQ(boxes.boxes[0].buttons, platform::MessageButtons::Ok);
  }

  /// Expects the state and the panel to be as before any capture.
  void ExpectIdle() {
    EXPECT_EQ(capture.State(), CaptureState::Idle);
    EXPECT_EQ(Panel(), "");
  }

  template <typename Operation>
  void ExpectFileFault(Operation operation) {
    try {
      operation();
      ADD_FAILURE() << "no fault";
    } catch (const Fault& fault) {
      EXPECT_EQ(fault.Kind(), FaultKind::File);
    }
  }
};

TEST_F(DataCaptureFaultsTest, AFileThatCannotBeOpenedShowsOneBoxAndLeavesTheFlagTrue) {
  FailToStart();
  ExpectStartFailureBox();
  EXPECT_TRUE(capture.IsLoggingActive());
  EXPECT_EQ(files.openFiles, 0);
  EXPECT_TRUE(files.files.empty());
  EXPECT_EQ(logBox.text, "");
  ExpectIdle();
}

TEST_F(DataCaptureFaultsTest, EntriesAfterAFailedStartFaultAndDoNotReachTheLogBox) {
  FailToStart();
  ExpectFileFault([&] { capture.PrintLogEntry("01->06=7"); });
  ExpectFileFault([&] { capture.PrintLogEntry("01->02=-11"); });
  EXPECT_EQ(logBox.text, "");
  EXPECT_EQ(boxes.boxes.size(), 1U);
}

TEST_F(DataCaptureFaultsTest, AnEmptyEntryAfterAFailedStartIsNoFault) {
  FailToStart();
  EXPECT_NO_THROW(capture.PrintLogEntry(""));
}

TEST_F(DataCaptureFaultsTest, EntriesAlsoFaultWithAHiddenLogBox) {
  logBox.shown = false;
  FailToStart();
  ExpectFileFault([&] { capture.PrintLogEntry("01->06=7"); });
}

TEST_F(DataCaptureFaultsTest, ASuccessfulStartRecoversFromAFailedOne) {
  FailToStart();
  ASSERT_TRUE(capture.StartLoggingToFile("log.txt"));
  EXPECT_NO_THROW(capture.PrintLogEntry("01->06=7"));
  EXPECT_EQ(Log(), EntryLine("Log To File Started") + EntryLine("01->06=7"));
  EXPECT_EQ(logBox.text, Log());
}

TEST_F(DataCaptureFaultsTest, AFailedStartCanBeRepeatedWithABoxEachTime) {
  FailToStart();
  FailToStart();
  EXPECT_EQ(boxes.boxes.size(), 2U);
  EXPECT_TRUE(capture.IsLoggingActive());
}

TEST_F(DataCaptureFaultsTest, AStartWhoseFirstEntryCannotBeWrittenFailsWithNoFileOpen) {
  files.writesLeft = 0;
  EXPECT_FALSE(capture.StartLoggingToFile("log.txt"));
  ExpectStartFailureBox();
  EXPECT_TRUE(capture.IsLoggingActive());
  EXPECT_EQ(files.openFiles, 0);
  EXPECT_EQ(logBox.text, "");
  ExpectIdle();
  files.writesLeft.reset();
  ExpectFileFault([&] { capture.PrintLogEntry("01->06=7"); });
}

TEST_F(DataCaptureFaultsTest, AnEntryThatCannotBeWrittenDoesNotReachTheLogBox) {
  files.writesLeft = 2;
  ASSERT_TRUE(capture.StartLoggingToFile("log.txt"));
  capture.PrintLogEntry("one");
  const std::string before = Log();
  ExpectFileFault([&] { capture.PrintLogEntry("two"); });
  EXPECT_EQ(Log(), before);
  EXPECT_EQ(logBox.text, before);
  EXPECT_TRUE(capture.IsLoggingActive());
  EXPECT_TRUE(boxes.boxes.empty());
}

TEST_F(DataCaptureFaultsTest, CaptureContinuesWhenAWriteSucceedsAgain) {
  files.writesLeft = 1;
  ASSERT_TRUE(capture.StartLoggingToFile("log.txt"));
  ExpectFileFault([&] { capture.PrintLogEntry("lost"); });
  files.writesLeft.reset();
  capture.PrintLogEntry("kept");
  EXPECT_EQ(Log(), EntryLine("Log To File Started") + EntryLine("kept"));
}

TEST_F(DataCaptureFaultsTest, AFailedPauseChangesOnlyThePanel) {
  files.writesLeft = 1;
  ASSERT_TRUE(capture.StartLoggingToFile("log.txt"));
  ExpectFileFault([&] { capture.PauseLoggingToFile(); });
  EXPECT_EQ(Panel(), "Logging Paused...");
  EXPECT_TRUE(capture.IsLoggingActive());
  EXPECT_EQ(capture.State(), CaptureState::Logging);
}

TEST_F(DataCaptureFaultsTest, AFailedResumeChangesOnlyTheFlagAndThePanel) {
  files.writesLeft = 2;
  ASSERT_TRUE(capture.StartLoggingToFile("log.txt"));
  capture.PauseLoggingToFile();
  ExpectFileFault([&] { capture.ResumeLoggingToFile(); });
  EXPECT_EQ(Panel(), "Logging...");
  EXPECT_TRUE(capture.IsLoggingActive());
  EXPECT_EQ(capture.State(), CaptureState::Paused);
}

TEST_F(DataCaptureFaultsTest, AFailedStopChangesOnlyTheFlag) {
  files.writesLeft = 2;
  ASSERT_TRUE(capture.StartLoggingToFile("log.txt"));
  capture.PauseLoggingToFile();
  ExpectFileFault([&] { capture.StopLoggingToFile(); });
  EXPECT_TRUE(capture.IsLoggingActive());
  EXPECT_EQ(files.openFiles, 1);
  EXPECT_EQ(Panel(), "Logging Paused...");
  EXPECT_EQ(capture.State(), CaptureState::Paused);
}

TEST_F(DataCaptureFaultsTest, AStopAfterAFailedStartFaultsAndLeavesTheFlagTrue) {
  FailToStart();
  ExpectFileFault([&] { capture.StopLoggingToFile(); });
  EXPECT_TRUE(capture.IsLoggingActive());
  EXPECT_EQ(logBox.text, "");
  ExpectIdle();
}

}  // namespace
}  // namespace kelvara::capture
