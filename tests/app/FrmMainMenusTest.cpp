#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>
#include <QToolTip>
#include <set>

#include "FrmMainRig.h"

namespace kelvara::test {
namespace {

/// The menus as the user sees them, one entry per line, indented by depth.
std::string MenuText(const QList<QAction*>& actions, const std::string& indent) {
  std::string text;
  for (QAction* const action : actions) {
    const QMenu* const menu = action->menu();
    const QString name = menu != nullptr ? menu->objectName() : action->objectName();
    text += indent;
    text += action->isSeparator() ? "-" : name.toStdString() + " " + action->text().toStdString();
    text += action->isChecked() ? " (checked)" : "";
    text += action->isEnabled() ? "" : " (disabled)";
    text += action->isVisible() ? "" : " (hidden)";
    text += "\n";
    if (menu != nullptr) {
      text += MenuText(menu->actions(), indent + "  ");
    }
  }
  return text;
}

TEST(Menus, HaveTheirEntriesCaptionsAndInitialStates) {
  const FrmMainRig rig;
  EXPECT_EQ(MenuText(rig.window.menuBar()->actions(), ""),
            "mnuFile &File\n"
            "  mnuComPort &Select COM Port...\n"
            "  -\n"
            "  mnuClearGrid &Clear Sync Grid && Results\n"
            "  mnuForceSearch &Clear && Force Beltpack Search\n"
            "  mnuClearLog Clear Sync Data &Log\n"
            "  -\n"
            "  mnuExit &Exit\n"
            "mnuOptions &Options\n"
            "  mnuDisplayLog Display &Log\n"
            "    mnuDisplayLogOn &On\n"
            "    mnuDisplayLogOff O&ff (checked)\n"
            "  mnuDispFormat Display &Format\n"
            "    mnuDispRFPS &RFPS Units (checked)\n"
            "    mnuDispSync &AA Sync Units\n"
            "    mnuDispMetres &Metres\n"
            "  mnuRpnFormat RPN Display &Base\n"
            "    mnuRpnDecimal &Decimal (checked)\n"
            "    mnuRpnHex &Hex\n"
            "  mnuDisplayFps Display FP&S\n"
            "    mnuFpsOn &On (checked)\n"
            "    mnuFpsOff O&ff\n"
            "  mnuViewDebug View Debug\n"
            "    mnuViewDebugOn &On\n"
            "    mnuViewDebugOff O&ff (checked)\n"
            "mnuTools &Tools\n"
            "  mnuCaptureData &Log Data To File (disabled) (hidden)\n"
            "    mnuCaptureStop &Stop\n"
            "    mnuCapturePause &Pause\n"
            "    mnuCaptureResume &Resume\n"
            "  mnuCaptureDataStart &Log Data To File...\n"
            "  mnuGenReport &Generate AA Cable Length Report...\n"
            "  -\n"
            "  mnuConvertor &Converter\n"
            "mnuHelp &Help\n"
            "  mnuContents &Help\n"
            "  -\n"
            "  mnuOrrinWeb &Halden Group Comms Website\n"
            "  -\n"
            "  mnuAbout &About Kelvara...\n");
}

TEST(OptionMenus, CheckOnlyTheirEntryStoreItAndWaitForTheNextRedraw) {
  FrmMainRig rig;
  rig.Open();
  rig.TakeReport();
  rig.window.UpdateSyncGrid();
  EXPECT_EQ(rig.Cell(0, 2), "06");
  EXPECT_EQ(rig.Cell(1, 2), "7");
  rig.Choose("mnuDispMetres");
  rig.Choose("mnuRpnHex");
  rig.Choose("mnuFpsOn");
  EXPECT_TRUE(rig.Entry("mnuDispMetres").isChecked());
  EXPECT_FALSE(rig.Entry("mnuDispRFPS").isChecked());
  EXPECT_EQ(rig.store.Value("RFPSUnits"), "2");
  EXPECT_EQ(rig.store.Value("RPNUnits"), "1");
  EXPECT_EQ(rig.store.Value("FPSDisplay"), "True");
  EXPECT_EQ(rig.Cell(1, 2), "7") << "until the next redraw";
  rig.window.UpdateSyncGrid();
  EXPECT_EQ(rig.Cell(1, 2), "260");
  EXPECT_EQ(rig.Cell(0, 2), "06[4]");
}

TEST(OptionMenus, ChoosingTheCheckedEntryAgainLeavesItChecked) {
  FrmMainRig rig;
  rig.Open();
  rig.Choose("mnuDispRFPS");
  EXPECT_TRUE(rig.Entry("mnuDispRFPS").isChecked());
}

TEST(OptionMenus, OtherOptionsLeaveTheClearLogCommandAlone) {
  FrmMainRig rig;
  EXPECT_TRUE(rig.Entry("mnuClearLog").isEnabled()) << "before the stored options are applied";
  rig.Choose("mnuDispMetres");
  EXPECT_TRUE(rig.Entry("mnuClearLog").isEnabled());
  rig.Choose("mnuDisplayLogOff");
  EXPECT_FALSE(rig.Entry("mnuClearLog").isEnabled());
}

TEST(DisplayLog, OffAndOnAgainShowsAnEmptyBox) {
  FrmMainRig rig;
  rig.Open();
  rig.window.PrintLogEntry("unseen");
  rig.Choose("mnuDisplayLogOn");
  EXPECT_TRUE(rig.TextLog().isVisible());
  EXPECT_EQ(rig.TextLog().toPlainText(), "") << "text logged while it was hidden is not kept";
  rig.window.PrintLogEntry("seen");
  EXPECT_EQ(rig.TextLog().toPlainText(), "second1728043200, seen\n");
  rig.Choose("mnuDisplayLogOff");
  EXPECT_FALSE(rig.TextLog().isVisible());
  EXPECT_FALSE(rig.Entry("mnuClearLog").isEnabled());
  rig.Choose("mnuDisplayLogOn");
  EXPECT_EQ(rig.TextLog().toPlainText(), "");
  EXPECT_TRUE(rig.Entry("mnuClearLog").isEnabled());
}

TEST(ClearLog, EmptiesTheLogBox) {
  FrmMainRig rig;
  rig.store.SetValue("DisplayLog", "True");
  rig.Open();
  rig.window.logBox("text");
  rig.Choose("mnuClearLog");
  EXPECT_EQ(rig.TextLog().toPlainText(), "");
}

TEST(ClearGrid, IsEnabledOnceTheBeltpackIsHeard) {
  FrmMainRig rig;
  rig.Open();
  EXPECT_FALSE(rig.Entry("mnuClearGrid").isEnabled());
  EXPECT_FALSE(rig.Entry("mnuForceSearch").isEnabled());
  rig.port.Receive("B");
  EXPECT_TRUE(rig.Entry("mnuClearGrid").isEnabled());
  EXPECT_EQ(rig.Panel(1), "Beltpack Connected...");
  rig.TakeReport();
  rig.window.UpdateSyncGrid();
  rig.Choose("mnuClearGrid");
  EXPECT_EQ(rig.Grid().model()->rowCount(), 1);
  EXPECT_FALSE(rig.Entry("mnuClearGrid").isEnabled());
  EXPECT_FALSE(rig.Entry("mnuForceSearch").isEnabled());
}

TEST(ForceSearch, SearchesWithClearedResults) {
  FrmMainRig rig;
  rig.Open();
  rig.port.Receive("B");
  rig.TakeReport();
  rig.Choose("mnuForceSearch");
  EXPECT_EQ(rig.Panel(1), "Attempting To Connect To Beltpack...");
  EXPECT_EQ(rig.Panel(3), "Reports: 0");
  EXPECT_TRUE(Find<QTimer>(rig.window, "TimerComPort").isActive());
}

TEST(ViewDebug, MirrorsWhetherTheWindowIsOpen) {
  FrmMainRig rig;
  rig.Open();
  rig.Choose("mnuViewDebugOn");
  auto& debug = Find<QWidget>(rig.window, "FrmDebug");
  EXPECT_TRUE(debug.isVisible());
  EXPECT_TRUE(rig.Entry("mnuViewDebugOn").isChecked());
  rig.Tick("RfpsTimer");
  EXPECT_EQ(Find<QLineEdit>(debug, "TxtLastTxMsg").text(), "rfps");
  debug.close();
  EXPECT_FALSE(rig.Entry("mnuViewDebugOn").isChecked());
  EXPECT_TRUE(rig.Entry("mnuViewDebugOff").isChecked());
  rig.Choose("mnuViewDebugOn");
  rig.Choose("mnuViewDebugOff");
  EXPECT_FALSE(debug.isVisible());
  EXPECT_TRUE(rig.Entry("mnuViewDebugOff").isChecked());
  EXPECT_TRUE(rig.store.values.empty()) << "the option is not stored";
}

TEST(CaptureMenus, FollowTheStateOfTheCapture) {
  FrmMainRig rig;
  rig.Open();
  const auto states = [&] {
    const auto state = [&](const char* name) {
      const QAction& entry = rig.Entry(name);
      return entry.isEnabled() ? "1" : "0";
    };
    const QMenu& submenu = Find<QMenu>(rig.window, "mnuCaptureData");
    return std::string(rig.Entry("mnuCaptureDataStart").isVisible() ? "start" : "") +
           (submenu.menuAction()->isVisible() ? "submenu " : " ") + state("mnuCaptureStop") +
           state("mnuCapturePause") + state("mnuCaptureResume") + " " + rig.Panel(2);
  };
  EXPECT_EQ(states().substr(0, 6), "start ");
  const QString log = QDir::toNativeSeparators(QStringLiteral("/log.txt"));
  const WhenShown dialog("FrmCapture", [&log](QWidget& shown) {
    Fill(Find<QLineEdit>(shown, "TxtFileName"), log.toStdString());
    Click(Find<QPushButton>(shown, "StartButton"));
  });
  rig.Choose("mnuCaptureDataStart");
  EXPECT_EQ(states(), "submenu 110 Logging...");
  rig.Choose("mnuCapturePause");
  EXPECT_EQ(states(), "submenu 101 Logging Paused...");
  rig.Choose("mnuCaptureResume");
  EXPECT_EQ(states(), "submenu 110 Logging...");
  rig.Choose("mnuCaptureStop");
  EXPECT_EQ(states().substr(0, 6), "start ");
  EXPECT_EQ(rig.Panel(2), "");
  EXPECT_EQ(rig.files.files[log.toStdString()],
            "second1728043200, Log To File Started\r\n"
            "second1728043200, Log To File Stopped Paused\r\n"
            "second1728043200, Log To File Resumed\r\n"
            "second1728043200, Log To File Stopped\r\n");
}

TEST(CaptureMenus, AStopThatCannotBeWrittenBeepsOnce) {
  FrmMainRig rig;
  rig.Open();
  ASSERT_TRUE(rig.window.StartLoggingToFile("/log.txt"));
  rig.files.writesLeft = 0;
  rig.Choose("mnuCaptureStop");
  EXPECT_EQ(rig.beeper.count, 1);
}

TEST(GenReport, WithoutAntennasIsRefusedWithAMessageBox) {
  FrmMainRig rig;
  rig.Open();
  BoxAnswer box(QMessageBox::Ok);
  rig.Choose("mnuGenReport");
  EXPECT_EQ(box.text, "No phase information has been captured.");
  EXPECT_EQ(box.title, "Report Can't Be Generated");
  EXPECT_EQ(box.icon, QMessageBox::Warning);
}

TEST(Help, IsOpenedByTheMenuAndByF1Anywhere) {
  FrmMainRig rig;
  rig.files.files["/program\\Help\\index.htm"] = "page";
  rig.store.SetValue("DisplayLog", "True");
  rig.Open();
  rig.Choose("mnuContents");
  rig.Grid().setFocus();
  Press(rig.window, Qt::Key_F1);
  rig.TextLog().setFocus();
  Press(rig.window, Qt::Key_F1);
  EXPECT_EQ(rig.opener.documents, std::vector<std::string>(3, "/program\\Help\\index.htm"));
}

TEST(Help, ThatIsMissingIsReportedWithItsPath) {
  FrmMainRig rig;
  rig.Open();
  BoxAnswer box(QMessageBox::Ok);
  rig.Choose("mnuContents");
  EXPECT_EQ(box.text, "Error occured while attempting to display /program\\Help\\index.htm");
  EXPECT_EQ(box.title, "Kelvara Help");
}

TEST(Converter, OpensAndStaysOpenBesideTheMainWindow) {
  FrmMainRig rig;
  rig.Open();
  rig.Choose("mnuConvertor");
  auto& converter = Find<QWidget>(rig.window, "FrmConvert");
  EXPECT_TRUE(converter.isVisible());
  EXPECT_FALSE(converter.isModal());
  rig.TakeReport();
  EXPECT_EQ(rig.Panel(3), "Reports: 1");
}

TEST(GridMenu, ExportsTheResultsAndCopiesTheGrid) {
  FrmMainRig rig;
  rig.Open();
  rig.TakeReport();
  rig.window.UpdateSyncGrid();
  ChooserUser chooser("results.csv");
  Find<QAction>(rig.Grid(), "mnuExportResults").trigger();
  EXPECT_EQ(chooser.title, "Select a file to write to");
  ASSERT_EQ(rig.files.files.size(), 1U);
  EXPECT_NE(rig.files.files.begin()->second.find(",AA.01,AA.06,AA.02\r\n"), std::string::npos);
  Find<QAction>(rig.Grid(), "mnuCopyGrid").trigger();
  EXPECT_EQ(QApplication::clipboard()->text(),
            "RPN\t01\t06\t02\n01\t\t7\t-11\n06\t\t\t\n02\t\t\t\n");
  QApplication::clipboard()->clear();
  rig.Grid().setFocus();
  Press(rig.window, Qt::Key_C, Qt::ControlModifier);
  EXPECT_TRUE(QApplication::clipboard()->text().startsWith("RPN\t01"));
}

TEST(GridMenu, EntriesHaveDifferentMnemonics) {
  FrmMainRig rig;
  std::set<QChar> letters;
  for (const QAction* const entry : rig.Grid().actions()) {
    const QString text = entry->text();
    letters.insert(text[text.indexOf(u'&') + 1].toUpper());
  }
  EXPECT_EQ(letters, (std::set<QChar>{u'C', u'E'}));
}

TEST(GridZoom, FollowsTheKeysWhereverTheFocusIs) {
  FrmMainRig rig;
  rig.Open();
  rig.Choose("mnuDisplayLogOn");
  rig.TextLog().setFocus();
  Press(rig.TextLog(), Qt::Key_Plus, Qt::ControlModifier);
  EXPECT_EQ(rig.Grid().Zoom(), 110);
  Press(rig.TextLog(), Qt::Key_0, Qt::ControlModifier);
  EXPECT_EQ(rig.Grid().Zoom(), 100);
}

TEST(EmptyGrid, SaysWhetherABeltpackIsPolled) {
  FrmMainRig rig;
  rig.port.openable = false;
  rig.window.show();
  BoxAnswer box(QMessageBox::Ok);
  const WhenShown dialog("FrmComSelect", [](QWidget& shown) { Press(shown, Qt::Key_Escape); });
  rig.window.Form_Load();
  EXPECT_TRUE(rig.Grid().accessibleDescription().startsWith("No beltpack is polled."));
  rig.port.openable = true;
  rig.window.OpenComPort(1);
  rig.window.StartLink();
  EXPECT_TRUE(rig.Grid().accessibleDescription().startsWith("Waiting for the first sync report."));
}

TEST(GridMarks, SetTheCellsOfTheLastReportApartForThreeSeconds) {
  FrmMainRig rig;
  rig.Open();
  const auto& timer = Find<QTimer>(rig.window, "MeasuredTimer");
  EXPECT_EQ(timer.interval(), 3000);
  const auto isMarked = [&rig](int row, int column) {
    QCoreApplication::processEvents();
    const QRect cell = rig.Grid().visualRect(rig.Grid().model()->index(row, column));
    const QImage picture = rig.Grid().viewport()->grab().toImage();
    return picture.pixelColor(cell.topLeft() + QPoint(8, 1)) == QColor(Qt::black);
  };
  rig.TakeReport();
  rig.window.UpdateSyncGrid();
  EXPECT_TRUE(timer.isActive());
  EXPECT_TRUE(isMarked(1, 2));
  EXPECT_TRUE(isMarked(1, 3));
  EXPECT_FALSE(isMarked(2, 1));
  rig.window.UpdateSyncGrid();
  EXPECT_TRUE(isMarked(1, 2)) << "a redraw without a report";
  rig.window.ProcessRfpsReport(
      "rfps\r\n"
      "100ec5A406 Sync\r\n"
      "100ec5A301 Neighbour phase =   -7\r\n");
  rig.window.UpdateSyncGrid();
  EXPECT_TRUE(isMarked(2, 1));
  EXPECT_FALSE(isMarked(1, 2)) << "only those of the last report";
  rig.Tick("MeasuredTimer");
  EXPECT_FALSE(isMarked(2, 1));
  EXPECT_FALSE(timer.isActive());
}

TEST(GridToolTip, DescribesTheCellUnderThePointer) {
  FrmMainRig rig;
  rig.Open();
  rig.TakeReport();
  rig.window.UpdateSyncGrid();
  QWidget& cells = *rig.Grid().viewport();
  const auto pointAt = [&cells](const QPoint& place) {
    QHelpEvent pointing(QEvent::ToolTip, place, cells.mapToGlobal(place));
    QApplication::sendEvent(&cells, &pointing);
    return QToolTip::text().toStdString();
  };
  const QModelIndex cell = rig.Grid().model()->index(1, 2);
  EXPECT_EQ(pointAt(rig.Grid().visualRect(cell).center()),
            "Synchronised to AA 01, neighbour AA 06\n"
            "Mean 7, minimum 7, maximum 7 (RFPS units)\nReadings: 1");
  pointAt(QPoint(cells.width() - 1, cells.height() - 1));
  EXPECT_TRUE(QTest::qWaitFor([] { return QToolTip::text().isEmpty(); })) << "no cell, no tip";
}

TEST(GridMenu, ExportsAntennasThatTheGridDoesNotShowYet) {
  FrmMainRig rig;
  rig.Open();
  rig.TakeReport();
  ChooserUser chooser("results.csv");
  Find<QAction>(rig.Grid(), "mnuExportResults").trigger();
  EXPECT_TRUE(chooser.HasCome());
  EXPECT_EQ(rig.beeper.count, 0);
  EXPECT_EQ(rig.files.openFiles, 0);
  ASSERT_EQ(rig.files.files.size(), 1U);
  EXPECT_NE(rig.files.files.begin()->second.find("AA.01,,7,-11\r\n"), std::string::npos);
}

}  // namespace
}  // namespace kelvara::test
