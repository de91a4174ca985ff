#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <functional>
#include <memory>
#include <optional>

#include "report/FrmReport.h"
#include "report/FrmReportRig.h"
#include "support/BoxAnswer.h"
#include "support/ChooserUser.h"
#include "support/EndOfProgram.h"

namespace kelvara::report {
namespace {

using namespace test;

/// The dialog with the message boxes, choosers and failures that it can lead to.
class FrmReportQuestionsTest : public ::testing::Test, public FrmReportRig {
 protected:
  void OpenFor(const std::string& path) {
    store.SetValue("LastReportFile", path);
    Open();
  }
};

TEST_F(FrmReportQuestionsTest, NoKeepsTheFileAndTheDialogOpen) {
  WriteTextFile(Path("report.html"), "old");
  OpenFor(Path("report.html"));
  BoxAnswer box(QMessageBox::No);
  Click(Button("CommandGenerate"));
  EXPECT_EQ(box.text, Path("report.html") + " already exists.\r\n\r\nDo you want to replace it?");
  EXPECT_EQ(box.title, "Generate Report");
  EXPECT_EQ(box.icon, QMessageBox::Warning);
  EXPECT_EQ(box.buttons, QMessageBox::Yes | QMessageBox::No);
  EXPECT_EQ(box.format, Qt::PlainText);
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(ReadTextFile(Path("report.html")), "old");
  EXPECT_EQ(ReadTextFile(Path("rfields.ds")), "\r\n\r\n 1 \r\n\r\n");
}

TEST_F(FrmReportQuestionsTest, YesReplacesTheFile) {
  WriteTextFile(Path("report.html"), "old");
  OpenFor(Path("report.html"));
  BoxAnswer box(QMessageBox::Yes);
  Press(*window, Qt::Key_Return);
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(ReadTextFile(Path("report.html")).substr(0, 14), "<!DOCTYPE HTML");
}

TEST_F(FrmReportQuestionsTest, FolderOfThatNameDoesNotCountAsAnExistingFile) {
  OpenFor(folder.path().toStdString());
  BoxAnswer box(QMessageBox::Ok);
  Click(Button("CommandGenerate"));
  EXPECT_EQ(box.title, "Generate Report");
  EXPECT_EQ(box.icon, QMessageBox::Critical);
}

TEST_F(FrmReportQuestionsTest, EmptyFileNameShowsOneBox) {
  Open();
  Fill(TxtSite(), "kept");
  BoxAnswer box(QMessageBox::Ok);
  Click(Button("CommandGenerate"));
  EXPECT_EQ(box.text, "A filename must be specified\r\nCan't generate report.");
  EXPECT_EQ(box.title, "File not specified");
  EXPECT_EQ(box.icon, QMessageBox::Warning);
  EXPECT_EQ(box.buttons, QMessageBox::Ok);
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(TxtSite().text(), "kept");
}

TEST_F(FrmReportQuestionsTest, ReportThatCannotBeWrittenLeavesTheDialogOpen) {
  const std::string path = Path("missing") + "/report.html";
  OpenFor(path);
  store.SetValue("LastReportFile", "before");
  Fill(TxtSite(), "Hall 3");
  BoxAnswer box(QMessageBox::Ok);
  Press(*window, Qt::Key_Return);
  EXPECT_EQ(box.text, "Error occured while generating report.\r\nCheck the filename and path");
  EXPECT_EQ(box.title, "Generate Report");
  EXPECT_EQ(box.icon, QMessageBox::Critical);
  EXPECT_EQ(box.buttons, QMessageBox::Ok);
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(store.Value("LastReportFile"), "before");
  EXPECT_EQ(ReadTextFile(Path("rfields.ds")), "\r\n\r\n 1 \r\n\r\n");
  EXPECT_EQ(beeper.count, 0);
}

TEST_F(FrmReportQuestionsTest, BrowserThatCannotBeStartedShowsOneBoxAndTheDialogCloses) {
  opener.answer = false;
  OpenFor(Path("report.html"));
  bool savedBefore = false;
  BoxAnswer box(QMessageBox::Ok, [&] {
    savedBefore = Exists("report.html") && store.Value("LastReportFile") == Path("report.html");
  });
  Click(Button("CommandGenerate"));
  EXPECT_EQ(box.text, "Could not open the HTML formatted report.");
  EXPECT_EQ(box.title, "Web Browser Error");
  EXPECT_EQ(box.icon, QMessageBox::Critical);
  EXPECT_EQ(box.buttons, QMessageBox::Ok);
  EXPECT_TRUE(savedBefore);
  EXPECT_FALSE(window->isVisible());
}

TEST_F(FrmReportQuestionsTest, NoAntennasShowOneBox) {
  model.Clear();
  BoxAnswer box(QMessageBox::Ok);
  EXPECT_FALSE(dialog.HasPhaseInformation());
  EXPECT_EQ(box.text, "No phase information has been captured.");
  EXPECT_EQ(box.title, "Report Can't Be Generated");
  EXPECT_EQ(box.icon, QMessageBox::Warning);
  EXPECT_EQ(box.buttons, QMessageBox::Ok);
}

TEST_F(FrmReportQuestionsTest, TooManyAntennasToListBeepOnce) {
  for (std::int16_t rpn = 100; model.AaCount() < 51; ++rpn) {
    model.FindOrAddAa(rpn, 0, 0);
  }
  EXPECT_THROW(model.FindOrAddAa(99, 0, 0), base::Fault);
  OpenFor(Path("report.html"));
  Click(Button("CommandGenerate"));
  EXPECT_EQ(beeper.count, 1);
  EXPECT_TRUE(window->isVisible());
  EXPECT_FALSE(Exists("report.html"));
}

TEST_F(FrmReportQuestionsTest, SettingsThatCannotBeWrittenBeepOnce) {
  OpenFor(Path("report.html"));
  store.writable = false;
  Click(Button("CommandGenerate"));
  EXPECT_EQ(beeper.count, 1);
  EXPECT_TRUE(Exists("report.html"));
  EXPECT_FALSE(window->isVisible()) << "the report is written, so the dialog is done";
}

TEST_F(FrmReportQuestionsTest, BrowseTakesTheChosenPath) {
  store.SetValue("LastFile", Path("log.txt"));
  WriteTextFile(Path("there.html"), "old");
  Open();
  ChooserUser user("there.html");
  Click(Button("CommandBrowse"));
  EXPECT_EQ(user.title, "Select a file to write to");
  EXPECT_EQ(user.folder, folder.path().toStdString());
  EXPECT_EQ(user.initialName, "Kelvara 2024-10-04.html") << "the rig's clock is on day 20000";
  EXPECT_EQ(user.filters, QStringList(QStringLiteral("HTML File (*.html)")));
  EXPECT_FALSE(user.asksBeforeOverwriting);
  EXPECT_EQ(TxtFileName().text().toStdString(), Path("there.html"));
  EXPECT_EQ(store.Value("LastReportFile"), "");
  EXPECT_TRUE(window->isVisible());
}

TEST_F(FrmReportQuestionsTest, BrowseRefusesAPathInAMissingFolder) {
  OpenFor("before.html");
  std::optional<ChooserUser> again;
  BoxAnswer box(QMessageBox::Ok, [&again] { again.emplace(""); });
  ChooserUser user(Path("missing/there.html"));
  Click(Button("CommandBrowse"));
  EXPECT_EQ(box.text, "There is no folder " + Path("missing") + ".");
  ASSERT_TRUE(again.has_value());
  EXPECT_TRUE(again->HasCome()) << "the chooser comes back";
  EXPECT_EQ(TxtFileName().text(), "before.html");
}

TEST_F(FrmReportQuestionsTest, CancelledBrowseChangesNothing) {
  OpenFor("before.html");
  ChooserUser user("");
  Press(*window, Qt::Key_B, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return user.HasCome(); }));
  EXPECT_EQ(TxtFileName().text(), "before.html");
  EXPECT_TRUE(window->isVisible());
}

TEST_F(FrmReportQuestionsTest, LastCaptureWithoutAFolderShowsNoChooser) {
  store.SetValue("LastFile", "log.txt");
  OpenFor("before.html");
  Click(Button("CommandBrowse"));
  EXPECT_EQ(TxtFileName().text(), "before.html");
  EXPECT_EQ(QApplication::activeModalWidget(), window.get());
  EXPECT_EQ(beeper.count, 0);
}

TEST_F(FrmReportQuestionsTest, EndingTheProgramWhileTheQuestionIsOpenWritesNothing) {
  WriteTextFile(Path("report.html"), "old");
  store.SetValue("LastReportFile", Path("report.html"));
  window = std::make_unique<FrmReport>(dialog, beeper);
  const EndOfProgram end("MsgBox");
  const WhenShown report("FrmReport", [](QWidget& shown) { Press(shown, Qt::Key_Return); });
  EXPECT_EQ(window->exec(), QDialog::Rejected);
  EXPECT_EQ(ReadTextFile(Path("report.html")), "old");
  EXPECT_EQ(beeper.count, 0);
}

/// Message boxes that destroy the window when they open, as the end of the program does.
class DestroyingMessageBoxes : public platform::MessageBoxes {
 public:
  platform::MessageAnswer Show(std::string_view, std::string_view, platform::MessageIcon,
                               platform::MessageButtons) override {
    onShow();
    return answer;
  }
  std::function<void()> onShow;
  platform::MessageAnswer answer = platform::MessageAnswer::Yes;
};

TEST_F(FrmReportQuestionsTest, WindowMayBeDestroyedWhileAQuestionIsOpen) {
  DestroyingMessageBoxes destroying;
  destroying.onShow = [this] { window.reset(); };
  const platform::Desktop destroyingDesktop{{.clock = clock,
                                             .dateFormat = dateFormat,
                                             .fileSystem = files,
                                             .beeper = beeper,
                                             .messageBoxes = destroying,
                                             .events = events},
                                            chooser,
                                            opener,
                                            store,
                                            folder.path().toStdString()};
  ReportDialog destroyingDialog(model, syncReport, destroyingDesktop);
  WriteTextFile(Path("report.html"), "old");
  store.SetValue("LastReportFile", Path("report.html"));
  for (const bool byKey : {true, false}) {
    window = std::make_unique<FrmReport>(destroyingDialog, beeper);
    ShowWindow(*window);
    if (byKey) {
      Press(*window, Qt::Key_Return);
    } else {
      window->CommandGenerate_Click();
    }
    EXPECT_EQ(window, nullptr);
    EXPECT_EQ(ReadTextFile(Path("report.html")).substr(0, 14), "<!DOCTYPE HTML");
  }
}

}  // namespace
}  // namespace kelvara::report
