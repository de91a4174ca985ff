#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QHelpEvent>
#include <QToolTip>
#include <algorithm>
#include <cstdlib>

#include "survey/FrmSurveyRig.h"
#include "survey/StatusSign.h"
#include "survey/Survey.h"
#include "survey/SurveyRows.h"

namespace kelvara::test {
namespace {

TEST(FrmSurvey, TheButtonIsFlatAndInTheMenuBarsRightCorner) {
  const FrmSurveyRig rig;
  const auto& button = Find<QPushButton>(rig.window, "CmdSurvey");
  EXPECT_TRUE(button.isFlat());
  EXPECT_EQ(rig.window.menuBar()->cornerWidget(Qt::TopRightCorner), button.parentWidget());
  QMenuBar plain;
  plain.addMenu("File");
  EXPECT_EQ(rig.window.menuBar()->sizeHint().height(), plain.sizeHint().height());
}

TEST(FrmSurvey, OpensOnceHoweverOftenItIsAskedFor) {
  FrmSurveyRig rig;
  Click(Find<QPushButton>(rig.window, "CmdSurvey"));
  ASSERT_TRUE(rig.Survey().isVisible());
  EXPECT_FALSE(rig.Survey().isModal());
  rig.Survey().showMinimized();
  Click(Find<QPushButton>(rig.window, "CmdSurvey"));
  EXPECT_FALSE(rig.Survey().isMinimized());
  EXPECT_EQ(rig.window.findChildren<survey::FrmSurvey*>().size(), 1);
}

TEST(FrmSurvey, WithoutAntennasSaysHowToBegin) {
  FrmSurveyRig rig;
  rig.OpenSurvey();
  EXPECT_EQ(rig.Table().model()->rowCount(), 0);
  EXPECT_EQ(rig.Pairs().model()->rowCount(), 0);
  EXPECT_EQ(rig.Reference().count(), 1);
  EXPECT_EQ(rig.Text("Label4").substr(0, 15), "No antennas yet");
  EXPECT_NE(rig.Text("SurveyNext").find("the first reports"), std::string::npos);
  for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right}) {
    rig.Network().setFocus();
    Press(rig.Survey(), key);
  }
  Click(rig.Network());
}

TEST(FrmSurvey, OneAntennaHasNoLength) {
  FrmSurveyRig rig;
  rig.Fill(SyntheticSite({3.0}));
  rig.OpenSurvey();
  EXPECT_EQ(rig.Table().TableText(),
            "RPN\tPairs\tReadings\tLength, m\tError, m\tAA Sync\tReport, m\tStatus\n"
            "01\t0\t0\t-\t-\t-\t0\tunchecked\n");
  EXPECT_NE(rig.Text("SurveyNext").find("a second antenna"), std::string::npos);
}

TEST(FrmSurvey, ListsEveryAntennaAndThePairsOfTheChosenOne) {
  FrmSurveyRig rig;
  rig.Fill(DenseSite(6, true));
  rig.OpenSurvey();
  EXPECT_EQ(FrmSurveyRig::Column(rig.Table(), 0), "01 02 03 04 05 06");
  EXPECT_EQ(FrmSurveyRig::Column(rig.Table(), 1), "5 5 5 5 5 5");
  EXPECT_EQ(FrmSurveyRig::Column(rig.Pairs(), 0), "02 03 04 05 06");
  rig.Table().setFocus();
  Press(rig.Survey(), Qt::Key_Down);
  EXPECT_EQ(FrmSurveyRig::Column(rig.Pairs(), 0), "01 03 04 05 06");
  EXPECT_EQ(rig.Text("Label7"), "&Pairs of antenna 02:");
  EXPECT_EQ(rig.Pairs().model()->index(2, 5).data(), "left out");
  // The same pair from its other end has the opposite residual.
  const int residual = rig.Pairs().model()->index(2, 3).data().toInt();
  EXPECT_GT(std::abs(residual), 200);
  Press(rig.Survey(), Qt::Key_Down);
  Press(rig.Survey(), Qt::Key_Down);
  EXPECT_EQ(rig.Pairs().model()->index(1, 3).data().toInt(), -residual);
}

TEST(FrmSurvey, ANetworkInPartsSaysSo) {
  FrmSurveyRig rig;
  SyntheticSite site({0, 5, 9, 3, 4});
  site.HearBoth(0, 1, 4);
  site.HearBoth(1, 2, 4);
  site.HearBoth(0, 2, 4);
  site.HearBoth(3, 4, 4);
  rig.Fill(site);
  rig.OpenSurvey();
  EXPECT_NE(rig.Text("Label4").find("in 2 parts"), std::string::npos);
  EXPECT_EQ(rig.Table().model()->index(4, 8).data(), "apart, from 04");
  EXPECT_NE(rig.Network().accessibleDescription().indexOf("2 parts"), -1);
}

TEST(FrmSurvey, SortsByANumberAndKeepsTheOrderAndTheChoice) {
  FrmSurveyRig rig;
  rig.Fill(DenseSite(12));
  rig.OpenSurvey();
  rig.Table().Choose(7);
  QHeaderView& header = *rig.Table().horizontalHeader();
  QTest::mouseClick(header.viewport(), Qt::LeftButton, {},
                    {header.sectionViewportPosition(3) + 10, header.height() / 2});
  const auto lengths = [&rig] {
    std::vector<int> values;
    for (int row = 0; row < rig.Table().model()->rowCount(); ++row) {
      values.push_back(rig.Table().model()->index(row, 3).data().toInt());
    }
    return values;
  };
  std::vector<int> sorted = lengths();
  EXPECT_TRUE(std::is_sorted(sorted.begin(), sorted.end()));
  EXPECT_EQ(rig.Table().ChosenId(), 7);
  rig.Fill(DenseSite(14));
  rig.window.UpdateSyncGrid();
  QCoreApplication::processEvents();
  sorted = lengths();
  ASSERT_EQ(sorted.size(), 14U);
  EXPECT_TRUE(std::is_sorted(sorted.begin(), sorted.end()));
  EXPECT_EQ(rig.Table().ChosenId(), 7);
  EXPECT_EQ(rig.Table().currentIndex().siblingAtColumn(0).data(), "07");
}

TEST(FrmSurvey, FollowsTheRedrawsOfTheGridWithOneSurveyEach) {
  FrmSurveyRig rig;
  rig.OpenSurvey();
  EXPECT_EQ(rig.Survey().SurveyCount(), 1);
  for (int redraw = 2; redraw < 5; ++redraw) {
    rig.TakeReport();
    QCoreApplication::processEvents();
    EXPECT_EQ(rig.Survey().SurveyCount(), redraw - 1) << "a report alone is no redraw";
    rig.window.UpdateSyncGrid();
    QCoreApplication::processEvents();
    EXPECT_EQ(rig.Survey().SurveyCount(), redraw);
    EXPECT_EQ(FrmSurveyRig::Column(rig.Table(), 0), "01 06 02");
    EXPECT_EQ(rig.Table().model()->index(0, 2).data().toInt(), 2 * (redraw - 1));
  }
}

TEST(FrmSurvey, AClearWithItsRedrawIsOneSurvey) {
  FrmSurveyRig rig;
  rig.Fill(DenseSite(6));
  rig.OpenSurvey();
  rig.window.Live().mnuClearGrid_Click();
  QCoreApplication::processEvents();
  EXPECT_EQ(rig.Survey().SurveyCount(), 2);
  EXPECT_EQ(rig.Table().model()->rowCount(), 0);
  EXPECT_EQ(rig.Pairs().model()->rowCount(), 0);
}

TEST(FrmSurvey, MakesNoSurveyWhileItIsHidden) {
  FrmSurveyRig rig;
  rig.Fill(DenseSite(6));
  rig.OpenSurvey();
  Press(rig.Survey(), Qt::Key_Escape);
  ASSERT_TRUE(Closes(rig.Survey()));
  rig.Fill(DenseSite(7));
  rig.window.UpdateSyncGrid();
  rig.Choose("mnuRpnHex");
  QCoreApplication::processEvents();
  EXPECT_EQ(rig.Survey().SurveyCount(), 1);
  rig.OpenSurvey();
  EXPECT_EQ(rig.Survey().SurveyCount(), 2);
  EXPECT_EQ(rig.Table().model()->rowCount(), 7);
}

TEST(FrmSurvey, ShowsRpnsInTheChosenBaseWithoutAnotherSurvey) {
  FrmSurveyRig rig;
  rig.Fill(SyntheticSite({0, 4}, {10, 31}));
  rig.OpenSurvey();
  rig.Choose("mnuRpnHex");
  QCoreApplication::processEvents();
  EXPECT_EQ(FrmSurveyRig::Column(rig.Table(), 0), "0A 1F");
  EXPECT_EQ(rig.Reference().itemText(2), "1F");
  EXPECT_EQ(rig.Survey().SurveyCount(), 1);
  rig.Choose("mnuRpnDecimal");
  QCoreApplication::processEvents();
  EXPECT_EQ(FrmSurveyRig::Column(rig.Table(), 0), "10 31");
}

TEST(FrmSurvey, AReferenceAndItsLengthShiftAllLengths) {
  FrmSurveyRig rig;
  rig.Fill(SyntheticSite({10, 0, 4}));
  for (const auto& [a, b] : {std::pair{0, 1}, {1, 2}, {0, 2}}) {
    rig.Model().SetCell(a, b, Cell(4 * (a == 0 ? 10 - 4 * (b / 2) : -4), 4, 10, -4));
  }
  rig.OpenSurvey();
  EXPECT_FALSE(rig.Length().isEnabled());
  EXPECT_EQ(FrmSurveyRig::Column(rig.Table(), 3), "290 0 116");
  rig.ChooseReference(3);
  EXPECT_EQ(FrmSurveyRig::Column(rig.Table(), 3), "174 -116 0");
  Fill(rig.Length(), "1000");
  QCoreApplication::processEvents();
  EXPECT_EQ(FrmSurveyRig::Column(rig.Table(), 3), "1174 884 1000");
  EXPECT_NE(rig.Text("Label4").find("the length given for 03"), std::string::npos);
  rig.ChooseReference(0);
  EXPECT_EQ(FrmSurveyRig::Column(rig.Table(), 3), "290 0 116");
}

TEST(FrmSurvey, ALengthThatIsNoNumberIsShownAsSuchAndTheLastOneStays) {
  FrmSurveyRig rig;
  rig.Fill(DenseSite(4));
  rig.OpenSurvey();
  rig.ChooseReference(1);
  Fill(rig.Length(), "130");
  QCoreApplication::processEvents();
  const std::string lengths = FrmSurveyRig::Column(rig.Table(), 3);
  EXPECT_TRUE(rig.Length().property("valid").toBool());
  EXPECT_TRUE(rig.Length().accessibleDescription().isEmpty());
  for (const char wrong : {'x', ',', '-'}) {
    Press(rig.Survey(), Qt::Key_End);
    Type(rig.Survey(), std::string(1, wrong));
    QCoreApplication::processEvents();
    EXPECT_FALSE(rig.Length().property("valid").toBool()) << wrong;
    EXPECT_FALSE(rig.Length().accessibleDescription().isEmpty());
    EXPECT_TRUE(rig.Length().actions().constFirst()->isVisible());
    EXPECT_EQ(FrmSurveyRig::Column(rig.Table(), 3), lengths);
    Press(rig.Survey(), Qt::Key_Backspace);
    EXPECT_TRUE(rig.Length().property("valid").toBool());
    EXPECT_FALSE(rig.Length().actions().constFirst()->isVisible());
  }
}

TEST(FrmSurvey, AReferenceThatAClearRemovesIsTheShortestAgain) {
  FrmSurveyRig rig;
  rig.Fill(DenseSite(4));
  rig.OpenSurvey();
  rig.ChooseReference(4);
  ASSERT_EQ(rig.Reference().currentText(), "04");
  rig.window.Live().mnuClearGrid_Click();
  QCoreApplication::processEvents();
  EXPECT_EQ(rig.Reference().currentText(), "shortest antenna");
  EXPECT_FALSE(rig.Length().isEnabled());
  rig.Fill(DenseSite(4));
  rig.window.UpdateSyncGrid();
  QCoreApplication::processEvents();
  EXPECT_EQ(rig.Reference().currentText(), "shortest antenna");
  EXPECT_EQ(rig.Reference().count(), 5);
}

TEST(FrmSurvey, CopiesATableAsTabSeparatedText) {
  FrmSurveyRig rig;
  rig.Fill(DenseSite(3));
  rig.OpenSurvey();
  rig.Table().setFocus();
  Press(rig.Survey(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), rig.Table().TableText());
  EXPECT_EQ(QApplication::clipboard()->text().count(u'\t'), 4 * 7);
  EXPECT_EQ(QApplication::clipboard()->text().count(u'\n'), 4);
  EXPECT_EQ(rig.Pairs().contextMenuPolicy(), Qt::ActionsContextMenu);
  rig.Pairs().actions().constFirst()->trigger();
  EXPECT_EQ(QApplication::clipboard()->text(), rig.Pairs().TableText());
}

TEST(FrmSurvey, AnAntennaIsChosenInThePictureWithMouseAndKeys) {
  FrmSurveyRig rig;
  rig.Fill(DenseSite(4));
  rig.OpenSurvey();
  rig.Network().setFocus();
  Press(rig.Survey(), Qt::Key_Right);
  EXPECT_EQ(rig.Table().ChosenId(), 2);
  Press(rig.Survey(), Qt::Key_Left);
  Press(rig.Survey(), Qt::Key_Left);
  EXPECT_EQ(rig.Table().ChosenId(), 4);
  // The first antenna is at the top, the third at the bottom of the circle.
  const QPoint middle(rig.Network().width() / 2, rig.Network().height() / 2);
  int chosen = 0;
  for (int x = 0; x < rig.Network().width() && chosen != 3; x += 4) {
    for (int y = middle.y(); y < rig.Network().height() && chosen != 3; y += 4) {
      QTest::mouseClick(&rig.Network(), Qt::LeftButton, {}, {x, y});
      chosen = rig.Table().ChosenId();
    }
  }
  EXPECT_EQ(chosen, 3);
}

TEST(FrmSurvey, EveryControlIsReachedByTabAndByItsAccessKey) {
  FrmSurveyRig rig;
  rig.Fill(DenseSite(4));
  survey::FrmSurvey& window = rig.OpenSurvey();
  rig.ChooseReference(1);
  EXPECT_EQ(TabOrder(window),
            "ComboReference TxtReferenceLength SurveyTable SurveyNetwork SurveyPairs CmdSaveSurvey "
            "CmdCompare CmdClose");
  for (const auto& [key, name] : {std::pair{Qt::Key_F, "ComboReference"},
                                  {Qt::Key_L, "TxtReferenceLength"},
                                  {Qt::Key_A, "SurveyTable"},
                                  {Qt::Key_N, "SurveyNetwork"},
                                  {Qt::Key_P, "SurveyPairs"}}) {
    Press(window, key, Qt::AltModifier);
    EXPECT_EQ(FocusName(), name);
  }
  Press(window, Qt::Key_C, Qt::AltModifier);
  EXPECT_TRUE(Closes(window));
}

TEST(FrmSurvey, EveryControlHasANameForScreenReaders) {
  FrmSurveyRig rig;
  rig.Fill(DenseSite(6, true));
  survey::FrmSurvey& window = rig.OpenSurvey();
  for (const char* const name :
       {"ComboReference", "TxtReferenceLength", "SurveyTable", "SurveyNetwork", "SurveyPairs",
        "CmdSaveSurvey", "CmdCompare", "CmdClose"}) {
    EXPECT_FALSE(Find<QWidget>(window, name).accessibleName().isEmpty()) << name;
  }
  EXPECT_NE(rig.Network().accessibleDescription().indexOf("Suspect: 02 with 04"), -1);
}

TEST(FrmSurvey, TheGridsToolTipNamesASuspectPair) {
  FrmSurveyRig rig;
  rig.Fill(DenseSite(6, true));
  rig.window.UpdateSyncGrid();
  const QRect cell = rig.Grid().visualRect(rig.Grid().model()->index(2, 4));
  QHelpEvent help(QEvent::ToolTip, cell.center(),
                  rig.Grid().viewport()->mapToGlobal(cell.center()));
  QCoreApplication::sendEvent(rig.Grid().viewport(), &help);
  EXPECT_NE(QToolTip::text().indexOf("Suspect: residual"), -1) << QToolTip::text().toStdString();
  QToolTip::hideText();
}

TEST(FrmSurvey, TheSignsOfStatusesDifferWithoutColour) {
  using survey::AntennaStatus;
  std::vector<QImage> shapes;
  for (const AntennaStatus status :
       {AntennaStatus::Apart, AntennaStatus::Suspect, AntennaStatus::Unchecked,
        AntennaStatus::NearStep, AntennaStatus::Settled}) {
    const QImage sign = survey::StatusSign(status).pixmap(16, 16).toImage();
    shapes.push_back(sign.convertToFormat(QImage::Format_Alpha8));
    for (std::size_t other = 0; other + 1 < shapes.size(); ++other) {
      int differing = 0;
      for (int pixel = 0; pixel < 16 * 16; ++pixel) {
        const QPoint point(pixel % 16, pixel / 16);
        differing +=
            qAlpha(shapes[other].pixel(point)) / 128 != qAlpha(shapes.back().pixel(point)) / 128
                ? 1
                : 0;
      }
      EXPECT_GT(differing, 16) << other << " and " << shapes.size() - 1;
    }
  }
}

TEST(FrmSurvey, EveryStatusHasItsSignBesideItsWords) {
  FrmSurveyRig rig;
  rig.Fill(DenseSite(6));
  rig.OpenSurvey();
  for (int row = 0; row < 6; ++row) {
    const QModelIndex status = rig.Table().model()->index(row, 8);
    EXPECT_FALSE(status.data().toString().isEmpty());
    EXPECT_FALSE(status.data(Qt::DecorationRole).value<QIcon>().isNull());
  }
}

TEST(FrmSurvey, EndsWithTheMainWindow) {
  FrmSurveyRig rig;
  rig.Fill(DenseSite(4));
  rig.OpenSurvey();
  rig.window.UpdateSyncGrid();
  rig.window.close();
  EXPECT_FALSE(rig.Survey().isVisible());
  QCoreApplication::processEvents();
}

}  // namespace
}  // namespace kelvara::test
