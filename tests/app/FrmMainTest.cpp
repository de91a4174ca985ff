#include "app/FrmMain.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QDialog>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include "FrmMainRig.h"

namespace kelvara::test {
namespace {

bool IsActive(FrmMainRig& rig, const char* timer) {
  return Find<QTimer>(rig.window, timer).isActive();
}

TEST(StartUp, OpensThePortAndStartsTheLink) {
  FrmMainRig rig;
  rig.Open();
  EXPECT_EQ(rig.window.windowTitle(), "Kelvara");
  EXPECT_TRUE(rig.port.open);
  EXPECT_EQ(rig.port.settings, "19200,n,8,1");
  EXPECT_TRUE(IsActive(rig, "RfpsTimer"));
  EXPECT_EQ(Find<QTimer>(rig.window, "RfpsTimer").interval(), 3000);
  EXPECT_TRUE(IsActive(rig, "TimerComPort"));
  EXPECT_EQ(Find<QTimer>(rig.window, "TimerComPort").interval(), 200);
  EXPECT_EQ(rig.Panel(1), "Attempting To Connect To Beltpack...");
  EXPECT_EQ(rig.Panel(2), "");
  EXPECT_EQ(rig.Panel(3), "Reports: 0");
  EXPECT_EQ(rig.Panel(4), "AAs: 0");
  EXPECT_EQ(rig.Panel(5), "COM1");
  EXPECT_EQ(rig.Panel(6), "19200");
  EXPECT_EQ(rig.Cell(0, 0), "RPN");
  EXPECT_TRUE(rig.store.values.empty()) << "start-up stores nothing";
}

TEST(StartUp, ThatFailsShowsAMessageAndThePortDialog) {
  FrmMainRig rig;
  rig.store.SetValue("ComPort", "3");
  rig.store.SetValue("RFPSUnits", "2");
  rig.port.openable = false;
  ShowWindow(rig.window);
  BoxAnswer box(QMessageBox::Cancel);
  const WhenShown dialog("FrmComSelect", [](QWidget& shown) { Press(shown, Qt::Key_Escape); });
  rig.window.Form_Load();
  EXPECT_EQ(box.text, "Could not open COM  3");
  EXPECT_EQ(box.title, "Kelvara");
  EXPECT_EQ(box.icon, QMessageBox::Critical);
  EXPECT_EQ(box.buttons, QMessageBox::Ok | QMessageBox::Cancel);
  EXPECT_TRUE(dialog.HasCome());
  EXPECT_EQ(rig.Panel(5), "No Comms");
  EXPECT_EQ(rig.Panel(6), "");
  EXPECT_FALSE(IsActive(rig, "RfpsTimer"));
  EXPECT_FALSE(IsActive(rig, "TimerComPort"));
  EXPECT_TRUE(rig.Entry("mnuDispRFPS").isChecked()) << "the stored options are not applied";
}

TEST(StartUp, At57600FailsButTheDialogOpensThePortAtThatRate) {
  FrmMainRig rig;
  rig.store.SetValue("Baudrate", "57600");
  ShowWindow(rig.window);
  BoxAnswer box(QMessageBox::Ok);
  const WhenShown dialog("FrmComSelect", [](QWidget& shown) {
    EXPECT_EQ(Find<QComboBox>(shown, "ComboBaud").currentText(), "57600");
    EXPECT_EQ(Find<QListWidget>(shown, "ComboCom").currentRow(), 0);
    Click(Find<QPushButton>(shown, "CmdOK"));
  });
  rig.window.Form_Load();
  EXPECT_EQ(box.text, "Could not open COM  1");
  EXPECT_EQ(rig.port.settings, "57600,n,8,1");
  EXPECT_EQ(rig.Panel(5), "COM1");
  EXPECT_EQ(rig.Panel(6), "57600");
  EXPECT_TRUE(IsActive(rig, "TimerComPort")) << "OK in the dialog starts the break timer";
  EXPECT_FALSE(IsActive(rig, "RfpsTimer")) << "the rest of start-up is skipped";
}

TEST(StartUp, WithAStoredRateThatIsNotANumberGoesOnWithoutAPort) {
  FrmMainRig rig;
  rig.store.SetValue("Baudrate", "abc");
  ShowWindow(rig.window);
  BoxAnswer box(QMessageBox::Cancel);
  const WhenShown dialog("FrmComSelect", [&rig](QWidget& shown) {
    rig.port.open = true;  // As after an OK whose rate then fails.
    Press(shown, Qt::Key_Escape);
  });
  EXPECT_NO_THROW(rig.window.Form_Load());
  EXPECT_TRUE(dialog.HasCome());
  EXPECT_EQ(rig.beeper.count, 1);
  EXPECT_TRUE(rig.window.isVisible());
}

TEST(StartUp, EndedAtItsMessageShowsNoDialog) {
  FrmMainRig rig;
  rig.port.openable = false;
  ShowWindow(rig.window);
  BoxAnswer box(QMessageBox::Cancel, [&rig] { rig.window.close(); });
  int dialogs = 0;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, &watch, [&dialogs] {
    QWidget* const modal = QApplication::activeModalWidget();
    if (modal != nullptr && modal->objectName() == "FrmComSelect") {
      ++dialogs;
      modal->close();
    }
  });
  watch.start(0);
  rig.window.Form_Load();
  EXPECT_TRUE(box.HasCome());
  EXPECT_EQ(dialogs, 0);
}

TEST(SelectComPort, RestartsTheLinkOnTheChosenPort) {
  FrmMainRig rig;
  rig.Open();
  rig.TakeReport();
  const WhenShown dialog("FrmComSelect", [](QWidget& shown) {
    Find<QListWidget>(shown, "ComboCom").setCurrentRow(6);
    Click(Find<QPushButton>(shown, "CmdOK"));
  });
  rig.Choose("mnuComPort");
  EXPECT_EQ(rig.port.number, 7);
  EXPECT_EQ(rig.Panel(5), "COM7");
  EXPECT_EQ(rig.Panel(3), "Reports: 0") << "the link start-up clears";
  EXPECT_EQ(rig.store.Value("ComPort"), "7");
}

TEST(SelectComPort, CancelledWithAnOpenPortRestartsTheLinkToo) {
  FrmMainRig rig;
  rig.Open();
  rig.TakeReport();
  const WhenShown dialog("FrmComSelect", [](QWidget& shown) { Press(shown, Qt::Key_Escape); });
  rig.Choose("mnuComPort");
  EXPECT_EQ(rig.Panel(3), "Reports: 0");
  EXPECT_EQ(rig.Panel(5), "COM1");
  EXPECT_TRUE(rig.store.values.empty());
}

TEST(Shutdown, ByExitClosesThePortAndTheLogAndEveryWindow) {
  FrmMainRig rig;
  int unloaded = 0;
  rig.window.SetUnloaded([&] { ++unloaded; });
  rig.Open();
  ASSERT_TRUE(rig.window.StartLoggingToFile("/log"));
  rig.Choose("mnuConvertor");
  rig.Choose("mnuViewDebugOn");
  rig.Choose("mnuExit");
  EXPECT_EQ(unloaded, 1);
  EXPECT_FALSE(rig.window.isVisible());
  EXPECT_FALSE(Find<QDialog>(rig.window, "FrmConvert").isVisible());
  EXPECT_FALSE(Find<QDialog>(rig.window, "FrmDebug").isVisible());
  EXPECT_FALSE(rig.port.open);
  EXPECT_EQ(rig.files.openFiles, 0);
  EXPECT_FALSE(IsActive(rig, "RfpsTimer"));
  EXPECT_FALSE(IsActive(rig, "TimerComPort"));
}

TEST(Shutdown, WithADialogOpenClosesItAndEndsTheProgram) {
  struct Case {
    const char* entry;
    const char* dialog;
  };
  for (const Case& c :
       {Case{"mnuComPort", "FrmComSelect"}, Case{"mnuCaptureDataStart", "FrmCapture"},
        Case{"mnuGenReport", "FrmReport"}, Case{"mnuAbout", "FrmAbout"}}) {
    FrmMainRig rig;
    int unloaded = 0;
    rig.window.SetUnloaded([&] { ++unloaded; });
    rig.Open();
    rig.TakeReport();
    const WhenShown dialog(c.dialog, [&](QWidget&) { rig.window.close(); });
    rig.Choose(c.entry);
    EXPECT_TRUE(dialog.HasCome()) << c.dialog;
    EXPECT_EQ(unloaded, 1) << c.dialog;
    EXPECT_FALSE(rig.port.open) << c.dialog;
    EXPECT_FALSE(IsActive(rig, "RfpsTimer")) << c.dialog;
  }
}

TEST(Shutdown, InTheMiddleOfARedrawEndsItWithoutABeep) {
  FrmMainRig rig;
  rig.Open();
  rig.TakeReport();
  QTimer::singleShot(0, &rig.window, [&] { rig.window.close(); });
  rig.window.UpdateSyncGrid();
  EXPECT_FALSE(rig.port.open);
  EXPECT_EQ(rig.beeper.count, 0);
  EXPECT_EQ(rig.Cell(3, 3), "");
}

TEST(Redraw, EndsWithOneBeepWhenTheGridIsClearedInTheMiddle) {
  FrmMainRig rig;
  rig.Open();
  rig.TakeReport();
  rig.port.Receive("B");
  QTimer::singleShot(0, &rig.window, [&] { rig.Choose("mnuClearGrid"); });
  rig.window.UpdateSyncGrid();
  EXPECT_EQ(rig.beeper.count, 1);
  EXPECT_EQ(rig.Grid().model()->rowCount(), 1);
  EXPECT_EQ(rig.Panel(4), "AAs: 0");
}

TEST(Redraw, ShowsAReportThatArrivesInTheMiddle) {
  FrmMainRig rig;
  rig.Open();
  rig.TakeReport();
  QTimer::singleShot(0, &rig.window, [&] { rig.TakeReport(); });
  rig.window.UpdateSyncGrid();
  EXPECT_EQ(rig.Panel(3), "Reports: 2");
  EXPECT_EQ(rig.Cell(1, 2), "7");
}

TEST(RfpsTick, SendsACommandAndRedrawsTheGrid) {
  FrmMainRig rig;
  rig.Open();
  rig.TakeReport();
  EXPECT_EQ(rig.Grid().model()->rowCount(), 1) << "the parser does not redraw";
  rig.Tick("RfpsTimer");
  EXPECT_EQ(rig.port.TakeWritten(), "rfps\r");
  EXPECT_EQ(rig.Grid().model()->rowCount(), 4);
}

TEST(LostBeltpack, AsksAndOnYesOffersTheReportThenClears) {
  FrmMainRig rig;
  rig.Open();
  rig.port.Receive("B");
  rig.TakeReport();
  rig.clock.Advance(31);
  rig.Tick("RfpsTimer");
  rig.clock.Advance(16);
  BoxAnswer box(QMessageBox::Yes);
  bool hadResults = false;
  const WhenShown report("FrmReport", [&](QWidget& dialog) {
    hadResults = rig.Panel(4) == "AAs: 3";
    Press(dialog, Qt::Key_Escape);
  });
  rig.Tick("RfpsTimer");
  EXPECT_EQ(box.title, "Beltpack Comms Lost");
  EXPECT_EQ(box.icon, QMessageBox::Question);
  EXPECT_EQ(box.buttons, QMessageBox::Yes | QMessageBox::No);
  EXPECT_EQ(box.defaultButton, QMessageBox::No);
  EXPECT_EQ(box.format, Qt::PlainText);
  EXPECT_TRUE(hadResults);
  EXPECT_EQ(rig.Panel(4), "AAs: 0");
  EXPECT_EQ(rig.Panel(1), "Attempting To Connect To Beltpack...");
}

TEST(TestReport, WritesAndOpensTheFixedReport) {
  FrmMainRig rig;
  EXPECT_TRUE(rig.window.TestReport());
  ASSERT_EQ(rig.files.files.count("/program/test.html"), 1U);
  EXPECT_NE(rig.files.files["/program/test.html"].find("<td>HGC</td>"), std::string::npos);
  EXPECT_EQ(rig.opener.documents, std::vector<std::string>{"/program/test.html"});
}

TEST(HiddenButtons, ExistAndStartStopSwitchesThePolling) {
  FrmMainRig rig;
  rig.Open();
  auto& startStop = Find<QPushButton>(rig.window, "CommandStartStop");
  auto& check = Find<QPushButton>(rig.window, "CmdChkRx");
  EXPECT_FALSE(startStop.isVisible());
  EXPECT_FALSE(check.isVisible());
  EXPECT_EQ(check.text(), "Rx?");
  EXPECT_EQ(startStop.text(), "Start");
  startStop.click();
  EXPECT_EQ(startStop.text(), "Stop");
  EXPECT_TRUE(IsActive(rig, "RfpsTimer"));
  startStop.click();
  EXPECT_EQ(startStop.text(), "Start");
  EXPECT_FALSE(IsActive(rig, "RfpsTimer"));
}

}  // namespace
}  // namespace kelvara::test
