#include "link/FrmComSelect.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QLineEdit>
#include <QTest>
#include <array>
#include <vector>

#include "link/FrmComSelectRig.h"
#include "support/BoxAnswer.h"
#include "support/EndOfProgram.h"

namespace kelvara::link {
namespace {

using namespace test;
using Steps = std::vector<std::string>;

class FrmComSelectTest : public ::testing::Test, public FrmComSelectRig {
 protected:
  /// Whether the window closes: a button pressed by its access key stays down for a moment first.
  bool IsClosedSoon() {
    return QTest::qWaitFor([this] { return !window->isVisible(); });
  }
};

TEST_F(FrmComSelectTest, ControlsHaveTheirNamesCaptionsAndToolTips) {
  Open();
  EXPECT_EQ(window->objectName(), "FrmComSelect");
  EXPECT_EQ(window->windowTitle(), "Select Serial Port");
  EXPECT_TRUE(window->isModal());
  EXPECT_EQ(Find<QLabel>(*window, "Label1").text(), "COM Port:");
  EXPECT_EQ(ComboCom().toolTip(), "COM Port that Beltpack will be connected to.");
  EXPECT_EQ(ComboCom().accessibleName(), "COM Port");
  EXPECT_EQ(Find<QLabel>(*window, "Label2").text(), "Baud Rate:");
  EXPECT_EQ(ComboBaud().toolTip(), "Baud rate (default is 19200 for beltpack).");
  EXPECT_EQ(ComboBaud().accessibleName(), "Baud Rate");
  EXPECT_EQ(Button("CmdOK").text(), "&OK");
  EXPECT_EQ(Button("CmdOK").toolTip(), "Accept settings.");
  EXPECT_EQ(Button("CmdCancel").text(), "&Cancel");
  EXPECT_EQ(Button("CmdCancel").toolTip(), "Close the window without changing settings.");
}

TEST_F(FrmComSelectTest, ListsHoldThePortsAndTheRates) {
  Open();
  ASSERT_EQ(ComboCom().count(), 12);
  for (int i = 0; i < 12; ++i) {
    EXPECT_EQ(ComboCom().item(i)->text().toStdString(), "COM" + std::to_string(i + 1));
  }
  QStringList rates;
  for (int i = 0; i < ComboBaud().count(); ++i) {
    rates += ComboBaud().itemText(i);
  }
  EXPECT_EQ(rates.join(u' '), "4800 9600 19200 28800 38400 57600");
}

TEST_F(FrmComSelectTest, WithNothingStoredShowsPort1At19200) {
  Open();
  EXPECT_EQ(ComboCom().currentRow(), 0);
  EXPECT_TRUE(ComboCom().item(0)->isSelected());
  EXPECT_EQ(ComboBaud().currentText(), "19200");
}

TEST_F(FrmComSelectTest, OpensWithTheStoredPortAndRate) {
  store.SetValue("ComPort", "12");
  store.SetValue("Baudrate", "57600");
  Open();
  EXPECT_EQ(ComboCom().currentRow(), 11);
  EXPECT_EQ(ComboBaud().currentText(), "57600");
}

TEST_F(FrmComSelectTest, StoredRateNeedNotBeListed) {
  store.SetValue("Baudrate", "1200");
  Open();
  EXPECT_EQ(ComboBaud().currentText(), "1200");
  EXPECT_EQ(ComboBaud().count(), 6);
}

TEST_F(FrmComSelectTest, OkOpensThenAppliesTheRateAndStoresBoth) {
  Open();
  Click(ComboCom());
  ComboCom().setFocus();
  Press(*window, Qt::Key_Home);
  Press(*window, Qt::Key_Down);
  Press(*window, Qt::Key_Down);
  ComboBaud().setFocus();
  Fill(*ComboBaud().lineEdit(), "57600");
  Click(Button("CmdOK"));
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(window->result(), QDialog::Accepted);
  EXPECT_EQ(port.steps, (Steps{"open", "settings 57600,n,8,1"}));
  EXPECT_EQ(port.number, 3);
  EXPECT_TRUE(timer.IsOn());
  EXPECT_EQ(store.Value("ComPort"), "3");
  EXPECT_EQ(store.Value("Baudrate"), "57600");
}

TEST_F(FrmComSelectTest, OpenPortIsClosedFirst) {
  port.open = true;
  Open();
  Press(*window, Qt::Key_O, Qt::AltModifier);
  EXPECT_TRUE(IsClosedSoon());
  EXPECT_EQ(port.steps, (Steps{"close", "open", "settings 19200,n,8,1"}));
  EXPECT_EQ(port.number, 1);
}

TEST_F(FrmComSelectTest, RatesAreChosenFromTheList) {
  Open();
  ComboBaud().setFocus();
  Press(*window, Qt::Key_Down);
  EXPECT_EQ(ComboBaud().currentText(), "28800");
}

TEST_F(FrmComSelectTest, TypedRateIsTakenAsTyped) {
  Open();
  Fill(*ComboBaud().lineEdit(), "4");
  EXPECT_EQ(ComboBaud().currentText(), "4");
  Press(*window, Qt::Key_Return);
  EXPECT_EQ(port.steps, (Steps{"open", "settings 4,n,8,1"}));
  EXPECT_EQ(store.Value("Baudrate"), "4");
  EXPECT_EQ(ComboBaud().count(), 6);
}

TEST_F(FrmComSelectTest, PortThatCannotBeOpenedLeavesTheDialogOpen) {
  port.openable = false;
  store.SetValue("ComPort", "2");
  Open();
  ComboCom().setCurrentRow(2);
  for (const QMessageBox::StandardButton answer : {QMessageBox::Ok, QMessageBox::Cancel}) {
    BoxAnswer box(answer);
    Click(Button("CmdOK"));
    EXPECT_EQ(box.text, "Could not open COM  3");
    EXPECT_EQ(box.title, "Kelvara");
    EXPECT_EQ(box.icon, QMessageBox::Critical);
    EXPECT_EQ(box.buttons, QMessageBox::Ok | QMessageBox::Cancel);
    EXPECT_TRUE(window->isVisible());
  }
  EXPECT_FALSE(timer.IsOn());
  EXPECT_EQ(store.Value("ComPort"), "2");
  EXPECT_EQ(store.Value("Baudrate"), "");
}

TEST_F(FrmComSelectTest, RateThatIsNotANumberFailsAfterThePortIsOpened) {
  for (const char* const rate : {"fast", "", "3000000000", "19200,n"}) {
    SCOPED_TRACE(rate);
    port.steps.clear();
    port.open = false;
    Open();
    ComboBaud().setEditText(QString::fromLatin1(rate));
    BoxAnswer box(QMessageBox::Ok);
    Click(Button("CmdOK"));
    EXPECT_EQ(box.text, "Could not open COM  1");
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(port.steps, Steps{"open"});
    EXPECT_TRUE(port.open);
    EXPECT_TRUE(timer.IsOn());
    EXPECT_EQ(store.values.size(), 0U);
  }
}

TEST_F(FrmComSelectTest, SettingsThatCannotBeWrittenShowTheOrdinaryMessage) {
  store.writable = false;
  Open();
  BoxAnswer box(QMessageBox::Ok);
  Click(Button("CmdOK"));
  EXPECT_EQ(box.text, "Could not open COM  1");
  EXPECT_TRUE(window->isVisible());
}

TEST_F(FrmComSelectTest, InvalidStoredPortOpensWithNothingChosen) {
  for (const char* const stored : {"0", "13", "-1", "77", "40000", "none", ""}) {
    SCOPED_TRACE(stored);
    store.SetValue("ComPort", stored);
    port.steps.clear();
    port.open = true;
    Open();
    EXPECT_EQ(ComboCom().currentRow(), -1);
    EXPECT_TRUE(ComboCom().selectedItems().isEmpty());
    EXPECT_EQ(ComboBaud().currentText(), "19200");
    EXPECT_EQ(Line(), "No port is chosen.");
    BoxAnswer box(QMessageBox::Ok);
    Press(*window, Qt::Key_O, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return box.HasCome(); }));
    EXPECT_EQ(box.text, "Could not open COM  0");
    EXPECT_EQ(box.icon, QMessageBox::Critical);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(store.Value("ComPort"), stored);
    EXPECT_EQ(port.steps, Steps{"close"});
  }
}

TEST_F(FrmComSelectTest, InvalidStoredRateLeavesTheBoxEmpty) {
  store.SetValue("Baudrate", "fast");
  Open();
  EXPECT_EQ(ComboBaud().currentText(), "");
  EXPECT_EQ(ComboCom().currentRow(), 0);
}

TEST_F(FrmComSelectTest, EscAndCancelChangeNothing) {
  const auto close = std::to_array<void (*)(FrmComSelect&)>(
      {[](FrmComSelect& shown) { Press(shown, Qt::Key_Escape); },
       [](FrmComSelect& shown) { Press(shown, Qt::Key_C, Qt::AltModifier); },
       [](FrmComSelect& shown) { Click(Find<QPushButton>(shown, "CmdCancel")); }});
  port.open = true;
  for (const auto way : close) {
    Open();
    ComboCom().setCurrentRow(5);
    way(*window);
    EXPECT_TRUE(IsClosedSoon());
    EXPECT_EQ(window->result(), QDialog::Rejected);
  }
  EXPECT_EQ(port.steps, Steps{});
  EXPECT_FALSE(timer.IsOn());
  EXPECT_TRUE(store.values.empty());
}

TEST_F(FrmComSelectTest, EnterAnywhereExceptOnCancelIsOk) {
  for (const char* const name : {"ComboCom", "ComboBaud", "CmdOK"}) {
    SCOPED_TRACE(name);
    Open();
    port.steps.clear();
    port.open = false;
    Find<QWidget>(*window, name).setFocus();
    Press(*window, Qt::Key_Return);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(window->result(), QDialog::Accepted);
    EXPECT_EQ(port.steps, (Steps{"open", "settings 19200,n,8,1"}));
  }
}

TEST_F(FrmComSelectTest, TabFollowsTheReadingOrder) {
  Open();
  EXPECT_EQ(TabOrder(*window), "ComboCom ComboBaud CmdOK CmdCancel");
}

TEST_F(FrmComSelectTest, EndingTheProgramWhileTheMessageIsOpenEndsTheDialog) {
  port.openable = false;
  window = std::make_unique<FrmComSelect>(comPort, boxes, PortDescription());
  const EndOfProgram end("MsgBox");
  const WhenShown shown("FrmComSelect",
                        [](QWidget& dialog) { Click(Find<QPushButton>(dialog, "CmdOK")); });
  EXPECT_EQ(window->exec(), QDialog::Rejected);
}

}  // namespace
}  // namespace kelvara::link
