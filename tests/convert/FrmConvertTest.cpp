#include "convert/FrmConvert.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <array>
#include <string>
#include <vector>

#include "support/Doubles.h"
#include "support/WindowDriver.h"

namespace kelvara::convert {
namespace {

using namespace test;

/// One row of the window, as users see it.
struct Row {
  const char* field;
  const char* label;
  const char* toolTip;
  const char* button;
  const char* buttonToolTip;
  bool enterUpdates;
};

constexpr std::array kRows{
    Row{"TextRfps", "RFPS Phase:", "Phase, as shown in the RFPS report.", "CmdUpdateRFPS",
        "Update all fields based on RFPS Phase.", true},
    Row{"TextAASync", "AA Sync Units:", "Number required by Active ANtenna Sync message.",
        "CmdUpdateAASync", "Update all fields based on AA Sync Units.", true},
    Row{"TextMetres", "Length Metres:", "Effective length of cable in metres.", "CmdUpdateMetres",
        "Update all fields based on Cable Length.", true},
    Row{"TextOhms", "Loop Res (Ohms):", "Loop resistance in ohms - Includes 1.6 ohm offset. ",
        "CmdUpdateOhms", "Update all fields based on Loop Resistance.", true},
    Row{"TextDelay", "Delay (us)", "Loop resistance in ohms - Includes 1.6 ohm offset. ",
        "CmdUpdateDelay", "Update all fields based on Loop Resistance.", true},
    Row{"TextRpn", "AA RPN (Hex):", "Active Antenna RPN in Hex.", "CmdRpn",
        "Update all fields based on AA RPN in hex.", true},
    Row{"TextPortNum",
        "Port Num:", "Port number of Active Antenna (one of the 6 ports associated with it).",
        "CmdPortNum", "Update all fields based on AA Port number.", true},
    Row{"TextRpnDec", "AA RPN (Dec):", "Active Antenna RPN in Decimal.", "CmdRpnDec",
        "Update all fields based on AA RPN in decimal.", false},
};

class FrmConvertTest : public testing::Test {
 protected:
  QLineEdit& Edit(const char* name) { return Find<QLineEdit>(window_, name); }
  QPushButton& Button(const char* name) { return Find<QPushButton>(window_, name); }
  std::string Text(const char* name) { return Edit(name).text().toStdString(); }

  void Open() {
    window_.Open();
    ShowWindow(window_);
  }

  /// The texts of all fields, in the order of the rows.
  std::vector<std::string> Texts() {
    std::vector<std::string> texts;
    texts.reserve(kRows.size());
    for (const Row& row : kRows) {
      texts.push_back(Text(row.field));
    }
    return texts;
  }

  /// Fills each field with its own text, without any Update.
  void FillAll() {
    for (const Row& row : kRows) {
      Edit(row.field).setText(QString("old ") + row.field);
    }
  }

  QWidget main_;
  CountingBeeper beeper_;
  FrmConvert window_{beeper_, &main_};
};

TEST_F(FrmConvertTest, EveryFieldHasItsNameLabelButtonAndToolTips) {
  for (std::size_t i = 0; i < kRows.size(); ++i) {
    const Row& row = kRows.at(i);
    const QLabel& label = Find<QLabel>(window_, ("Label" + std::to_string(i + 1)).c_str());
    EXPECT_EQ(label.text(), row.label);
    EXPECT_EQ(label.buddy(), &Edit(row.field));
    EXPECT_EQ(Edit(row.field).toolTip(), row.toolTip);
    EXPECT_EQ(Button(row.button).text(), "Update");
    EXPECT_EQ(Button(row.button).toolTip(), row.buttonToolTip);
    EXPECT_EQ(Text(row.field), "");
  }
  EXPECT_EQ(window_.findChildren<QLineEdit*>().size(), 8);
  EXPECT_EQ(window_.findChildren<QPushButton*>().size(), 9);
}

TEST_F(FrmConvertTest, FramesAndOkHaveTheirTexts) {
  EXPECT_EQ(window_.objectName(), "FrmConvert");
  EXPECT_EQ(window_.windowTitle(), "Converter");
  EXPECT_EQ(Find<QGroupBox>(window_, "Frame1").title(), "Kelvara");
  EXPECT_EQ(Find<QGroupBox>(window_, "Frame2").title(), "Active Antenna IDs");
  EXPECT_EQ(Button("CmdOK").text(), "&OK");
  EXPECT_EQ(Button("CmdOK").toolTip(), "Close Converter.");
  for (std::size_t i = 0; i < kRows.size(); ++i) {
    EXPECT_EQ(Edit(kRows.at(i).field).parent()->objectName(), i < 5 ? "Frame1" : "Frame2");
  }
}

TEST_F(FrmConvertTest, EveryFieldAndButtonHasANameForScreenReaders) {
  for (const Row& row : kRows) {
    QString name = QString(row.label).remove(u':');
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&Edit(row.field))->text(QAccessible::Name),
              name);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&Button(row.button))->text(QAccessible::Name),
              "Update from " + name);
  }
}

TEST_F(FrmConvertTest, LabelsAndTabFollowTheReadingOrder) {
  Open();
  int above = -1;
  std::string order;
  for (std::size_t i = 0; i < kRows.size(); ++i) {
    const QLabel& label = Find<QLabel>(window_, ("Label" + std::to_string(i + 1)).c_str());
    const int y = label.mapTo(&window_, QPoint(0, 0)).y();
    EXPECT_GT(y, above) << label.text().toStdString();
    above = y;
    order += std::string(kRows.at(i).field) + ' ' + kRows.at(i).button + ' ';
  }
  EXPECT_EQ(FocusName(), "TextRfps");
  EXPECT_EQ(TabOrder(window_), order + "CmdOK");
}

/// The text typed into one field, and the resulting texts of all fields.
struct Example {
  const char* field;
  const char* typed;
  std::array<const char*, 8> texts;
};

constexpr std::array kExamples{
    Example{"TextRfps", "1", {"1", "0", "29.000", "5.753", "0.096", "", "", ""}},
    Example{"TextRfps", "0", {"0", "0", "0.000", "0.301", "0.000", "", "", ""}},
    Example{"TextRfps", " 1 ", {" 1 ", "0", "29.000", "5.753", "0.096", "", "", ""}},
    Example{"TextAASync", "1", {"4.48275862068966", "1", "130.000", "24.741", "0.432", "", "", ""}},
    Example{"TextAASync",
            "252",
            {"1129.65517241379", "252", "32760.000", "6159.181", "108.955", "", "", ""}},
    Example{"TextMetres", "65", {"2.24137931034483", "0", "65", "12.521", "0.216", "", "", ""}},
    Example{"TextMetres", "195", {"6.72413793103448", "2", "195", "36.961", "0.649", "", "", ""}},
    Example{"TextOhms", "0.3008", {"0", "0", "0.000", "0.3008", "0.000", "", "", ""}},
    Example{"TextDelay", "0.09645", {"1", "0", "29.000", "5.753", "0.09645", "", "", ""}},
    Example{"TextRpn", "0A", {"", "", "", "", "", "0A", "660", "10"}},
    Example{"TextPortNum", "660", {"", "", "", "", "", "A", "660", "10"}},
    Example{"TextRpnDec", "10", {"", "", "", "", "", "A", "660", "10"}},
    Example{"TextRpnDec", "abc", {"", "", "", "", "", "0", "600", "abc"}},
};

const Row& RowOf(const char* field) {
  for (const Row& row : kRows) {
    if (std::string(row.field) == field) {
      return row;
    }
  }
  throw std::runtime_error("no such row");
}

TEST_F(FrmConvertTest, ButtonsUpdateTheOtherFieldsOfTheGroup) {
  for (const auto& [field, typed, texts] : kExamples) {
    Open();
    Fill(Edit(field), typed);
    Click(Button(RowOf(field).button));
    EXPECT_EQ(Texts(), std::vector<std::string>(texts.begin(), texts.end()))
        << field << " \"" << typed << '"';
    window_.close();
  }
  EXPECT_EQ(beeper_.count, 0);
}

TEST_F(FrmConvertTest, EnterUpdatesFromSevenFieldsButNotFromTheDecimalRpn) {
  for (const auto& [field, typed, texts] : kExamples) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
      Open();
      Fill(Edit(field), typed);
      const auto before = Texts();
      Press(window_, key);
      EXPECT_EQ(Texts(), RowOf(field).enterUpdates
                             ? std::vector<std::string>(texts.begin(), texts.end())
                             : before)
          << field << " \"" << typed << '"';
      EXPECT_TRUE(window_.isVisible());
      EXPECT_EQ(FocusName(), field);
      window_.close();
    }
  }
  EXPECT_EQ(beeper_.count, 0);
}

TEST_F(FrmConvertTest, UpdateLeavesTheOtherGroupAlone) {
  Open();
  FillAll();
  Fill(Edit("TextRfps"), "1");
  Press(window_, Qt::Key_Return);
  EXPECT_EQ(Text("TextMetres"), "29.000");
  EXPECT_EQ(Text("TextRpn"), "old TextRpn");
  EXPECT_EQ(Text("TextPortNum"), "old TextPortNum");
  EXPECT_EQ(Text("TextRpnDec"), "old TextRpnDec");

  Fill(Edit("TextRpn"), "1");
  Press(window_, Qt::Key_Return);
  EXPECT_EQ(Text("TextRpnDec"), "1");
  EXPECT_EQ(Text("TextRfps"), "1");
  EXPECT_EQ(Text("TextMetres"), "29.000");
}

TEST_F(FrmConvertTest, TextThatCannotBeUsedBeepsOnceAndChangesNothing) {
  struct Refused {
    const char* field;
    const char* typed;
  };
  constexpr std::array kRefused{
      Refused{"TextRfps", ""},         Refused{"TextRfps", "abc"},
      Refused{"TextRfps", "1e300"},    Refused{"TextAASync", ""},
      Refused{"TextAASync", "abc"},    Refused{"TextAASync", "253"},
      Refused{"TextAASync", "-253"},   Refused{"TextAASync", "32768"},
      Refused{"TextMetres", ""},       Refused{"TextMetres", "12x"},
      Refused{"TextMetres", "1e9"},    Refused{"TextOhms", ""},
      Refused{"TextOhms", "ohm"},      Refused{"TextDelay", ""},
      Refused{"TextDelay", "--1"},     Refused{"TextRpn", ""},
      Refused{"TextRpn", "xyz"},       Refused{"TextRpn", "10000"},
      Refused{"TextPortNum", ""},      Refused{"TextPortNum", "port"},
      Refused{"TextPortNum", "40000"}, Refused{"TextRpnDec", "40000"},
  };
  for (const auto& [field, typed] : kRefused) {
    Open();
    FillAll();
    Fill(Edit(field), typed);
    const auto before = Texts();
    beeper_.count = 0;
    Click(Button(RowOf(field).button));
    EXPECT_EQ(beeper_.count, 1) << field << " \"" << typed << '"';
    EXPECT_EQ(Texts(), before) << field << " \"" << typed << '"';

    if (RowOf(field).enterUpdates) {
      Edit(field).setFocus();
      Press(window_, Qt::Key_Return);
      EXPECT_EQ(beeper_.count, 2) << field << " \"" << typed << '"';
      EXPECT_EQ(Texts(), before) << field << " \"" << typed << '"';
    }
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    window_.close();
  }
}

TEST_F(FrmConvertTest, ADigitOutsideAsciiBeeps) {
  Open();
  Edit("TextRfps").setText(QString(QChar(0x0661)));
  Click(Button("CmdUpdateRFPS"));
  EXPECT_EQ(beeper_.count, 1);
  EXPECT_EQ(Text("TextMetres"), "");
}

TEST_F(FrmConvertTest, EnterWithControlOrAltDoesNotUpdate) {
  Open();
  Fill(Edit("TextRfps"), "1");
  Press(window_, Qt::Key_Return, Qt::ControlModifier);
  Press(window_, Qt::Key_Return, Qt::AltModifier);
  EXPECT_EQ(Text("TextMetres"), "");
  Press(window_, Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(Text("TextMetres"), "29.000");
}

TEST_F(FrmConvertTest, SpacePressesTheFocusedButton) {
  Open();
  Type(window_, "1");
  Press(window_, Qt::Key_Tab);
  EXPECT_EQ(FocusName(), "CmdUpdateRFPS");
  Press(window_, Qt::Key_Space);
  EXPECT_EQ(Text("TextMetres"), "29.000");
}

TEST_F(FrmConvertTest, ClosesByOkEscAccessKeyAndFrame) {
  Open();
  Click(Button("CmdOK"));
  EXPECT_FALSE(window_.isVisible());

  Open();
  Edit("TextOhms").setFocus();
  Press(window_, Qt::Key_Escape);
  EXPECT_FALSE(window_.isVisible());

  Open();
  Press(window_, Qt::Key_O, Qt::AltModifier);
  EXPECT_TRUE(Closes(window_));

  Open();
  window_.close();
  EXPECT_FALSE(window_.isVisible());
}

TEST_F(FrmConvertTest, IsEmptyWhenOpenedAgainAfterClosing) {
  const auto empty = std::vector<std::string>(8);
  for (const Qt::Key closing : {Qt::Key_Escape, Qt::Key_O}) {
    Open();
    Fill(Edit("TextRfps"), "1");
    Press(window_, Qt::Key_Return);
    Fill(Edit("TextRpn"), "0A");
    Press(window_, Qt::Key_Return);
    Press(window_, closing, closing == Qt::Key_O ? Qt::AltModifier : Qt::NoModifier);
    EXPECT_TRUE(Closes(window_));
    Open();
    EXPECT_EQ(Texts(), empty);
    EXPECT_EQ(FocusName(), "TextRfps");
    EXPECT_FALSE(Edit("TextRfps").isUndoAvailable());
    window_.close();
  }
}

TEST_F(FrmConvertTest, StaysAsItIsWhenOpenedAgainOrMinimised) {
  Open();
  Fill(Edit("TextRpn"), "0A");
  window_.Open();
  EXPECT_TRUE(window_.isVisible());
  EXPECT_EQ(Text("TextRpn"), "0A");

  window_.showMinimized();
  window_.Open();
  EXPECT_FALSE(window_.isMinimized());
  EXPECT_EQ(Text("TextRpn"), "0A");
}

TEST_F(FrmConvertTest, LeavesTheMainWindowUsable) {
  QPushButton other(&main_);
  int clicks = 0;
  QObject::connect(&other, &QPushButton::clicked, [&clicks] { ++clicks; });
  ShowWindow(main_);
  Open();
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  Click(other);
  EXPECT_EQ(clicks, 1);
}

TEST_F(FrmConvertTest, LayoutGrowsAndShrinksWithTheFont) {
  Open();
  const QSize before = window_.size();
  {
    const UseFont useFont(2.0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window_.height() > before.height(); }, 2000));
    EXPECT_TRUE(QTest::qWaitFor([&] { return LayoutFaults(window_).empty(); }, 2000));
    EXPECT_GT(window_.width(), before.width());
  }
  EXPECT_TRUE(QTest::qWaitFor([&] { return window_.size() == before; }, 2000));
}

TEST_F(FrmConvertTest, LayoutHoldsInEveryThemeAndFont) {
  for (const auto& [theme, note] : {std::pair{Theme::Light, "light"}, {Theme::Dark, "dark"}}) {
    for (const double scale : {1.0, 1.5, 2.0}) {
      const UseTheme useTheme(theme);
      const UseFont useFont(scale);
      Open();
      Fill(Edit("TextAASync"), "-1");
      Press(window_, Qt::Key_Return);
      Fill(Edit("TextRpn"), "0A");
      Press(window_, Qt::Key_Return);
      EXPECT_EQ(LayoutFaults(window_), "") << note << ", font " << scale;
      for (const Row& row : kRows) {
        const QLineEdit& edit = Edit(row.field);
        EXPECT_EQ(edit.mapTo(&window_, QPoint(0, 0)).x(),
                  Edit("TextRfps").mapTo(&window_, QPoint(0, 0)).x());
        EXPECT_LT(edit.fontMetrics().horizontalAdvance("-4.48275862068966E+15"), edit.width());
      }
      TakePicture(window_, QString("%1-font%2").arg(note).arg(scale).toStdString());
      window_.close();
    }
  }
}

}  // namespace
}  // namespace kelvara::convert
