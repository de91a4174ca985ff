#include <gtest/gtest.h>

#include <QAction>
#include <QMenu>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTimer>
#include <QWheelEvent>

#include "sync/SyncGridViewRig.h"

namespace kelvara::test {
namespace {

/// What a user does with the grid: zoom, point, select and copy.
class SyncGridUseTest : public SyncGridViewRig {};

TEST_F(SyncGridUseTest, ZoomsByKeysBetweenHalfAndDoubleSize) {
  Fill(3);
  ShowWindow(view_);
  const int usualHeight = view_.rowHeight(1);
  const int usualFont = QFontInfo(view_.font()).pixelSize();
  Press(view_, Qt::Key_Plus, Qt::ControlModifier);
  EXPECT_EQ(view_.Zoom(), 110);
  EXPECT_EQ(view_.columnWidth(1), 40);
  Press(view_, Qt::Key_Minus, Qt::ControlModifier);
  Press(view_, Qt::Key_Minus, Qt::ControlModifier | Qt::KeypadModifier);
  EXPECT_EQ(view_.Zoom(), 90);
  for (int i = 0; i < 20; ++i) {
    Press(view_, Qt::Key_Equal, Qt::ControlModifier);
  }
  EXPECT_EQ(view_.Zoom(), 200);
  EXPECT_EQ(view_.columnWidth(3), 74);
  EXPECT_EQ(view_.verticalHeader()->width(), 74);
  EXPECT_GT(view_.rowHeight(1), usualHeight);
  EXPECT_GT(QFontInfo(view_.font()).pixelSize(), usualFont);
  EXPECT_LE(QFontMetrics(view_.font()).horizontalAdvance(QStringLiteral("-12350")), 73);
  for (int i = 0; i < 20; ++i) {
    Press(view_, Qt::Key_Minus, Qt::ControlModifier);
  }
  EXPECT_EQ(view_.Zoom(), 50);
  EXPECT_EQ(view_.columnWidth(1), 18);
  Press(view_, Qt::Key_0, Qt::ControlModifier);
  EXPECT_EQ(view_.Zoom(), 100);
  EXPECT_EQ(view_.columnWidth(1), 37);
  EXPECT_EQ(view_.rowHeight(1), usualHeight);
  EXPECT_EQ(QFontInfo(view_.font()).pixelSize(), usualFont);
}

TEST_F(SyncGridUseTest, ZoomsByTheWheelWithControlAndScrollsWithoutIt) {
  view_.resize(300, 200);
  Fill(51);
  ShowWindow(view_);
  const auto turn = [this](int angle, Qt::KeyboardModifiers modifiers) {
    const QPoint middle = view_.viewport()->rect().center();
    QWheelEvent wheel(middle, view_.viewport()->mapToGlobal(middle), {}, QPoint(0, angle),
                      Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view_.viewport(), &wheel);
  };
  turn(120, Qt::ControlModifier);
  EXPECT_EQ(view_.Zoom(), 110);
  turn(-60, Qt::ControlModifier);
  EXPECT_EQ(view_.Zoom(), 110) << "half a step";
  turn(-60, Qt::ControlModifier);
  EXPECT_EQ(view_.Zoom(), 100);
  EXPECT_EQ(view_.verticalScrollBar()->value(), 0);
  turn(-120, Qt::NoModifier);
  EXPECT_EQ(view_.Zoom(), 100);
  EXPECT_GT(view_.verticalScrollBar()->value(), 0);
}

TEST_F(SyncGridUseTest, KeepsItsZoomForNewColumns) {
  Fill(2);
  view_.SetZoom(200);
  Fill(4);
  EXPECT_EQ(view_.columnWidth(4), 74);
}

TEST_F(SyncGridUseTest, MarksTheHeadersAndTheMirrorOfTheCellUnderTheMouse) {
  Fill(3);
  view_.resize(400, 300);
  ShowWindow(view_);
  PointAt(1, 3);
  EXPECT_EQ(MarkedHeaders(), (std::vector<sync::GridPosition>{{1, 3}}));
  EXPECT_TRUE(IsDashed(3, 1));
  EXPECT_EQ(ColourIn(3, 1, QPoint(3, 3)), QColor(230, 230, 255)) << "its colour stays";
  EXPECT_FALSE(IsDashed(1, 3));
  PointAt(2, 1);
  EXPECT_EQ(MarkedHeaders(), (std::vector<sync::GridPosition>{{2, 1}}));
  EXPECT_FALSE(IsDashed(3, 1));
}

TEST_F(SyncGridUseTest, MarksTheHeadersAndTheMirrorOfTheCurrentCell) {
  Fill(3);
  view_.resize(400, 300);
  ShowWindow(view_);
  view_.setFocus();
  view_.setCurrentIndex(model_.index(1, 1));
  Press(view_, Qt::Key_Right);
  EXPECT_EQ(MarkedHeaders(), (std::vector<sync::GridPosition>{{1, 2}}));
  EXPECT_TRUE(IsDashed(2, 1));
  Press(view_, Qt::Key_Down);
  EXPECT_EQ(MarkedHeaders(), (std::vector<sync::GridPosition>{{2, 2}}));
  model_.SetSize(1, 1);
  QCoreApplication::processEvents();
  EXPECT_EQ(MarkedHeaders(), std::vector<sync::GridPosition>{});
}

TEST_F(SyncGridUseTest, MarksTheCellThatWasPointedAtOrChosenLast) {
  Fill(3);
  view_.resize(400, 300);
  ShowWindow(view_);
  view_.setFocus();
  PointAt(2, 3);
  QTest::mouseClick(view_.viewport(), Qt::LeftButton, Qt::NoModifier,
                    view_.visualRect(model_.index(2, 3)).center());
  Press(view_, Qt::Key_Left);
  EXPECT_EQ(MarkedHeaders(), (std::vector<sync::GridPosition>{{2, 2}}));
  PointAt(1, 3);
  EXPECT_EQ(MarkedHeaders(), (std::vector<sync::GridPosition>{{1, 3}}));
}

TEST_F(SyncGridUseTest, MarksNothingUntilTheKeyboardHasChosenACell) {
  Fill(3);
  view_.resize(400, 300);
  ShowWindow(view_);
  view_.clearFocus();
  view_.setFocus(Qt::TabFocusReason);
  EXPECT_EQ(MarkedHeaders(), std::vector<sync::GridPosition>{});
  Press(view_, Qt::Key_Down);
  EXPECT_EQ(MarkedHeaders(), (std::vector<sync::GridPosition>{{1, 1}}));
}

TEST_F(SyncGridUseTest, MarksTheCellThatComesUnderTheMouse) {
  Fill(51);
  view_.resize(300, 200);
  ShowWindow(view_);
  PointAt(2, 3);
  view_.verticalScrollBar()->setValue(2 * view_.rowHeight(1));
  EXPECT_EQ(MarkedHeaders(), (std::vector<sync::GridPosition>{{4, 3}}));
  view_.verticalScrollBar()->setValue(0);
  view_.SetZoom(200);
  EXPECT_EQ(MarkedHeaders().size(), 1U);
  EXPECT_NE(MarkedHeaders(), (std::vector<sync::GridPosition>{{2, 3}}));
}

TEST_F(SyncGridUseTest, NarrowsTextsThatAreTooWide) {
  model_.BeginRedraw();
  model_.SetSize(2, 2);
  for (int i = 0; i < 2; ++i) {
    model_.SetColumnWidth(i, sync::kGridColumnTwips);
    for (int j = 0; j < 2; ++j) {
      model_.SetText(i, j, "205[15]888");
      model_.SetCentred(i, j);
    }
  }
  model_.SetBackground(1, 1, sync::Colour{0xFFE6E6});
  model_.EndRedraw();
  view_.resize(300, 200);
  ShowWindow(view_);
  for (const int zoom : {50, 100, 200}) {
    view_.SetZoom(zoom);
    QCoreApplication::processEvents();
    const QImage cell = view_.viewport()->grab(view_.visualRect(model_.index(1, 1))).toImage();
    const auto isEmpty = [&cell](int x) {
      for (int y = 0; y < cell.height() - 1; ++y) {
        if (cell.pixelColor(x, y) != QColor(230, 230, 255)) {
          return false;
        }
      }
      return true;
    };
    EXPECT_TRUE(isEmpty(0)) << zoom;
    EXPECT_TRUE(isEmpty(cell.width() - 1)) << zoom;
    EXPECT_FALSE(isEmpty(cell.width() / 4) && isEmpty(cell.width() / 4 + 1)) << zoom;
  }
}

TEST_F(SyncGridUseTest, SetsMeasuredCellsApartWithoutChangingTheirColour) {
  Fill(3);
  view_.resize(400, 300);
  ShowWindow(view_);
  view_.ShowMeasured({{1, 2}, {2, 3}});
  for (const auto& [row, column] : {std::pair{1, 2}, {2, 3}}) {
    EXPECT_EQ(ColourIn(row, column, QPoint(8, 1)), QColor(Qt::black));
    EXPECT_EQ(ColourIn(row, column, QPoint(1, 4)), QColor(230, 230, 255));
    EXPECT_EQ(Data(row, column, Qt::BackgroundRole).value<QBrush>().color(), QColor(230, 230, 255));
  }
  EXPECT_EQ(ColourIn(1, 3, QPoint(8, 1)), QColor(230, 230, 255));
  view_.ShowMeasured({});
  EXPECT_EQ(ColourIn(1, 2, QPoint(8, 1)), QColor(230, 230, 255));
}

TEST_F(SyncGridUseTest, SaysWhatItWaitsForWhileItIsEmpty) {
  view_.SetEmptyText(QStringLiteral("Waiting."));
  view_.resize(400, 300);
  ShowWindow(view_);
  const auto hasText = [this] {
    const QImage picture = view_.viewport()->grab().toImage();
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) {
        if (picture.pixelColor(x, y) == view_.palette().color(QPalette::Text)) {
          return true;
        }
      }
    }
    return false;
  };
  EXPECT_TRUE(hasText());
  EXPECT_EQ(view_.accessibleDescription(), "Waiting.");
  model_.SetSize(2, 2);
  QCoreApplication::processEvents();
  EXPECT_FALSE(hasText());
  EXPECT_EQ(view_.accessibleDescription(), "");
  model_.SetSize(1, 1);
  QCoreApplication::processEvents();
  EXPECT_TRUE(hasText());
  EXPECT_EQ(view_.accessibleDescription(), "Waiting.");
}

TEST_F(SyncGridUseTest, CopiesTheSelectionOrElseTheWholeGrid) {
  Fill(2);
  ShowWindow(view_);
  const QString whole = QStringLiteral("0\t1\t2\n100\t101\t102\n200\t201\t202\n");
  EXPECT_EQ(Copied(), whole);
  view_.setFocus();
  view_.setCurrentIndex(model_.index(1, 1));
  Press(view_, Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_EQ(Copied(), "101\t102\n");
  const auto click = [this](int row, int column, Qt::KeyboardModifiers modifiers) {
    QTest::mouseClick(view_.viewport(), Qt::LeftButton, modifiers,
                      view_.visualRect(model_.index(row, column)).center());
  };
  click(1, 2, Qt::NoModifier);
  EXPECT_EQ(Copied(), "102\n");
  click(2, 1, Qt::ControlModifier);
  EXPECT_EQ(Copied(), "\t102\n201\t\n");
  Press(view_, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(Copied(), whole);
  view_.clearSelection();
  EXPECT_EQ(Copied(), whole);
}

TEST_F(SyncGridUseTest, OpensItsContextMenuByShiftAndF10) {
  QAction entry(QStringLiteral("&Copy"));
  view_.addAction(&entry);
  view_.setContextMenuPolicy(Qt::ActionsContextMenu);
  const QSignalSpy chosen(&entry, &QAction::triggered);
  ShowWindow(view_);
  for (const int antennas : {0, 2}) {
    Fill(antennas);
    QTimer::singleShot(50, [] {
      auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      ASSERT_NE(menu, nullptr);
      Press(*menu, Qt::Key_C);
    });
    Press(view_, Qt::Key_F10, Qt::ShiftModifier);
  }
  EXPECT_EQ(chosen.count(), 2);
}

}  // namespace
}  // namespace kelvara::test
