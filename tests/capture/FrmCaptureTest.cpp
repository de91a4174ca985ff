#include "capture/FrmCapture.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QLabel>
#include <QTest>
#include <array>

#include "capture/FrmCaptureRig.h"
#include "support/BoxAnswer.h"
#include "support/ChooserUser.h"
#include "support/EndOfProgram.h"

namespace kelvara::capture {
namespace {

using namespace test;

constexpr const char* kStarted = "second1728043200, Log To File Started\r\n";

class FrmCaptureTest : public ::testing::Test, public FrmCaptureRig {
 protected:
  /// Whether the window closes: a button pressed by its access key stays down for a moment first.
  bool IsClosedSoon() {
    return QTest::qWaitFor([this] { return !window->isVisible(); });
  }
};

TEST_F(FrmCaptureTest, ControlsHaveTheirNamesCaptionsAndToolTips) {
  Open();
  EXPECT_EQ(window->objectName(), "FrmCapture");
  EXPECT_EQ(window->windowTitle(), "Capture Sync Reports To File");
  EXPECT_TRUE(window->isModal());
  EXPECT_EQ(Find<QLabel>(*window, "Label1").text(), "File:");
  EXPECT_EQ(TxtFileName().toolTip(), "Path and name of file to log to.");
  EXPECT_EQ(TxtFileName().accessibleName(), "File");
  EXPECT_EQ(Button("CommandBrowse").text(), "&Browse...");
  EXPECT_EQ(Button("CommandBrowse").toolTip(), "Browse for file.");
  EXPECT_EQ(Button("StartButton").text(), "&Start");
  EXPECT_EQ(Button("StartButton").toolTip(), "Start logging raw sync data to file.");
  EXPECT_EQ(Button("CancelButton").text(), "&Cancel");
  EXPECT_EQ(Button("CancelButton").toolTip(), "Cancel logging.");
}

TEST_F(FrmCaptureTest, StartIsDisabledWithoutARememberedName) {
  Open();
  EXPECT_EQ(TxtFileName().text(), "");
  EXPECT_FALSE(Button("StartButton").isEnabled());
}

TEST_F(FrmCaptureTest, StartIsEnabledWithARememberedName) {
  Open("C:\\logs\\log.txt");
  EXPECT_EQ(TxtFileName().text(), "C:\\logs\\log.txt");
  EXPECT_TRUE(Button("StartButton").isEnabled());
}

TEST_F(FrmCaptureTest, AnyKeyInTheNameBoxEnablesStart) {
  for (const Qt::Key key :
       {Qt::Key_A, Qt::Key_Space, Qt::Key_Left, Qt::Key_Backspace, Qt::Key_F5}) {
    SCOPED_TRACE(key);
    Open();
    EXPECT_EQ(FocusName(), "TxtFileName");
    Press(*window, key);
    EXPECT_TRUE(Button("StartButton").isEnabled());
  }
}

TEST_F(FrmCaptureTest, ModifierKeysAndKeysElsewhereDoNotEnableStart) {
  Open();
  Press(*window, Qt::Key_Shift);
  Press(*window, Qt::Key_Alt);
  Button("CancelButton").setFocus();
  Press(*window, Qt::Key_A);
  EXPECT_FALSE(Button("StartButton").isEnabled());
}

TEST_F(FrmCaptureTest, ComposedLetterEnablesStart) {
  Open();
  QInputMethodEvent letter;
  letter.setCommitString(QStringLiteral("\u00E9"));
  QCoreApplication::sendEvent(&TxtFileName(), &letter);
  EXPECT_EQ(TxtFileName().text(), QStringLiteral("\u00E9"));
  EXPECT_TRUE(Button("StartButton").isEnabled());
}

TEST_F(FrmCaptureTest, StartStaysEnabledWhenTheNameIsDeletedAgain) {
  Open();
  Type(*window, "a");
  Press(*window, Qt::Key_Backspace);
  EXPECT_TRUE(Button("StartButton").isEnabled());
}

TEST_F(FrmCaptureTest, StartBeginsTheCaptureRemembersTheNameAndCloses) {
  Open();
  Fill(TxtFileName(), Path("log.txt"));
  Click(Button("StartButton"));
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(window->result(), QDialog::Accepted);
  EXPECT_EQ(ReadTextFile(Path("log.txt")), kStarted);
  EXPECT_EQ(store.Value("LastFile"), Path("log.txt"));
  EXPECT_TRUE(dataCapture.IsLoggingActive());
}

TEST_F(FrmCaptureTest, EnterInTheNameBoxStarts) {
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    WriteTextFile(Path("log.txt"), "kept\r\n");
    Open(Path("log.txt"));
    Press(*window, key);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(ReadTextFile(Path("log.txt")), std::string("kept\r\n") + kStarted);
    dataCapture.StopLoggingToFile();
  }
}

TEST_F(FrmCaptureTest, EnterInAnEmptyNameBoxEnablesStartAndShowsOneBox) {
  Open();
  BoxAnswer box(QMessageBox::Ok);
  Press(*window, Qt::Key_Return);
  EXPECT_EQ(box.text, "Filename and path must be specified.");
  EXPECT_EQ(box.title, "File Error");
  EXPECT_EQ(box.icon, QMessageBox::Critical);
  EXPECT_EQ(box.buttons, QMessageBox::Ok);
  EXPECT_TRUE(Button("StartButton").isEnabled());
  EXPECT_TRUE(window->isVisible());
  EXPECT_FALSE(dataCapture.IsLoggingActive());
}

TEST_F(FrmCaptureTest, FileThatCannotBeOpenedLeavesTheDialogOpen) {
  const std::string path = Path("missing") + "/log.txt";
  Open("before.txt");
  Fill(TxtFileName(), path);
  BoxAnswer box(QMessageBox::Ok);
  Click(Button("StartButton"));
  EXPECT_EQ(box.text, "Could not start Logging to specified file.");
  EXPECT_EQ(box.title, "File Error");
  EXPECT_EQ(box.icon, QMessageBox::Critical);
  EXPECT_EQ(box.buttons, QMessageBox::Ok);
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(TxtFileName().text().toStdString(), path);
  EXPECT_EQ(store.Value("LastFile"), "before.txt");
  EXPECT_TRUE(dataCapture.IsLoggingActive());
}

TEST_F(FrmCaptureTest, BrowseRemembersTheChosenFileAtOnce) {
  WriteTextFile(Path("old.txt"), "kept");
  Open(Path("old.txt"));
  ChooserUser user("new.txt");
  Click(Button("CommandBrowse"));
  EXPECT_EQ(user.title, "Select a file to log to");
  EXPECT_EQ(user.folder, folder.path().toStdString());
  EXPECT_EQ(user.initialName, "old.txt");
  EXPECT_EQ(user.filters, QStringList(QStringLiteral("Log File (*.txt)")));
  EXPECT_FALSE(user.asksBeforeOverwriting);
  EXPECT_EQ(TxtFileName().text().toStdString(), Path("new.txt"));
  EXPECT_EQ(store.Value("LastFile"), Path("new.txt"));
  EXPECT_TRUE(window->isVisible());
  Press(*window, Qt::Key_Escape);
  EXPECT_EQ(store.Value("LastFile"), Path("new.txt"));
}

TEST_F(FrmCaptureTest, ExistingFileIsChosenWithoutAQuestion) {
  WriteTextFile(Path("old.txt"), "kept");
  Open();
  ChooserUser user(Path("old.txt"));
  Press(*window, Qt::Key_Alt);
  Click(Button("CommandBrowse"));
  EXPECT_EQ(TxtFileName().text().toStdString(), Path("old.txt"));
  EXPECT_TRUE(Button("StartButton").isEnabled());
  EXPECT_EQ(ReadTextFile(Path("old.txt")), "kept");
}

TEST_F(FrmCaptureTest, CancelledBrowseChangesNothing) {
  Open();
  ChooserUser user("");
  Click(Button("CommandBrowse"));
  EXPECT_TRUE(user.HasCome());
  EXPECT_EQ(TxtFileName().text(), "");
  EXPECT_FALSE(Button("StartButton").isEnabled());
  EXPECT_EQ(store.Value("LastFile"), "");
}

TEST_F(FrmCaptureTest, RememberedNameWithoutAFolderStillOpensTheChooser) {
  Open("log.txt");
  ChooserUser user("");
  Press(*window, Qt::Key_B, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return user.HasCome(); }));
  EXPECT_EQ(user.initialName, "log.txt");
}

TEST_F(FrmCaptureTest, EscAndCancelCloseAndStartNothing) {
  const auto close = std::to_array<void (*)(FrmCapture&)>(
      {[](FrmCapture& shown) { Press(shown, Qt::Key_Escape); },
       [](FrmCapture& shown) { Press(shown, Qt::Key_C, Qt::AltModifier); },
       [](FrmCapture& shown) { Click(Find<QPushButton>(shown, "CancelButton")); }});
  for (const auto way : close) {
    Open("before.txt");
    Fill(TxtFileName(), Path("log.txt"));
    way(*window);
    EXPECT_TRUE(IsClosedSoon());
    EXPECT_EQ(window->result(), QDialog::Rejected);
    EXPECT_EQ(store.Value("LastFile"), "before.txt");
    EXPECT_FALSE(dataCapture.IsLoggingActive());
    EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(Path("log.txt"))));
  }
}

TEST_F(FrmCaptureTest, AccessKeyOfStartStartsTheCapture) {
  Open(Path("log.txt"));
  Press(*window, Qt::Key_S, Qt::AltModifier);
  EXPECT_TRUE(IsClosedSoon());
  EXPECT_TRUE(dataCapture.IsLoggingActive());
}

TEST_F(FrmCaptureTest, SettingsThatCannotBeWrittenBeepOnce) {
  Open(Path("log.txt"));
  store.writable = false;
  Click(Button("StartButton"));
  EXPECT_EQ(beeper.count, 1);
  EXPECT_TRUE(dataCapture.IsLoggingActive());
  EXPECT_FALSE(window->isVisible()) << "the log is started, so the dialog is done";
}

TEST_F(FrmCaptureTest, EndingTheProgramWhileTheMessageIsOpenEndsTheDialog) {
  window = std::make_unique<FrmCapture>(dialog, beeper);
  const EndOfProgram end("MsgBox");
  const WhenShown shown("FrmCapture", [](QWidget& capturing) { Press(capturing, Qt::Key_Return); });
  EXPECT_EQ(window->exec(), QDialog::Rejected);
  EXPECT_EQ(beeper.count, 0);
}

TEST_F(FrmCaptureTest, BrowseKeepsARememberedNameThatIsNotText) {
  const std::string path = Path("B\xFChne.txt");
  Open(path);
  const WhenShown shown("CommonDialog1",
                        [](QWidget& choosing) { Press(choosing, Qt::Key_Return); });
  Click(Button("CommandBrowse"));
  EXPECT_EQ(store.Value("LastFile"), path);
}

TEST_F(FrmCaptureTest, CapturesToARememberedNameThatIsNotText) {
  const std::string path = Path("B\xFChne.txt");
  Open(path);
  Press(*window, Qt::Key_Return);
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(ReadTextFile(path), kStarted);
  EXPECT_EQ(store.Value("LastFile"), path);
}

TEST_F(FrmCaptureTest, TabFollowsTheReadingOrder) {
  Open("log.txt");
  EXPECT_EQ(TabOrder(*window), "TxtFileName CommandBrowse StartButton CancelButton");
}

TEST_F(FrmCaptureTest, LayoutHoldsInEveryThemeAndFont) {
  for (const auto& [theme, note] : {std::pair{Theme::Light, "light"}, {Theme::Dark, "dark"}}) {
    for (const double scale : {1.0, 1.5, 2.0}) {
      const UseTheme useTheme(theme);
      const UseFont useFont(scale);
      Open("C:\\Sites\\City Theatre\\main hall.txt");
      EXPECT_EQ(LayoutFaults(*window), "") << note << ", font " << scale;
      if (scale != 1.5) {
        TakePicture(*window, scale == 1.0 ? note : std::string(note) + "-large-font");
      }
    }
  }
}

TEST_F(FrmCaptureTest, LayoutShowsThatStartIsDisabled) {
  for (const auto& [theme, note] : {std::pair{Theme::Light, "light"}, {Theme::Dark, "dark"}}) {
    const UseTheme useTheme(theme);
    Open();
    EXPECT_EQ(LayoutFaults(*window), "") << note;
    TakePicture(*window, std::string("empty-") + note);
  }
}

TEST_F(FrmCaptureTest, LayoutFollowsFontAndSize) {
  Open("C:\\Sites\\City Theatre\\main hall.txt");
  const UseFont useFont(2.0);
  for (const QSize size : {QSize(1, 1), QSize(900, 500)}) {
    QCoreApplication::processEvents();
    window->resize(size);
    QCoreApplication::processEvents();
    EXPECT_EQ(LayoutFaults(*window), "");
  }
}

}  // namespace
}  // namespace kelvara::capture
