#include "app/NoticeBar.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QComboBox>
#include <QListWidget>
#include <QMenuBar>
#include <QPlainTextEdit>

#include "FrmMainRig.h"
#include "support/MemorySessionFolder.h"
#include "support/RecordedReports.h"

namespace kelvara::test {
namespace {

/// The main window with its notice line.
class NoticeBarRig : public FrmMainRig {
 public:
  /// The notice shown: its name, its text, and its button in brackets.
  std::string Shown() {
    QCoreApplication::processEvents();
    const QPushButton& action = Action();
    return !Bar().isVisible()
               ? ""
               : Bar().property("notice").toString().toStdString() + ": " +
                     Text().text().toStdString() +
                     (action.isVisible() ? " [" + action.text().toStdString() + "]" : "");
  }

  void ClearOneReport() {
    port.Receive("B");
    TakeReport();
    Choose("mnuClearGrid");
  }

  QWidget& Bar() { return Find<QWidget>(window, "NoticeBar"); }
  QLabel& Text() { return Find<QLabel>(window, "NoticeText"); }
  QPushButton& Action() { return Find<QPushButton>(window, "NoticeAction"); }
  QPushButton& Close() { return Find<QPushButton>(window, "NoticeClose"); }
};

TEST(NoticeBar, IsHiddenWhileThereIsNothingToSay) {
  NoticeBarRig rig;
  rig.Open();
  EXPECT_FALSE(rig.Bar().isVisible());
  EXPECT_FALSE(rig.Bar().property("notice").isValid());
  const QWidget& client = *rig.Grid().parentWidget();
  EXPECT_EQ(client.mapTo(&rig.window, QPoint()).y(), rig.window.menuBar()->geometry().bottom() + 1);
}

TEST(NoticeBar, MovesWhatIsBelowItDownByItsHeight) {
  NoticeBarRig rig;
  rig.store.SetValue("DisplayLog", "True");
  rig.Open();
  const auto place = [&rig](const QWidget& control) {
    QCoreApplication::processEvents();
    return QRect(control.mapTo(&rig.window, QPoint()), control.size());
  };
  const QRect grid = place(rig.Grid());
  const QRect log = place(rig.TextLog());
  const QRect status = place(Find<QWidget>(rig.window, "StatusBar1"));
  rig.ClearOneReport();
  ASSERT_TRUE(rig.Bar().isVisible());
  EXPECT_EQ(place(rig.Bar()).top(), rig.window.menuBar()->geometry().bottom() + 1);
  EXPECT_EQ(place(rig.Bar()).width(), rig.window.width());
  const int height = rig.Bar().height();
  EXPECT_EQ(place(rig.Grid()), grid.adjusted(0, height, 0, 0));
  EXPECT_EQ(place(rig.TextLog()), log);
  EXPECT_EQ(place(Find<QWidget>(rig.window, "StatusBar1")), status);
  Click(rig.Close());
  EXPECT_EQ(place(rig.Grid()), grid);
}

TEST(NoticeBar, UndoBringsTheClearedResultsBack) {
  NoticeBarRig rig;
  rig.Open();
  rig.ClearOneReport();
  EXPECT_EQ(rig.Shown(), "cleared: Results cleared: 1 report, 3 antennas. [Undo]");
  rig.TakeReport();
  Click(rig.Action());
  EXPECT_EQ(rig.Shown(), "");
  EXPECT_EQ(rig.Panel(3), "Reports: 2");
  EXPECT_EQ(rig.Cell(1, 2), "7");
}

TEST(NoticeBar, KeysPressItsButtonsWithoutTakingTheFocus) {
  NoticeBarRig rig;
  rig.Open();
  rig.Grid().setFocus();
  rig.ClearOneReport();
  ASSERT_NE(rig.Shown(), "");
  EXPECT_EQ(FocusName(), "Grid");
  EXPECT_EQ(TabOrder(rig.window).find("Notice"), std::string::npos);
  Press(rig.window, Qt::Key_N, Qt::AltModifier);
  EXPECT_TRUE(Closes(rig.Bar()));
  EXPECT_EQ(rig.Panel(3), "Reports: 1");
  rig.port.Receive("B");
  rig.Choose("mnuClearGrid");
  ASSERT_NE(rig.Shown(), "");
  Press(rig.window, Qt::Key_N, Qt::AltModifier | Qt::ShiftModifier);
  EXPECT_TRUE(Closes(rig.Bar()));
  EXPECT_EQ(rig.Panel(3), "Reports: 0");
  EXPECT_EQ(FocusName(), "Grid");
}

TEST(NoticeBar, IsAnAlertWhoseNameDoesNotFollowATextThatCounts) {
  NoticeBarRig rig;
  rig.Open();
  rig.port.Receive("B");
  const auto told = [&rig] {
    return QAccessible::queryAccessibleInterface(&rig.Bar())->text(QAccessible::Name);
  };
  rig.clock.Advance(12);
  rig.Tick("RfpsTimer");
  EXPECT_EQ(rig.Shown(), "silent: Nothing heard from the beltpack for 12 s.");
  EXPECT_EQ(told(), "Nothing heard from the beltpack for 12 s.");
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&rig.Bar())->role(), QAccessible::AlertMessage);
  rig.clock.Advance(3);
  rig.Tick("RfpsTimer");
  EXPECT_EQ(rig.Shown(), "silent: Nothing heard from the beltpack for 15 s.");
  EXPECT_EQ(told(), "Nothing heard from the beltpack for 12 s.") << "it would be read out again";
  rig.port.Receive("B");
  EXPECT_EQ(rig.Shown(), "");
}

TEST(NoticeBar, ShowsALesserNoticeAgainWhenTheMoreUrgentOneIsClosed) {
  NoticeBarRig rig;
  rig.Open();
  rig.window.Notices().NoteDemo();
  rig.ClearOneReport();
  EXPECT_EQ(rig.Shown(), "cleared: Results cleared: 1 report, 3 antennas. [Undo]");
  Click(rig.Close());
  EXPECT_EQ(rig.Shown(), "demo: Demo: the readings come from the built-in beltpack.");
  EXPECT_EQ(rig.Bar().accessibleName(), rig.Text().text());
}

TEST(NoticeBar, TellsThatAPortOpenedAfterAFailedStartIsNotPolled) {
  NoticeBarRig rig;
  rig.port.openable = false;
  ShowWindow(rig.window);
  BoxAnswer box(QMessageBox::Ok);
  const WhenShown dialog("FrmComSelect", [&rig](QWidget& shown) {
    rig.port.openable = true;
    Find<QListWidget>(shown, "ComboCom").setCurrentRow(2);
    Click(Find<QPushButton>(shown, "CmdOK"));
  });
  rig.window.Form_Load();
  EXPECT_EQ(rig.Shown(),
            "not-polled: COM3 is open, but the beltpack is not polled yet. [Start polling]");
  EXPECT_EQ(rig.Panel(1), "");
  Click(rig.Action());
  EXPECT_EQ(rig.Shown(), "");
  EXPECT_EQ(rig.Panel(1), "Attempting To Connect To Beltpack...");
  EXPECT_TRUE(Find<QTimer>(rig.window, "RfpsTimer").isActive());
}

TEST(NoticeBar, StopsALogThatCannotBeWritten) {
  NoticeBarRig rig;
  rig.Open();
  ASSERT_TRUE(rig.window.StartLoggingToFile("/log.txt"));
  rig.files.writesLeft = 0;
  rig.TakeReport();
  EXPECT_EQ(rig.Shown().substr(0, 82),
            "log-failed: Reports are being dropped: /log.txt cannot be written (cannot write /l");
  Click(rig.Action());
  EXPECT_EQ(rig.Shown(), "");
  EXPECT_EQ(rig.Panel(2), "");
  EXPECT_TRUE(rig.Entry("mnuCaptureDataStart").isVisible());
  EXPECT_FALSE(Find<QMenu>(rig.window, "mnuCaptureData").menuAction()->isVisible());
  EXPECT_EQ(rig.files.openFiles, 0);
}

TEST(NoticeBar, ContinuesALogThatTheLinkStopped) {
  NoticeBarRig rig;
  rig.Open();
  ASSERT_TRUE(rig.window.StartLoggingToFile("/log.txt"));
  const WhenShown dialog("FrmComSelect", [](QWidget& shown) { Press(shown, Qt::Key_Escape); });
  rig.Choose("mnuComPort");
  EXPECT_EQ(rig.Shown(),
            "log-stopped: Nothing has been logged to /log.txt since the link was started again. "
            "[Continue logging]");
  Click(rig.Action());
  EXPECT_EQ(rig.Shown(), "");
  EXPECT_TRUE(rig.files.files["/log.txt"].ends_with("Log To File Resumed\r\n"));
}

TEST(NoticeBar, AnActionThatFailsBeepsOnce) {
  NoticeBarRig rig;
  rig.Open();
  ASSERT_TRUE(rig.window.StartLoggingToFile("/log.txt"));
  rig.window.StartLink();
  rig.files.writesLeft = 0;
  Click(rig.Action());
  EXPECT_EQ(rig.beeper.count, 1);
  EXPECT_EQ(rig.Shown().substr(0, 10), "log-failed");
}

TEST(NoticeBar, ContinuesASessionThatWasCutOff) {
  MemorySessionFolder folder;
  NoticeBarRig rig;
  folder.files["2024-10-04-112801.trace"] = "\x01rfps\x02" + OneNeighbourReport(1, 2, -11);
  rig.Open();
  rig.window.Live().StartJournal(folder);
  rig.window.Notices().Offer(std::move(*sessions::FindUnfinishedSession(folder)));
  EXPECT_EQ(rig.Shown(),
            "unfinished-session: The last session was cut off (1 report, 2 antennas). [Continue "
            "it]");
  rig.TakeReport();
  Click(rig.Action());
  EXPECT_EQ(rig.Shown(), "");
  EXPECT_EQ(rig.Panel(3), "Reports: 2");
  EXPECT_EQ(rig.Panel(4), "AAs: 3");
  EXPECT_EQ(rig.Cell(1, 2), "-11");
}

TEST(Demo, IsToldInANoticeAndInTheReportsNotes) {
  NoticeBarRig rig;
  rig.window.SetDemo();
  rig.Open();
  EXPECT_EQ(rig.Shown(), "demo: Demo: the readings come from the built-in beltpack.");
  rig.TakeReport();
  const WhenShown report("FrmReport", [](QWidget& dialog) {
    EXPECT_EQ(Find<QPlainTextEdit>(dialog, "TxtNotes").toPlainText(), "Demo: simulated readings.");
    Press(dialog, Qt::Key_Escape);
  });
  rig.Choose("mnuGenReport");
}

TEST(JournalFailure, IsToldOnceAndHindersNothing) {
  MemorySessionFolder folder;
  NoticeBarRig rig;
  folder.full = true;
  std::vector<std::string> told;
  rig.window.SetJournalFailed([&told](const std::string& reason) { told.push_back(reason); });
  rig.Open();
  rig.window.Live().StartJournal(folder);
  rig.port.Receive("B");
  for (int tick = 0; tick < 3; ++tick) {
    rig.TakeReport();
    rig.Tick("RfpsTimer");
  }
  EXPECT_EQ(told, std::vector<std::string>{"the disk is full"});
  EXPECT_EQ(rig.Shown(), "");
  EXPECT_EQ(rig.Panel(3), "Reports: 3");
  EXPECT_EQ(rig.beeper.count, 0);
  const auto& button = Find<QPushButton>(rig.window, "CmdSessions");
  EXPECT_EQ(button.text(), "Sess&ions (!)");
  EXPECT_EQ(button.toolTip(), "This session is not kept: the disk is full");
  const QAction& line = *Find<QMenu>(rig.window, "mnuSessions").actions().constFirst();
  EXPECT_EQ(line.text(), "This session is not kept: the disk is full");
  EXPECT_FALSE(line.isEnabled());
  rig.window.close();
  EXPECT_EQ(told.size(), 1U);
}

struct Sample {
  const char* name;
  app::Notice notice;
};

std::vector<Sample> Samples() {
  using app::NoticeKind;
  return {{"not-polled",
           {NoticeKind::NotPolled, "COM3 is open, but the beltpack is not polled yet.",
            "Start polling"}},
          {"log-failed",
           {NoticeKind::LogFailed,
            "Reports are being dropped: /media/engineer/USB stick/A rather long folder "
            "name/SessionsOfTheWholeNorthernStadiumAndItsCarParks/2026-11-21-morning.txt cannot be "
            "written (No space left on device).",
            "Stop logging"}},
          {"log-stopped",
           {NoticeKind::LogStopped,
            "Nothing has been logged to /home/engineer/log.txt since the link was started again.",
            "Continue logging"}},
          {"silent", {NoticeKind::Silent, "Nothing heard from the beltpack for 12 s.", {}}},
          {"unfinished-session",
           {NoticeKind::UnfinishedSession,
            "The last session was cut off at 11:28 (52 reports, 12 antennas).", "Continue it"}},
          {"cleared", {NoticeKind::Cleared, "Results cleared: 52 reports, 12 antennas.", "Undo"}},
          {"demo", {NoticeKind::Demo, "Demo: the readings come from the built-in beltpack.", {}}}};
}

TEST(NoticeBarLayout, ShowsEveryNoticeWholeInBothThemesAndInANarrowWindow) {
  for (const Theme theme : {Theme::Light, Theme::Dark}) {
    const UseTheme useTheme(theme);
    for (const int width : {400, 900}) {
      for (const double font : {1.0, 1.6}) {
        const UseFont useFont(font);
        FrmMainRig rig;
        rig.Open();
        rig.window.resize(width, 360);
        auto& bar = Find<app::NoticeBar>(rig.window, "NoticeBar");
        for (const Sample& sample : Samples()) {
          SCOPED_TRACE(std::string(sample.name) + " at " + std::to_string(width));
          bar.ShowNotice(&sample.notice, true);
          QCoreApplication::processEvents();
          QCoreApplication::processEvents();
          EXPECT_EQ(LayoutFaults(bar), "");
          EXPECT_EQ(rig.window.width(), width);
          const auto& text = Find<QLabel>(bar, "NoticeText");
          EXPECT_GE(text.height(), text.heightForWidth(text.width()));
          if (font == 1.0) {
            TakePicture(rig.window, std::string(theme == Theme::Light ? "light-" : "dark-") +
                                        sample.name + "-" + std::to_string(width));
          }
        }
      }
    }
  }
}

}  // namespace
}  // namespace kelvara::test
