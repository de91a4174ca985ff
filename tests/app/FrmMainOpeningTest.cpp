#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QTest>
#include <QUrl>

#include "app/FrmMainRig.h"
#include "support/MemorySessionFolder.h"
#include "support/RecordedReports.h"

namespace kelvara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FrmMainOpeningTest : public ::testing::Test, protected FrmMainRig {
 protected:
  FrmMainOpeningTest() {
    window.SetSessionOpening([this](const std::string& path) { started.push_back(path); }, folder);
  }

  void AddJournal(const std::string& name, const std::string& text) {
    folder.files[name] = text;
    files.files[folder.PathOf(name)] = text;
  }

  QMenu& Recent() { return Find<QMenu>(window, "mnuRecentSessions"); }

  /// Drags something over a control of the window and drops it. Returns whether it was taken.
  static bool Drop(QWidget& control, const QMimeData& data) {
    // Qt itself passes what a control does not take to the one that holds it.
    for (QWidget* target = &control; target != nullptr; target = target->parentWidget()) {
      QDragEnterEvent enter(QPoint(1, 1), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                            Qt::NoModifier);
      enter.ignore();
      if (target->acceptDrops() && QCoreApplication::sendEvent(target, &enter) &&
          enter.isAccepted()) {
        QDropEvent drop(QPointF(1, 1), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                        Qt::NoModifier);
        QCoreApplication::sendEvent(target, &drop);
        return drop.dropAction() == Qt::CopyAction;
      }
    }
    return false;
  }

  MemorySessionFolder folder;
  std::vector<std::string> started;
};

TEST_F(FrmMainOpeningTest, FilesThatAreDroppedAreOpened) {
  Open();
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(QStringLiteral("/a b.trace")),
                QUrl(QStringLiteral("https://example.org/c")),
                QUrl::fromLocalFile(QStringLiteral("/d.trace"))});
  EXPECT_TRUE(Drop(*Grid().viewport(), data));
  ASSERT_EQ(started.size(), 2U);
  EXPECT_THAT(started[0], ::testing::EndsWith("a b.trace"));
  EXPECT_THAT(started[1], ::testing::EndsWith("d.trace"));
  Choose("mnuDisplayLogOn");
  EXPECT_TRUE(Drop(*TextLog().viewport(), data));
  EXPECT_EQ(started.size(), 4U);
  EXPECT_EQ(TextLog().toPlainText(), "");
}

TEST_F(FrmMainOpeningTest, OtherThingsThatAreDroppedAreRefused) {
  Open();
  QMimeData text;
  text.setText(QStringLiteral("text"));
  EXPECT_FALSE(Drop(*Grid().viewport(), text));
  QMimeData address;
  address.setUrls({QUrl(QStringLiteral("https://example.org/c"))});
  EXPECT_FALSE(Drop(*Grid().viewport(), address));
  EXPECT_THAT(started, IsEmpty());
}

TEST_F(FrmMainOpeningTest, RecentSessionsAreCountedWhileTheMenuIsOpenAndOpened) {
  AddJournal("2026-11-20-090000.trace", "\x01rfps\x02" + OneNeighbourReport(1, 2, 3));
  AddJournal("2026-11-21-112800.trace", "\x01rfps\x02half a report");
  Open();
  Recent().popup(window.pos());
  EXPECT_TRUE(QTest::qWaitFor([this] {
    return Recent().actions().constLast()->text().endsWith(QStringLiteral("2 antennas"));
  }));
  ASSERT_EQ(Recent().actions().size(), 2);
  EXPECT_EQ(Recent().actions()[0]->text(), "2026-11-21 11:28, no reports");
  EXPECT_FALSE(Recent().actions()[0]->isEnabled());
  EXPECT_EQ(Recent().actions()[1]->text(), "2026-11-20 09:00, 1 report, 2 antennas");
  EXPECT_TRUE(Recent().isVisible());
  Recent().setActiveAction(Recent().actions()[1]);
  Press(Recent(), Qt::Key_Return);
  EXPECT_TRUE(QTest::qWaitFor([this] { return !started.empty(); }));
  EXPECT_THAT(started, ElementsAre("sessions/2026-11-20-090000.trace"));
}

TEST_F(FrmMainOpeningTest, WithoutSessionsTheMenuSaysSo) {
  emit Recent().aboutToShow();
  ASSERT_EQ(Recent().actions().size(), 1);
  EXPECT_EQ(Recent().actions()[0]->text(), "No other sessions");
  EXPECT_FALSE(Recent().actions()[0]->isEnabled());
}

TEST_F(FrmMainOpeningTest, AMenuThatIsClosedStopsCounting) {
  AddJournal("2026-11-20-090000.trace", "\x01rfps\x02" + OneNeighbourReport(1, 2, 3));
  emit Recent().aboutToShow();
  emit Recent().aboutToHide();
  QTest::qWait(50);
  EXPECT_EQ(Recent().actions()[0]->text(), "2026-11-20 09:00");
}

}  // namespace
}  // namespace kelvara::test
