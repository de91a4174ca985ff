#include "sync/SyncGridView.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QScrollBar>
#include <QSignalSpy>

#include "sync/SyncGridViewRig.h"

namespace kelvara::test {
namespace {

class SyncGridViewTest : public SyncGridViewRig {};

TEST_F(SyncGridViewTest, HoldsTextBackgroundAndAlignmentInTheUsualRoles) {
  Fill(2);
  EXPECT_EQ(Data(0, 0, Qt::DisplayRole).toString(), "0");
  EXPECT_EQ(Data(1, 2, Qt::DisplayRole).toString(), "102");
  EXPECT_EQ(Data(1, 2, Qt::BackgroundRole).value<QBrush>().color(), QColor(230, 230, 255));
  EXPECT_EQ(Data(1, 2, Qt::ForegroundRole).value<QBrush>().color(), QColor(Qt::black));
  EXPECT_EQ(Data(1, 2, Qt::TextAlignmentRole).toInt(), int{Qt::AlignCenter});
  EXPECT_FALSE(Data(0, 1, Qt::BackgroundRole).isValid());
}

TEST_F(SyncGridViewTest, GivesColumnsTheirWidthInTwips) {
  Fill(3);
  EXPECT_EQ(view_.columnWidth(1), 37) << "550 twips at 96 dots per inch";
  EXPECT_EQ(view_.columnWidth(3), 37);
  EXPECT_EQ(view_.verticalHeader()->width(), 37);
}

TEST_F(SyncGridViewTest, HasAFontInWhichSixCharactersFit) {
  const QFontMetrics metrics(view_.font());
  for (const char* const text : {"-12350", "63[15]", "3F[15]", "-99999"}) {
    EXPECT_LE(metrics.horizontalAdvance(QString::fromLatin1(text)), 36) << text;
  }
}

TEST_F(SyncGridViewTest, FollowsTheSizeOfTheProgramsFont) {
  const auto pixels = [](const QWidget& widget) { return QFontInfo(widget.font()).pixelSize(); };
  const QWidget& header = *view_.horizontalHeader();
  const int usual = pixels(view_);
  ASSERT_EQ(pixels(header), usual);
  {
    const UseFont small(0.6);
    QCoreApplication::processEvents();
    EXPECT_LT(pixels(view_), usual);
    EXPECT_LT(pixels(header), usual);
    const UseFont large(4);
    QCoreApplication::processEvents();
    EXPECT_GE(pixels(view_), usual) << "as large as the columns allow";
    EXPECT_LE(QFontMetrics(view_.font()).horizontalAdvance(QStringLiteral("-12350")), 36);
  }
  QCoreApplication::processEvents();
  EXPECT_EQ(pixels(view_), usual);
  EXPECT_EQ(pixels(header), usual);
}

TEST_F(SyncGridViewTest, KeepsHeaderRowAndColumnInPlaceWhileScrolling) {
  view_.resize(300, 200);
  Fill(51);
  ShowWindow(view_);
  view_.horizontalScrollBar()->setValue(view_.horizontalScrollBar()->maximum());
  view_.verticalScrollBar()->setValue(view_.verticalScrollBar()->maximum());
  EXPECT_TRUE(view_.isRowHidden(0));
  EXPECT_TRUE(view_.isColumnHidden(0));
  EXPECT_EQ(model_.headerData(51, Qt::Horizontal, Qt::DisplayRole).toString(), "51");
  EXPECT_EQ(model_.headerData(51, Qt::Vertical, Qt::DisplayRole).toString(), "5100");
  EXPECT_TRUE(view_.horizontalHeader()->isVisible());
  EXPECT_TRUE(view_.verticalHeader()->isVisible());
  EXPECT_EQ(view_.findChild<QLabel*>()->text(), "0") << "the corner";
}

TEST_F(SyncGridViewTest, NotifiesViewsOncePerRedraw) {
  Fill(4);
  const QSignalSpy changed(&model_, &QAbstractItemModel::dataChanged);
  model_.BeginRedraw();
  model_.SetText(1, 1, "new");
  model_.SetText(3, 4, "new");
  EXPECT_EQ(changed.count(), 0);
  model_.EndRedraw();
  ASSERT_EQ(changed.count(), 1);
  EXPECT_EQ(changed[0][0].toModelIndex(), model_.index(1, 1));
  EXPECT_EQ(changed[0][1].toModelIndex(), model_.index(3, 4));
}

TEST_F(SyncGridViewTest, NotifiesViewsOfANestedRedrawAtItsEnd) {
  Fill(4);
  const QSignalSpy changed(&model_, &QAbstractItemModel::dataChanged);
  model_.BeginRedraw();
  model_.SetText(1, 1, "new");
  model_.BeginRedraw();
  model_.SetText(2, 2, "new");
  model_.EndRedraw();
  ASSERT_EQ(changed.count(), 1);
  EXPECT_EQ(changed[0][0].toModelIndex(), model_.index(1, 1));
  EXPECT_EQ(changed[0][1].toModelIndex(), model_.index(2, 2));
  model_.SetText(3, 4, "new");
  model_.EndRedraw();
  ASSERT_EQ(changed.count(), 2);
  EXPECT_EQ(changed[1][0].toModelIndex(), model_.index(3, 4));
}

TEST_F(SyncGridViewTest, PaintsNothingDuringARedrawThatChangesTheSize) {
  class PaintCounter : public QObject {
   public:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
      count += event->type() == QEvent::Paint ? 1 : 0;
      return false;
    }
    int count = 0;
  };
  PaintCounter paints;
  view_.viewport()->installEventFilter(&paints);
  view_.horizontalHeader()->viewport()->installEventFilter(&paints);
  view_.resize(400, 300);
  Fill(3);
  ShowWindow(view_);
  for (const int antennas : {4, 9, 2}) {
    paints.count = 0;
    model_.BeginRedraw();
    model_.SetSize(antennas + 1, antennas + 1);
    for (int i = 1; i <= antennas; ++i) {
      model_.SetText(i, i, std::to_string(antennas));
      QCoreApplication::processEvents();
    }
    EXPECT_EQ(paints.count, 0) << antennas;
    model_.EndRedraw();
    QCoreApplication::processEvents();
    EXPECT_GT(paints.count, 0) << antennas;
    EXPECT_TRUE(view_.updatesEnabled());
  }
}

TEST_F(SyncGridViewTest, DoesNotNotifyViewsOfARedrawThatChangesNothing) {
  Fill(4);
  const QSignalSpy changed(&model_, &QAbstractItemModel::dataChanged);
  Fill(4);
  EXPECT_EQ(changed.count(), 0);
}

TEST_F(SyncGridViewTest, KeepsTheCellsThatRemainWhenItGrowsAndShrinks) {
  Fill(2);
  model_.SetSize(5, 5);
  EXPECT_EQ(model_.Text(2, 2), "202");
  EXPECT_EQ(model_.Text(4, 4), "");
  model_.SetSize(1, 1);
  model_.SetSize(3, 3);
  EXPECT_EQ(model_.Text(0, 0), "0");
  EXPECT_EQ(model_.Text(2, 2), "");
  EXPECT_THROW(model_.SetText(3, 0, ""), std::exception);
}

TEST_F(SyncGridViewTest, ShowsNewRowsAndColumnsWithTheirWidths) {
  Fill(2);
  model_.SetSize(1, 1);
  Fill(4);
  EXPECT_TRUE(view_.isRowHidden(0));
  EXPECT_TRUE(view_.isColumnHidden(0));
  EXPECT_FALSE(view_.isColumnHidden(4));
  EXPECT_EQ(view_.columnWidth(4), 37);
}

}  // namespace
}  // namespace kelvara::test
