#include "app/SessionsMenu.h"

#include <gtest/gtest.h>

#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>
#include <set>

#include "FrmMainRig.h"

namespace kelvara::test {
namespace {

/// The access key of a caption.
QChar AccessKey(const QString& caption) { return caption[caption.indexOf(u'&') + 1].toUpper(); }

/// The names of the entries of a menu, in order, "-" for a separator and with "!" where disabled.
std::string Names(const QMenu& menu) {
  std::string names;
  for (const QAction* const entry : menu.actions()) {
    names += entry->isSeparator()       ? "-"
             : entry->menu() != nullptr ? entry->menu()->objectName().toStdString()
                                        : entry->objectName().toStdString();
    names += entry->isEnabled() ? " " : "! ";
  }
  return names;
}

TEST(SessionsMenu, HasItsEntriesOfWhichThoseWithoutACommandAreDisabled) {
  const FrmMainRig rig;
  EXPECT_EQ(Names(Find<QMenu>(rig.window, "mnuSessions")),
            "mnuOpenSession! mnuRecentSessions! - mnuUndoClear! mnuExportResults ");
}

TEST(SessionsMenu, AccessKeysClashWithNoneBesideThem) {
  const FrmMainRig rig;
  std::multiset<QChar> bar;
  for (const QAction* const menu : rig.window.menuBar()->actions()) {
    bar.insert(AccessKey(menu->text()));
  }
  for (const char* const button : {"CmdSurvey", "CmdSessions"}) {
    bar.insert(AccessKey(Find<QPushButton>(rig.window, button).text()));
  }
  EXPECT_EQ(bar.size(), std::set<QChar>(bar.begin(), bar.end()).size());
  std::set<QChar> entries;
  for (const QAction* const entry : Find<QMenu>(rig.window, "mnuSessions").actions()) {
    if (!entry->isSeparator()) {
      EXPECT_TRUE(entries.insert(AccessKey(entry->text())).second) << entry->text().toStdString();
    }
  }
}

TEST(SessionsMenu, UndoIsEnabledWhileClearedResultsCanBeRestored) {
  FrmMainRig rig;
  rig.Open();
  rig.port.Receive("B");
  const QAction& undo = rig.Entry("mnuUndoClear");
  rig.Choose("mnuClearGrid");
  EXPECT_FALSE(undo.isEnabled()) << "nothing was cleared";
  rig.TakeReport();
  rig.port.Receive("B");
  rig.Choose("mnuClearGrid");
  EXPECT_TRUE(undo.isEnabled());
  rig.Choose("mnuUndoClear");
  EXPECT_FALSE(undo.isEnabled());
  EXPECT_EQ(rig.Panel(3), "Reports: 1");
  EXPECT_EQ(rig.Cell(1, 2), "7");
}

TEST(SessionsMenu, OpensByItsAccessKeyAndRunsWhatIsChosen) {
  FrmMainRig rig;
  int opened = 0;
  rig.window.Sessions().SetOpenSession([&opened] { ++opened; });
  rig.Open();
  auto& menu = Find<QMenu>(rig.window, "mnuSessions");
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &look, [&] {
    if (menu.isVisible()) {
      look.stop();
      Press(menu, Qt::Key_O);
    }
  });
  look.start(10);
  Press(rig.window, Qt::Key_I, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&opened] { return opened == 1; }));
}

TEST(SessionsMenu, RecentSessionsAreListedEachTimeTheyAreShown) {
  FrmMainRig rig;
  int listed = 0;
  rig.window.Sessions().SetRecentSessions(
      [&listed](QMenu& menu) { menu.addAction(QString::number(++listed)); });
  auto& recent = Find<QMenu>(rig.window, "mnuRecentSessions");
  EXPECT_TRUE(recent.menuAction()->isEnabled());
  for (const char* const entry : {"1", "2"}) {
    emit recent.aboutToShow();
    ASSERT_EQ(recent.actions().size(), 1);
    EXPECT_EQ(recent.actions().constFirst()->text(), entry);
  }
}

TEST(SessionsMenu, ACommandThatFailsBeepsOnce) {
  FrmMainRig rig;
  rig.window.Sessions().SetOpenSession(
      [] { throw base::Fault(base::FaultKind::File, "no chooser"); });
  rig.Choose("mnuOpenSession");
  EXPECT_EQ(rig.beeper.count, 1);
}

TEST(SessionsMenu, ItsButtonFitsBesideTheMenusInTheSmallestWindow) {
  FrmMainRig rig;
  rig.Open();
  rig.window.resize(rig.window.minimumSize());
  QCoreApplication::processEvents();
  const auto& sessions = Find<QPushButton>(rig.window, "CmdSessions");
  const auto& survey = Find<QPushButton>(rig.window, "CmdSurvey");
  const QMenuBar& bar = *rig.window.menuBar();
  EXPECT_GE(sessions.width(), sessions.minimumSizeHint().width());
  EXPECT_LE(survey.geometry().right(), sessions.x());
  EXPECT_LE(sessions.mapTo(&bar, sessions.rect().bottomRight()).x(), bar.width());
  EXPECT_LT(bar.actionGeometry(bar.actions().constLast()).right(),
            Find<QWidget>(rig.window, "MenuCorner").x());
}

}  // namespace
}  // namespace kelvara::test
