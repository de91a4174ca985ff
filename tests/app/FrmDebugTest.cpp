#include "app/FrmDebug.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QElapsedTimer>
#include <QFontInfo>
#include <QGlyphRun>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRawFont>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>
#include <QTimer>
#include <optional>
#include <string>

#include "support/WindowDriver.h"

namespace kelvara::app {
namespace {

using namespace test;

const QColor kGreen(0x00, 0xC0, 0x00);

class FrmDebugTest : public testing::Test {
 protected:
  QLineEdit& LastMessage() { return Find<QLineEdit>(window_, "TxtLastTxMsg"); }
  QPlainTextEdit& TextDebug() { return Find<QPlainTextEdit>(window_, "TextDebug"); }
  QPushButton& CmdClose() { return Find<QPushButton>(window_, "CmdClose"); }
  QTimer& TimerColor() { return Find<QTimer>(window_, "TimerColor"); }
  std::string Text() { return TextDebug().toPlainText().toStdString(); }

  QColor TextColour() { return LastMessage().palette().color(QPalette::Text); }
  QColor Background() { return LastMessage().palette().color(QPalette::Base); }

  void Open() {
    window_.Open();
    ShowWindow(window_);
  }

  /// Waits until the green ends; false if it does not end in time.
  bool WaitForTick() {
    return QTest::qWaitFor([this] { return !TimerColor().isActive(); }, 2000);
  }

  QWidget main_;
  int closed_ = 0;
  FrmDebug window_{[this] { ++closed_; }, &main_};
};

TEST_F(FrmDebugTest, HasItsControlsAndTexts) {
  EXPECT_EQ(window_.objectName(), "FrmDebug");
  EXPECT_EQ(window_.windowTitle(), "Kelvara Debug");
  EXPECT_EQ(Find<QLabel>(window_, "Label1").text(), "Last Message Tx:");
  EXPECT_EQ(Find<QLabel>(window_, "Label1").buddy(), &LastMessage());
  EXPECT_EQ(CmdClose().text(), "&Close");
  EXPECT_EQ(TextDebug().font().family(), "Courier New");
  EXPECT_TRUE(QFontInfo(TextDebug().font()).fixedPitch());
  EXPECT_EQ(TimerColor().interval(), 500);
  EXPECT_EQ(TimerColor().parent(), &window_);
  EXPECT_FALSE(TimerColor().isActive());
  EXPECT_FALSE(window_.isVisible());
  EXPECT_FALSE(window_.isModal());
}

TEST_F(FrmDebugTest, ScreenReadersNameTheFields) {
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&LastMessage())->text(QAccessible::Name),
            "Last Message Tx");
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&TextDebug())->text(QAccessible::Name),
            "Received report text");
}

TEST_F(FrmDebugTest, TabFollowsTheReadingOrder) {
  Open();
  EXPECT_EQ(TabOrder(window_), "TxtLastTxMsg TextDebug CmdClose");
}

TEST_F(FrmDebugTest, CommandIsGreenForHalfASecond) {
  Open();
  const QColor before = TextColour();
  EXPECT_EQ(before, QApplication::palette().color(QPalette::WindowText));

  QElapsedTimer sinceSent;
  sinceSent.start();
  window_.DebugLastTxMsg("rfps");
  EXPECT_EQ(LastMessage().text(), "rfps");
  EXPECT_EQ(TextColour(), kGreen);
  EXPECT_TRUE(TimerColor().isActive());

  ASSERT_TRUE(WaitForTick());
  EXPECT_GE(sinceSent.elapsed(), 490);
  EXPECT_EQ(TextColour(), before);
  EXPECT_EQ(LastMessage().text(), "rfps");
}

TEST_F(FrmDebugTest, SecondCommandIsGreenUntilTheRunningTimerTicks) {
  Open();
  QElapsedTimer sinceFirst;
  sinceFirst.start();
  window_.DebugLastTxMsg("rfps");
  QTest::qWait(300);
  const int left = TimerColor().remainingTime();
  if (left < 0) {
    GTEST_SKIP() << "the machine was too busy: the timer has already ticked";
  }
  window_.DebugLastTxMsg("cho");
  EXPECT_EQ(LastMessage().text(), "cho");
  EXPECT_EQ(TextColour(), kGreen);
  EXPECT_LE(TimerColor().remainingTime(), left) << "the timer was restarted";

  ASSERT_TRUE(WaitForTick());
  EXPECT_GE(sinceFirst.elapsed(), 490);
  EXPECT_EQ(TextColour(), QApplication::palette().color(QPalette::WindowText));
  EXPECT_EQ(LastMessage().text(), "cho");
}

TEST_F(FrmDebugTest, ColoursFollowTheTheme) {
  Open();
  for (const Theme theme : {Theme::Dark, Theme::Light}) {
    const UseTheme useTheme(theme);
    QCoreApplication::processEvents();
    EXPECT_EQ(TextColour(), QApplication::palette().color(QPalette::WindowText));
    EXPECT_EQ(Background(), QApplication::palette().color(QPalette::Base));
    window_.DebugLastTxMsg("rfps");
    EXPECT_EQ(TextColour(), kGreen);
    EXPECT_EQ(Background(), QApplication::palette().color(QPalette::Base));
    ASSERT_TRUE(WaitForTick());
  }
}

TEST_F(FrmDebugTest, ReportTextReplacesTheTextBefore) {
  Open();
  window_.ShowReportText("one\r\n");
  EXPECT_EQ(Text(), "one\n");
  window_.ShowReportText("one\r\ntwo <b>bold</b> & \"more\"\r\n");
  EXPECT_EQ(Text(), "one\ntwo <b>bold</b> & \"more\"\n");
  window_.ShowReportText("");
  EXPECT_EQ(Text(), "");
}

TEST_F(FrmDebugTest, GarbledTextNeedsNoOtherFont) {
  Open();
  window_.ShowReportText("100ec \xD7\x90 \xDE\x80 \xDF\x8A \xE2\x82\xAC \xFF");
  TextDebug().grab();
  const QTextBlock line = TextDebug().document()->firstBlock();
  const QList<QGlyphRun> runs = line.layout()->glyphRuns(0, line.length() - 1);
  ASSERT_FALSE(runs.isEmpty());
  for (const QGlyphRun& run : runs) {
    EXPECT_EQ(run.rawFont().familyName().toStdString(),
              runs.first().rawFont().familyName().toStdString());
  }
}

TEST_F(FrmDebugTest, NewReportTextKeepsTheScrollPosition) {
  Open();
  std::string text;
  for (int line = 0; line < 200; ++line) {
    text += "line\r\n";
  }
  window_.ShowReportText(text);
  TextDebug().verticalScrollBar()->setValue(50);
  window_.ShowReportText(text + "more\r\n");
  EXPECT_EQ(TextDebug().verticalScrollBar()->value(), 50);
}

TEST_F(FrmDebugTest, DebugLinesAreAddedAtTheEnd) {
  Open();
  window_.ShowReportText("report");
  window_.DebugPrint(" first");
  window_.DebugPrint("second");
  window_.DebugPrint("");
  EXPECT_EQ(Text(), "report first\nsecond\n\n");
  window_.DebugCls();
  EXPECT_EQ(Text(), "");
}

TEST_F(FrmDebugTest, OpeningItAgainClearsTheTextAndKeepsTheWindow) {
  Open();
  window_.DebugLastTxMsg("rfps");
  window_.ShowReportText("report");
  window_.Open();
  EXPECT_TRUE(window_.isVisible());
  EXPECT_EQ(Text(), "");
  EXPECT_EQ(LastMessage().text(), "rfps");
  EXPECT_EQ(closed_, 0);
}

TEST_F(FrmDebugTest, EveryWayOfClosingIsReportedOnce) {
  Open();
  Click(CmdClose());
  EXPECT_FALSE(window_.isVisible());
  EXPECT_EQ(closed_, 1);

  Open();
  Press(window_, Qt::Key_C, Qt::AltModifier);
  EXPECT_TRUE(Closes(window_));
  EXPECT_EQ(closed_, 2);

  Open();
  Press(window_, Qt::Key_Escape);
  EXPECT_FALSE(window_.isVisible());
  EXPECT_EQ(closed_, 3);

  Open();
  TextDebug().setFocus();
  Press(window_, Qt::Key_Escape);
  EXPECT_FALSE(window_.isVisible());
  EXPECT_EQ(closed_, 4);

  Open();
  window_.close();
  EXPECT_EQ(closed_, 5);

  window_.close();
  EXPECT_EQ(closed_, 5) << "it was closed already";
}

TEST_F(FrmDebugTest, IsEmptyWhenItIsOpenedAgainAfterClosing) {
  Open();
  window_.DebugLastTxMsg("rfps");
  window_.ShowReportText("report");
  Press(window_, Qt::Key_Escape);
  EXPECT_FALSE(TimerColor().isActive());
  Open();
  EXPECT_EQ(Text(), "");
  EXPECT_EQ(LastMessage().text(), "");
  EXPECT_EQ(TextColour(), QApplication::palette().color(QPalette::WindowText));
  EXPECT_EQ(FocusName(), "TxtLastTxMsg");
}

TEST_F(FrmDebugTest, IsUnchangedWhenMinimized) {
  Open();
  window_.ShowReportText("report");
  window_.showMinimized();
  EXPECT_EQ(closed_, 0);
  EXPECT_EQ(Text(), "report");
}

TEST_F(FrmDebugTest, EnterChangesNothing) {
  Open();
  window_.ShowReportText("report");
  for (QWidget* const control :
       {static_cast<QWidget*>(&LastMessage()), static_cast<QWidget*>(&TextDebug())}) {
    control->setFocus();
    Press(window_, Qt::Key_Return);
    Press(window_, Qt::Key_Enter);
    EXPECT_TRUE(window_.isVisible()) << control->objectName().toStdString();
  }
  EXPECT_EQ(Text(), "report");
}

TEST(FrmDebugEnd, DestructionWithTheMainWindowWhileOpenIsNotReported) {
  int closed = 0;
  {
    QWidget main;
    auto* const window = new FrmDebug([&closed] { ++closed; }, &main);
    window->Open();
    ShowWindow(*window);
    window->DebugLastTxMsg("rfps");
  }
  EXPECT_EQ(closed, 0);
}

/// A whole report of 29 lines.
std::string Report() {
  std::string report = "rfps\r\n100ec5A301 Sync\r\n";
  for (int line = 3; line <= 29; ++line) {
    report += "100ec5A302 Neighbour phase =  -12\r\n";
  }
  return report;
}

TEST_F(FrmDebugTest, ShowsAWholeReportAtOnce) {
  Open();
  window_.ShowReportText(Report());
  EXPECT_EQ(TextDebug().verticalScrollBar()->maximum(), 0);
  EXPECT_EQ(TextDebug().horizontalScrollBar()->maximum(), 0);
}

TEST_F(FrmDebugTest, LayoutHoldsInEveryThemeAndFont) {
  for (const auto& [theme, note] : {std::pair{Theme::Light, "light"}, {Theme::Dark, "dark"}}) {
    for (const double scale : {1.0, 1.5, 2.0}) {
      const UseTheme useTheme(theme);
      const UseFont useFont(scale);
      FrmDebug window([] {}, &main_);
      window.Open();
      ShowWindow(window);
      window.ShowReportText(Report());
      window.DebugLastTxMsg("rfps");
      EXPECT_EQ(LayoutFaults(window), "") << note << ", font " << scale;
      TakePicture(window, QString("%1-font%2").arg(note).arg(scale).toStdString());
    }
  }
}

TEST_F(FrmDebugTest, LayoutHoldsWhenTheWindowIsMadeSmall) {
  Open();
  window_.resize(10, 10);
  QCoreApplication::processEvents();
  EXPECT_EQ(LayoutFaults(window_), "");
}

}  // namespace
}  // namespace kelvara::app
