#include <gtest/gtest.h>

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>
#include <QTest>

#include "app/FrmMainRig.h"
#include "support/RecordedReports.h"
#include "survey/FrmSurvey.h"

namespace kelvara::test {
namespace {

constexpr std::int64_t kMorning = 1'700'000'000'000;

/// A session of the main window's reports: in each, antenna 1 hears another one more.
std::string Session(int reports) {
  std::string trace;
  for (int report = 1; report <= reports; ++report) {
    trace += "\x01@" + std::to_string(kMorning + 3000 * report) + "\x02\x01rfps\x02" +
             OneNeighbourReport(1, 1 + report % 50, report % 100);
  }
  return trace;
}

/// The main window with a recorded session open for review.
class FrmMainReviewTest : public ::testing::Test, protected FrmMainRig {
 protected:
  void OpenReview(const std::string& trace) {
    Begin(trace);
    EXPECT_TRUE(QTest::qWaitFor([this] { return slider().isVisible(); }));
  }

  void Begin(const std::string& trace) {
    files.files["/folder/session.trace"] = trace;
    window.OpenReview(std::make_unique<sessions::ReviewedSession>(files, "/folder/session.trace"),
                      "/folder/session.trace", [this] { ++failures; });
    ShowWindow(window);
  }

  QSlider& slider() { return Find<QSlider>(window, "ReviewSlider"); }
  std::string Time() { return Find<QLabel>(window, "ReviewTime").text().toStdString(); }

  int failures = 0;
};

TEST_F(FrmMainReviewTest, OpensAtTheEndOfTheSession) {
  OpenReview(Session(3));
  EXPECT_EQ(slider().value(), 3);
  EXPECT_EQ(slider().maximum(), 3);
  EXPECT_EQ(FocusName(), "ReviewSlider");
  EXPECT_EQ(Panel(1), "Review: session.trace");
  EXPECT_EQ(Find<QLabel>(window, "Panel1").toolTip(), "/folder/session.trace");
  EXPECT_EQ(Panel(2), "");
  EXPECT_EQ(Panel(3), "Reports: 3");
  EXPECT_EQ(Panel(4), "AAs: 4");
  EXPECT_EQ(Panel(5), "");
  EXPECT_EQ(Panel(6), "");
  EXPECT_EQ(window.windowTitle(), "Kelvara");
  EXPECT_EQ(Cell(1, 4), "3");
  EXPECT_EQ(Time(), dateFormat.General(clock.LocalTime(kMorning + 9000)));
}

TEST_F(FrmMainReviewTest, KeysAndButtonsMoveByOneReportOrAPage) {
  OpenReview(Session(100));
  Press(window, Qt::Key_Left);
  EXPECT_EQ(Panel(3), "Reports: 99");
  Press(window, Qt::Key_PageDown);
  EXPECT_EQ(slider().value(), 94);
  Press(window, Qt::Key_Home);
  EXPECT_EQ(Panel(3), "Reports: 0");
  EXPECT_EQ(Grid().model()->rowCount(), 1);
  Click(Find<QPushButton>(window, "CmdReviewForward"));
  EXPECT_EQ(Panel(3), "Reports: 1");
  EXPECT_EQ(Find<QLabel>(window, "Label1").text(), "1 of 100");
  Click(Find<QPushButton>(window, "CmdReviewBack"));
  EXPECT_EQ(Panel(3), "Reports: 0");
  Grid().setFocus();
  Press(window, Qt::Key_Right, Qt::AltModifier);
  Press(window, Qt::Key_Right, Qt::AltModifier);
  Press(window, Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(Panel(3), "Reports: 1");
  EXPECT_EQ(beeper.count, 0);
}

TEST_F(FrmMainReviewTest, CommandsOfALiveSessionAreDisabledAndNothingIsPolled) {
  store.SetValue("DisplayLog", "1");
  OpenReview(Session(3));
  for (const char* const name : {"mnuComPort", "mnuClearGrid", "mnuForceSearch", "mnuClearLog",
                                 "mnuCaptureDataStart", "mnuUndoClear"}) {
    EXPECT_FALSE(Entry(name).isEnabled()) << name;
  }
  for (const char* const name : {"mnuCaptureData", "mnuViewDebug"}) {
    EXPECT_FALSE(Find<QMenu>(window, name).menuAction()->isEnabled()) << name;
  }
  Choose("mnuDisplayLogOff");
  Choose("mnuDisplayLogOn");
  EXPECT_FALSE(Entry("mnuClearLog").isEnabled());
  EXPECT_FALSE(port.open);
  for (const char* const timer : {"RfpsTimer", "TimerComPort", "SilenceTimer"}) {
    EXPECT_FALSE(Find<QTimer>(window, timer).isActive()) << timer;
  }
}

TEST_F(FrmMainReviewTest, ChangesOfTheOptionsRedrawTheGridAndTheLog) {
  OpenReview(Session(12));
  EXPECT_EQ(Cell(0, 11), "11");
  Choose("mnuRpnHex");
  EXPECT_TRUE(QTest::qWaitFor([this] { return Cell(0, 11) == "0B"; }));
  EXPECT_EQ(TextLog().toPlainText(), "");
  Choose("mnuDisplayLogOn");
  EXPECT_TRUE(QTest::qWaitFor([this] { return !TextLog().toPlainText().isEmpty(); }));
  const QString last = QString::fromStdString(Time()) + ", 01->0D=12\n";
  EXPECT_TRUE(TextLog().toPlainText().endsWith(last));
  Press(window, Qt::Key_Left);
  EXPECT_FALSE(TextLog().toPlainText().endsWith(last));
  EXPECT_EQ(store.Value("RPNUnits"), "1");
}

TEST_F(FrmMainReviewTest, TheLogIsScrolledToItsNewestEntries) {
  store.SetValue("DisplayLog", "1");
  OpenReview(Session(100));
  const QScrollBar& bar = *TextLog().verticalScrollBar();
  EXPECT_GT(bar.maximum(), 50);
  // The box scrolls before it appends, by lines that differ in height between systems.
  EXPECT_GE(bar.value(), bar.maximum() - 5);
}

TEST_F(FrmMainReviewTest, TheCellsOfTheReportShownAreMarked) {
  OpenReview(Session(5));
  const auto isMarked = [this](int row, int column) {
    QCoreApplication::processEvents();
    const auto& grid = Find<sync::SyncGridView>(window, "Grid");
    const QRect cell = grid.visualRect(grid.model()->index(row, column));
    const QImage picture = grid.viewport()->grab().toImage();
    return picture.pixelColor(cell.topLeft() + QPoint(8, 1)) == QColor(Qt::black);
  };
  const int last = 6;
  EXPECT_TRUE(isMarked(1, last));
  EXPECT_FALSE(isMarked(1, last - 1));
  Press(window, Qt::Key_Left);
  EXPECT_TRUE(isMarked(1, last - 1));
  Press(window, Qt::Key_Home);
  EXPECT_FALSE(isMarked(1, 2));
}

TEST_F(FrmMainReviewTest, TheSurveyFollowsTheSlider) {
  OpenReview(Session(5));
  Click(Find<QPushButton>(window, "CmdSurvey"));
  auto& survey = Find<survey::FrmSurvey>(window, "FrmSurvey");
  EXPECT_TRUE(QTest::qWaitFor([&] { return survey.Survey().antennas.size() == 6; }));
  slider().setValue(2);
  EXPECT_TRUE(QTest::qWaitFor([&] { return survey.Survey().antennas.size() == 3; }));
}

TEST_F(FrmMainReviewTest, ASessionWithoutAReportIsToldAndFails) {
  BoxAnswer box(QMessageBox::Ok);
  Begin("Some other text\r\n");
  EXPECT_TRUE(QTest::qWaitFor([this] { return failures == 1; }));
  EXPECT_EQ(box.text, "\"/folder/session.trace\" holds no report of an antenna");
  EXPECT_EQ(box.title, "Kelvara");
}

TEST_F(FrmMainReviewTest, AFileThatHasChangedIsToldOnceForEachPressOfTheSlider) {
  constexpr int kLongerThanRepeatDelay = 700;
  const std::string session = Session(1000);
  OpenReview(session);
  files.files["/folder/session.trace"] = session.substr(0, 1000);
  BoxAnswer box(QMessageBox::Ok);
  QTest::mousePress(&slider(), Qt::LeftButton, Qt::NoModifier,
                    QPoint(slider().width() / 4, slider().height() / 2));
  EXPECT_TRUE(QTest::qWaitFor([&] { return box.HasCome(); }));
  EXPECT_EQ(box.text, "\"/folder/session.trace\" has changed since it was opened");
  // The release has gone to the box.
  BoxAnswer another(QMessageBox::Ok);
  QTest::qWait(kLongerThanRepeatDelay);
  EXPECT_FALSE(another.HasCome());
  EXPECT_EQ(Panel(3), "Reports: 1000");
  EXPECT_EQ(slider().value(), 1000);
  EXPECT_EQ(window.focusWidget(), &slider());
  Press(window, Qt::Key_Left);
  EXPECT_TRUE(QTest::qWaitFor([&] { return another.HasCome(); }));
  files.files["/folder/session.trace"] = session;
  Press(window, Qt::Key_Left);
  EXPECT_EQ(Panel(3), "Reports: 999");
}

TEST_F(FrmMainReviewTest, ReadingShowsProgressAndCanBeCancelled) {
  Begin(Session(20000));
  EXPECT_TRUE(Find<QProgressBar>(window, "ReviewProgress").isVisible());
  EXPECT_FALSE(slider().isVisible());
  EXPECT_EQ(FocusName(), "CmdReviewCancel");
  Choose("mnuRpnHex");
  Click(Find<QPushButton>(window, "CmdReviewCancel"));
  EXPECT_TRUE(Closes(window));
  EXPECT_EQ(failures, 0);
}

TEST_F(FrmMainReviewTest, LayoutHasRoomForEveryControlInTheSmallestWindow) {
  OpenReview(Session(100));
  window.resize(window.minimumSize());
  QCoreApplication::processEvents();
  int end = 0;
  for (const char* const name :
       {"CmdReviewBack", "ReviewSlider", "CmdReviewForward", "Label1", "ReviewTime"}) {
    const auto& control = Find<QWidget>(window, name);
    EXPECT_GE(control.x(), end) << name;
    const bool isLabel = qobject_cast<const QLabel*>(&control) != nullptr;
    EXPECT_GE(control.width(), isLabel ? control.sizeHint().width() : 20) << name;
    end = control.geometry().right();
  }
  EXPECT_LE(end, Find<QWidget>(window, "ReviewBar").width());
  EXPECT_LE(Grid().mapTo(&window, Grid().rect().bottomLeft()).y(),
            Find<QWidget>(window, "ReviewBar").mapTo(&window, QPoint()).y());
}

}  // namespace
}  // namespace kelvara::test
