#include "capture/DataCapture.h"

#include <gtest/gtest.h>

#include "capture/CaptureRig.h"

namespace kelvara::capture {
namespace {

using test::EntryLine;

class DataCaptureTest : public ::testing::Test, public test::CaptureRig {
 protected:
  const std::string& Log() { return files.files["log.txt"]; }
};

TEST_F(DataCaptureTest, NothingIsLoggedToAFileAtFirst) {
  capture.PrintLogEntry("01->06=7");
  EXPECT_FALSE(capture.IsLoggingActive());
  EXPECT_TRUE(files.files.empty());
  EXPECT_EQ(logBox.text, EntryLine("01->06=7"));
}

TEST_F(DataCaptureTest, EntryIsTheGeneralDateACommaABlankAndTheText) {
  ASSERT_TRUE(capture.StartLoggingToFile("log.txt"));
  files.files["log.txt"].clear();
  logBox.text.clear();
  capture.PrintLogEntry("01[3]->06[3]=7");
  EXPECT_EQ(Log(), "second1728043200, 01[3]->06[3]=7\r\n");
  EXPECT_EQ(logBox.text, Log());
}

TEST_F(DataCaptureTest, EntryTextIsWrittenUnchanged) {
  ASSERT_TRUE(capture.StartLoggingToFile("log.txt"));
  const std::string text("  a,b\t\xE9\0\r\nc ", 12);
  capture.PrintLogEntry(text);
  EXPECT_EQ(Log(), EntryLine("Log To File Started") + EntryLine(text));
  EXPECT_EQ(logBox.text, Log());
}

TEST_F(DataCaptureTest, BlankTextIsNotEmpty) {
  capture.PrintLogEntry(" ");
  EXPECT_EQ(logBox.text, EntryLine(" "));
}

TEST_F(DataCaptureTest, EachEntryCarriesItsOwnWallTime) {
  capture.PrintLogEntry("first");
  clock.now += 5;
  clock.wall += platform::Span(90);
  capture.PrintLogEntry("second");
  EXPECT_EQ(logBox.text, "second1728043200, first\r\nsecond1728043290, second\r\n");
}

TEST_F(DataCaptureTest, EmptyTextWritesNothingAnywhere) {
  ASSERT_TRUE(capture.StartLoggingToFile("log.txt"));
  capture.PrintLogEntry("");
  EXPECT_EQ(Log(), EntryLine("Log To File Started"));
  EXPECT_EQ(logBox.text, Log());
}

TEST_F(DataCaptureTest, StartAppendsToAnExistingFile) {
  files.files["log.txt"] = "kept\r\n";
  ASSERT_TRUE(capture.StartLoggingToFile("log.txt"));
  EXPECT_EQ(Log(), "kept\r\n" + EntryLine("Log To File Started"));
}

TEST_F(DataCaptureTest, StartCreatesAMissingFile) {
  ASSERT_TRUE(capture.StartLoggingToFile("log.txt"));
  EXPECT_EQ(files.files.size(), 1U);
  EXPECT_EQ(Log(), EntryLine("Log To File Started"));
  EXPECT_TRUE(boxes.boxes.empty());
}

TEST_F(DataCaptureTest, EntriesWhilePausedReachOnlyTheLogBox) {
  ASSERT_TRUE(capture.StartLoggingToFile("log.txt"));
  capture.PauseLoggingToFile();
  const std::string before = Log();
  logBox.text.clear();
  capture.PrintLogEntry("01->06=7");
  EXPECT_EQ(Log(), before);
  EXPECT_EQ(logBox.text, EntryLine("01->06=7"));
}

TEST_F(DataCaptureTest, StopWhilePausedStillWritesItsEntry) {
  ASSERT_TRUE(capture.StartLoggingToFile("log.txt"));
  capture.PauseLoggingToFile();
  capture.StopLoggingToFile();
  EXPECT_EQ(Log(), EntryLine("Log To File Started") + EntryLine("Log To File Stopped Paused") +
                       EntryLine("Log To File Stopped"));
}

TEST_F(DataCaptureTest, AWholeCaptureReachesTheFileAndTheLogBox) {
  ASSERT_TRUE(capture.StartLoggingToFile("log.txt"));
  capture.PrintLogEntry("one");
  capture.PauseLoggingToFile();
  capture.PrintLogEntry("two");
  capture.ResumeLoggingToFile();
  capture.PrintLogEntry("three");
  capture.StopLoggingToFile();
  capture.PrintLogEntry("four");
  EXPECT_EQ(Log(), EntryLine("Log To File Started") + EntryLine("one") +
                       EntryLine("Log To File Stopped Paused") + EntryLine("Log To File Resumed") +
                       EntryLine("three") + EntryLine("Log To File Stopped"));
  EXPECT_EQ(logBox.text, EntryLine("Log To File Started") + EntryLine("one") +
                             EntryLine("Log To File Stopped Paused") + EntryLine("two") +
                             EntryLine("Log To File Resumed") + EntryLine("three") +
                             EntryLine("Log To File Stopped") + EntryLine("four"));
}

TEST_F(DataCaptureTest, AHiddenLogBoxKeepsNothingAndTheFileGetsTheEntry) {
  logBox.shown = false;
  ASSERT_TRUE(capture.StartLoggingToFile("log.txt"));
  capture.PrintLogEntry("01->06=7");
  EXPECT_EQ(Log(), EntryLine("Log To File Started") + EntryLine("01->06=7"));
  EXPECT_EQ(logBox.text, "");
}

TEST_F(DataCaptureTest, ASecondCaptureContinuesAtTheEndOfTheSameFile) {
  ASSERT_TRUE(capture.StartLoggingToFile("log.txt"));
  capture.StopLoggingToFile();
  const std::string first = Log();
  ASSERT_TRUE(capture.StartLoggingToFile("log.txt"));
  EXPECT_EQ(Log(), first + EntryLine("Log To File Started"));
}

TEST_F(DataCaptureTest, StartingTheLinkLeavesTheFileOpen) {
  ASSERT_TRUE(capture.StartLoggingToFile("log.txt"));
  capture.ClearLoggingActive();
  EXPECT_FALSE(capture.IsLoggingActive());
  EXPECT_EQ(files.openFiles, 1);
  capture.PrintLogEntry("unheard");
  capture.PauseLoggingToFile();
  capture.ResumeLoggingToFile();
  capture.StopLoggingToFile();
  EXPECT_EQ(Log(), EntryLine("Log To File Started") + EntryLine("Log To File Resumed") +
                       EntryLine("Log To File Stopped"));
  EXPECT_EQ(files.openFiles, 0);
}

TEST_F(DataCaptureTest, TheEndOfTheProgramClosesTheFileWithoutAnEntry) {
  ASSERT_TRUE(capture.StartLoggingToFile("log.txt"));
  capture.CloseFile();
  EXPECT_EQ(files.openFiles, 0);
  EXPECT_EQ(Log(), EntryLine("Log To File Started"));
}

/// What holds in a capture state.
struct ExpectedState {
  bool flag;
  int openFiles;
  const char* panel;
  CaptureState state;
};

class CaptureStatesTest : public DataCaptureTest {
 protected:
  void ExpectState(const ExpectedState& expected, const char* after) {
    SCOPED_TRACE(after);
    EXPECT_EQ(capture.IsLoggingActive(), expected.flag);
    EXPECT_EQ(files.openFiles, expected.openFiles);
    EXPECT_EQ(Panel(), expected.panel);
    EXPECT_EQ(capture.State(), expected.state);
  }

  static constexpr ExpectedState kIdle{false, 0, "", CaptureState::Idle};
  static constexpr ExpectedState kLogging{true, 1, "Logging...", CaptureState::Logging};
  static constexpr ExpectedState kPaused{false, 1, "Logging Paused...", CaptureState::Paused};
};

TEST_F(CaptureStatesTest, EveryTransitionEndsInItsState) {
  ExpectState(kIdle, "the beginning");
  ASSERT_TRUE(capture.StartLoggingToFile("log.txt"));
  ExpectState(kLogging, "start");
  capture.PauseLoggingToFile();
  ExpectState(kPaused, "pause");
  capture.ResumeLoggingToFile();
  ExpectState(kLogging, "resume");
  capture.StopLoggingToFile();
  ExpectState(kIdle, "stop");
  ASSERT_TRUE(capture.StartLoggingToFile("log.txt"));
  ExpectState(kLogging, "second start");
  capture.PauseLoggingToFile();
  capture.StopLoggingToFile();
  ExpectState(kIdle, "stop while paused");
}

TEST_F(CaptureStatesTest, EveryTransitionIsReported) {
  int changes = 0;
  capture.SetStateChanged([&] { ++changes; });
  const auto expectReported = [&](const char* after) {
    EXPECT_GT(changes, 0) << after;
    changes = 0;
  };
  ASSERT_TRUE(capture.StartLoggingToFile("log.txt"));
  expectReported("start");
  capture.PauseLoggingToFile();
  expectReported("pause");
  capture.ResumeLoggingToFile();
  expectReported("resume");
  capture.StopLoggingToFile();
  expectReported("stop");
}

}  // namespace
}  // namespace kelvara::capture
