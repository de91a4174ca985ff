#include <gtest/gtest.h>

#include <QAccessible>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QImage>
#include <QTest>
#include <vector>

#include "link/FrmComSelect.h"
#include "link/FrmComSelectRig.h"
#include "support/BoxAnswer.h"

namespace kelvara::link {
namespace {

using namespace test;

constexpr const char* kLongDescription =
    "COM3 stands for "
    "/dev/serial/by-id/usb-Example_Serial_Adapter_with_a_long_name_0123456789-if00-port0. It "
    "cannot be opened: no permission; members of the group \"dialout\" have it. Ask for that group "
    "and sign in again.";

/// The line under the lists, and the window around it.
class FrmComSelectLineTest : public ::testing::Test, public FrmComSelectRig {};

TEST_F(FrmComSelectLineTest, DescribesTheChosenPort) {
  store.SetValue("ComPort", "4");
  Open();
  EXPECT_EQ(Line(), "COM4 is described");
  Press(*window, Qt::Key_Down);
  EXPECT_EQ(Line(), "COM5 is described");
  EXPECT_EQ(described, (std::vector<int>{4, 5}));
  EXPECT_EQ(Find<QLabel>(*window, "Label3").textFormat(), Qt::PlainText);
}

TEST_F(FrmComSelectLineTest, IsUpdatedAfterAFailure) {
  port.openable = false;
  description = [](int) { return "free"; };
  Open();
  description = [](int) { return "held by another program"; };
  BoxAnswer box(QMessageBox::Ok);
  Click(Button("CmdOK"));
  EXPECT_EQ(Line(), "held by another program");
}

TEST_F(FrmComSelectLineTest, IsUpdatedWhenTheUserComesBack) {
  if (QGuiApplication::platformName() == QStringLiteral("windows")) {
    GTEST_SKIP() << "Windows gives no other window of the program the focus while a dialog is open";
  }
  description = [](int) { return "absent"; };
  Open();
  description = [](int) { return "free"; };
  QWidget other;
  ShowWindow(other);
  EXPECT_EQ(Line(), "absent");
  window->activateWindow();
  EXPECT_TRUE(QTest::qWaitFor([this] { return Line() == "free"; }));
}

TEST_F(FrmComSelectLineTest, ShowsTheTextOfAFault) {
  description = [](int) -> std::string { throw base::Fault(base::FaultKind::Port, "no table"); };
  Open();
  EXPECT_EQ(Line(), "no table");
}

TEST_F(FrmComSelectLineTest, MarksThePortsWhoseDevicesArePresent) {
  Open();
  const auto picture = [this](int row) {
    const QRect item = ComboCom().visualItemRect(ComboCom().item(row));
    return ComboCom().viewport()->grab(item).toImage();
  };
  const auto screenText = [this](int row) {
    QAccessibleInterface* const list = QAccessible::queryAccessibleInterface(&ComboCom());
    return list->child(row)->text(QAccessible::Name).toStdString();
  };
  const QImage unmarked = picture(2);
  window->SetPortMarks([](int number) { return number == 3 ? "FTDI FT232R USB UART" : ""; });
  EXPECT_NE(picture(2), unmarked);
  EXPECT_EQ(ComboCom().item(2)->text(), "COM3");
  EXPECT_EQ(screenText(2), "COM3, present: FTDI FT232R USB UART");
  EXPECT_EQ(screenText(3), "COM4");
  EXPECT_EQ(described.size(), 1U) << "marking describes no other port";
  TakePicture(*window, "marked");
  window->SetPortMarks([](int) { return ""; });
  EXPECT_EQ(picture(2), unmarked);
}

TEST_F(FrmComSelectLineTest, MarksAreUpdatedWhenTheUserComesBack) {
  if (QGuiApplication::platformName() == QStringLiteral("windows")) {
    GTEST_SKIP() << "Windows gives no other window of the program the focus while a dialog is open";
  }
  Open();
  std::string mark;
  window->SetPortMarks([&mark](int) { return mark; });
  mark = "Prolific";
  QWidget other;
  ShowWindow(other);
  window->activateWindow();
  EXPECT_TRUE(QTest::qWaitFor([this] {
    return ComboCom().item(0)->data(Qt::AccessibleTextRole) == "COM1, present: Prolific";
  }));
}

TEST_F(FrmComSelectLineTest, LayoutHoldsInEveryThemeAndFont) {
  store.SetValue("ComPort", "3");
  for (const std::string& text : {std::string("COM3 stands for /dev/ttyUSB2 and can be opened."),
                                  std::string(kLongDescription)}) {
    description = [&](int) { return text; };
    const bool isLong = text == kLongDescription;
    for (const auto& [theme, note] : {std::pair{Theme::Light, "light"}, {Theme::Dark, "dark"}}) {
      for (const double scale : {1.0, 1.5, 2.0}) {
        const UseTheme useTheme(theme);
        const UseFont useFont(scale);
        Open();
        QCoreApplication::processEvents();
        EXPECT_EQ(WindowFaults(*window), "") << note << ", font " << scale;
        if (scale != 1.5) {
          std::string picture = isLong ? "long-line-" : "";
          picture += note;
          picture += scale == 1.0 ? "" : "-large-font";
          TakePicture(*window, picture);
        }
      }
    }
  }
}

TEST_F(FrmComSelectLineTest, LayoutMakesSpaceForALongerLine) {
  for (const double scale : {1.0, 2.0}) {
    const UseFont useFont(scale);
    description = [](int number) { return number == 1 ? "short" : kLongDescription; };
    Open();
    Press(*window, Qt::Key_Down);
    QCoreApplication::processEvents();
    auto& line = Find<QLabel>(*window, "Label3");
    EXPECT_GE(line.height(), line.heightForWidth(line.width())) << scale;
    EXPECT_GE(line.width(), line.minimumSizeHint().width()) << scale;
    EXPECT_EQ(WindowFaults(*window), "") << scale;
  }
}

TEST_F(FrmComSelectLineTest, LayoutShowsAllPortsAtOnce) {
  for (const double scale : {1.0, 2.0}) {
    const UseFont useFont(scale);
    Open();
    window->resize(1, 1);
    QCoreApplication::processEvents();
    EXPECT_LE(ComboCom().visualItemRect(ComboCom().item(11)).bottom(),
              ComboCom().viewport()->height())
        << scale;
    EXPECT_EQ(WindowFaults(*window), "") << scale;
  }
}

}  // namespace
}  // namespace kelvara::link
