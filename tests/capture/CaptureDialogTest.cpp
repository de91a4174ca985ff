#include "capture/CaptureDialog.h"

#include <gtest/gtest.h>

#include "capture/CaptureRig.h"
#include "support/DesktopDoubles.h"

namespace kelvara::capture {
namespace {

using platform::MessageButtons;
using platform::MessageIcon;
using test::EntryLine;

class CaptureDialogTest : public ::testing::Test, public test::CaptureRig {
 protected:
  CaptureDialog dialog{capture, desktop};
};

TEST_F(CaptureDialogTest, StartsWithTheRememberedFileName) {
  EXPECT_EQ(dialog.Form_Load(), "");
  store.SetValue("LastFile", "C:\\logs\\log.txt");
  EXPECT_EQ(dialog.Form_Load(), "C:\\logs\\log.txt");
}

TEST_F(CaptureDialogTest, StartsTheLogEvenIfTheNameCannotBeStored) {
  store.writable = false;
  EXPECT_TRUE(dialog.StartButton_Click("log.txt")) << "the dialog is done";
  EXPECT_TRUE(capture.IsLoggingActive());
  EXPECT_EQ(beeper.count, 1);
}

TEST_F(CaptureDialogTest, BrowseStartsAtTheRememberedFile) {
  store.SetValue("LastFile", "C:\\logs\\log.txt");
  EXPECT_EQ(dialog.CommandBrowse_Click(), std::nullopt);
  ASSERT_EQ(chooser.requests.size(), 1U);
  EXPECT_EQ(chooser.requests[0].kind, platform::FileChooserKind::Open);
  EXPECT_EQ(chooser.requests[0].title, "Select a file to log to");
  EXPECT_EQ(chooser.requests[0].filter, "Log File (*.txt)|*.txt|");
  EXPECT_EQ(chooser.requests[0].initialFolder, "C:\\logs");
  EXPECT_EQ(chooser.requests[0].initialName, "C:\\logs\\log.txt");
  EXPECT_EQ(store.Value("LastFile"), "C:\\logs\\log.txt");
}

TEST_F(CaptureDialogTest, RememberedNameWithoutAFolderGivesAnEmptyFolder) {
  store.SetValue("LastFile", "log.txt");
  dialog.CommandBrowse_Click();
  ASSERT_EQ(chooser.requests.size(), 1U);
  EXPECT_EQ(chooser.requests[0].initialFolder, "");
  EXPECT_EQ(chooser.requests[0].initialName, "log.txt");
}

TEST_F(CaptureDialogTest, ChosenFileIsRememberedAtOnce) {
  chooser.answer = "C:\\logs\\new.txt";
  EXPECT_EQ(dialog.CommandBrowse_Click(), "C:\\logs\\new.txt");
  EXPECT_EQ(store.Value("LastFile"), "C:\\logs\\new.txt");
  EXPECT_TRUE(files.files.empty());
  EXPECT_FALSE(capture.IsLoggingActive());
}

TEST_F(CaptureDialogTest, StartBeginsTheCaptureAndRemembersTheFile) {
  EXPECT_TRUE(dialog.StartButton_Click("log.txt"));
  EXPECT_EQ(files.files["log.txt"], EntryLine("Log To File Started"));
  EXPECT_EQ(store.Value("LastFile"), "log.txt");
  EXPECT_EQ(Panel(), "Logging...");
  EXPECT_TRUE(boxes.boxes.empty());
}

TEST_F(CaptureDialogTest, EmptyFileNameShowsOneBox) {
  EXPECT_FALSE(dialog.StartButton_Click(""));
  ASSERT_EQ(boxes.boxes.size(), 1U);
  EXPECT_EQ(boxes.boxes[0].text, "Filename and path must be specified.");
  EXPECT_EQ(boxes.boxes[0].title, "File Error");
  EXPECT_EQ(boxes.boxes[0].icon, MessageIcon::Critical);
  EXPECT_EQ(boxes.boxes[0].buttons, MessageButtons::Ok);
  EXPECT_FALSE(capture.IsLoggingActive());
}

TEST_F(CaptureDialogTest, FileThatCannotBeOpenedShowsOneBoxAndIsNotRemembered) {
  files.unopenable["locked.txt"] = true;
  EXPECT_FALSE(dialog.StartButton_Click("locked.txt"));
  ASSERT_EQ(boxes.boxes.size(), 1U);
  EXPECT_EQ(boxes.boxes[0].text, "Could not start Logging to specified file.");
  EXPECT_EQ(boxes.boxes[0].title, "File Error");
  EXPECT_EQ(boxes.boxes[0].icon, MessageIcon::Critical);
  EXPECT_EQ(store.Value("LastFile"), "");
  EXPECT_TRUE(capture.IsLoggingActive());
}

}  // namespace
}  // namespace kelvara::capture
