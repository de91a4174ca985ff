#include "report/FrmReport.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QTest>
#include <array>
#include <memory>
#include <vector>

#include "platform/qt/Text.h"
#include "report/FrmReportRig.h"
#include "support/BoxAnswer.h"

namespace kelvara::report {
namespace {

using namespace test;

class FrmReportTest : public ::testing::Test, public FrmReportRig {
 protected:
  /// Opens the window with a name in the file box.
  void OpenFor(const std::string& path) {
    store.SetValue("LastReportFile", path);
    Open();
  }

  /// Whether the window closes: a button pressed by its access key stays down for a moment first.
  bool IsClosedSoon() {
    return QTest::qWaitFor([this] { return !window->isVisible(); });
  }
};

TEST_F(FrmReportTest, ControlsHaveTheirNamesCaptionsAndToolTips) {
  Open();
  EXPECT_EQ(window->objectName(), "FrmReport");
  EXPECT_EQ(window->windowTitle(), "Generate Reoprt");
  EXPECT_TRUE(window->isModal());
  constexpr std::array<const char*, 4> kLabels{"File:", "Site:", "Tester:", "Notes:"};
  for (std::size_t i = 0; i < kLabels.size(); ++i) {
    const std::string name = "Label" + std::to_string(i + 1);
    EXPECT_EQ(Find<QLabel>(*window, name.c_str()).text(), kLabels.at(i));
  }
  EXPECT_EQ(TxtFileName().toolTip(), "Name and path of file to be generated.");
  EXPECT_EQ(Button("CommandBrowse").text(), "&Browse...");
  EXPECT_EQ(Button("CommandBrowse").toolTip(), "Browse for file.");
  EXPECT_EQ(TxtSite().toolTip(), "Name of customer and site location.");
  EXPECT_EQ(TxtTester().toolTip(),
            "Name of person carrying out the DECT Synchronisation procedure.");
  EXPECT_EQ(TxtNotes().toolTip(), "Miscellaneous notes.");
  EXPECT_EQ(CheckOpenReport().text(), "Show Report");
  EXPECT_EQ(CheckOpenReport().toolTip(), "");
  EXPECT_EQ(Button("CommandGenerate").text(), "&Generate Report");
  EXPECT_EQ(Button("CommandGenerate").toolTip(), "Generate report.");
  EXPECT_EQ(Button("CommandCancel").text(), "&Cancel");
  EXPECT_EQ(Button("CommandCancel").toolTip(), "Close window without generating report.");
}

TEST_F(FrmReportTest, EveryFieldHasAnAccessibleName) {
  Open();
  EXPECT_EQ(TxtFileName().accessibleName(), "File");
  EXPECT_EQ(TxtSite().accessibleName(), "Site");
  EXPECT_EQ(TxtTester().accessibleName(), "Tester");
  EXPECT_EQ(TxtNotes().accessibleName(), "Notes");
}

TEST_F(FrmReportTest, FirstOpeningCreatesTheRememberedFields) {
  Open();
  EXPECT_EQ(TxtFileName().text(), "");
  EXPECT_TRUE(CheckOpenReport().isChecked());
  EXPECT_EQ(ReadTextFile(Path("rfields.ds")), "\r\n\r\n 1 \r\n\r\n");
}

TEST_F(FrmReportTest, EachOpeningFillsTheFieldsAgain) {
  WriteTextFile(Path("rfields.ds"), " Hall 3 \r\nA. Tester\r\n 0 \r\none\r\n\r\ntwo\r\n");
  OpenFor("C:\\sites\\hall.html");
  EXPECT_EQ(TxtFileName().text(), "C:\\sites\\hall.html");
  EXPECT_EQ(TxtSite().text(), " Hall 3 ");
  EXPECT_EQ(TxtTester().text(), "A. Tester");
  EXPECT_FALSE(CheckOpenReport().isChecked());
  EXPECT_EQ(TxtNotes().toPlainText(), "one\n\ntwo\n");

  Fill(TxtSite(), "typed");
  Press(*window, Qt::Key_Escape);
  Open();
  EXPECT_EQ(TxtSite().text(), " Hall 3 ");
}

TEST_F(FrmReportTest, FileThatEndsEarlyLeavesTheOtherFieldsAlone) {
  WriteTextFile(Path("rfields.ds"), "Hall\r\n");
  Open();
  EXPECT_EQ(TxtSite().text(), "Hall");
  EXPECT_EQ(TxtTester().text(), "");
  EXPECT_TRUE(CheckOpenReport().isChecked());
  EXPECT_EQ(beeper.count, 0);
}

TEST_F(FrmReportTest, TextIsNeverTakenForMarkup) {
  WriteTextFile(Path("rfields.ds"), "<b>s</b>\r\n\r\n 1 \r\n<i>n</i>\r\n");
  Open();
  EXPECT_EQ(TxtSite().text(), "<b>s</b>");
  EXPECT_EQ(TxtNotes().toPlainText(), "<i>n</i>\n");
}

TEST_F(FrmReportTest, BytesThatAreNotTextAreKeptUnchanged) {
  const std::string fields = "B\xFChne\r\n\xC3\xBC \xFF\r\n 1 \r\n\x80\xE2\x82\r\n";
  WriteTextFile(Path("rfields.ds"), fields);
  OpenFor(Path("report.html"));
  Click(TxtSite());
  Press(*window, Qt::Key_End);
  Type(*window, "!");
  Click(Button("CommandGenerate"));
  EXPECT_EQ(ReadTextFile(Path("rfields.ds")), "B\xFChne!" + fields.substr(5) + "\r\n");
  EXPECT_NE(ReadTextFile(Path("report.html")).find("<td>B\xFChne!</td>"), std::string::npos);
}

TEST_F(FrmReportTest, GenerateWritesRemembersShowsAndCloses) {
  OpenFor(Path("report.html"));
  Fill(TxtSite(), "Hall 3");
  Fill(TxtTester(), "A. Tester");
  Fill(TxtNotes(), "  short ");
  Click(Button("CommandGenerate"));
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(window->result(), QDialog::Accepted);
  const std::string html = ReadTextFile(Path("report.html"));
  EXPECT_NE(html.find("<td>" + Path("report.html") + "</td>"), std::string::npos);
  EXPECT_NE(html.find("<td>Hall 3</td>"), std::string::npos);
  EXPECT_NE(html.find("<td>A. Tester</td>"), std::string::npos);
  EXPECT_NE(html.find("<td>short</td>"), std::string::npos);
  EXPECT_EQ(store.Value("LastReportFile"), Path("report.html"));
  EXPECT_EQ(ReadTextFile(Path("rfields.ds")), "Hall 3\r\nA. Tester\r\n 1 \r\nshort\r\n");
  EXPECT_EQ(opener.documents, std::vector<std::string>{Path("report.html")});
  EXPECT_EQ(beeper.count, 0);
}

TEST_F(FrmReportTest, UncheckedReportIsNotShown) {
  OpenFor(Path("report.html"));
  CheckOpenReport().setFocus();
  Press(*window, Qt::Key_Space);
  EXPECT_FALSE(CheckOpenReport().isChecked());
  Press(*window, Qt::Key_G, Qt::AltModifier);
  EXPECT_TRUE(IsClosedSoon());
  EXPECT_TRUE(opener.documents.empty());
  EXPECT_EQ(ReadTextFile(Path("rfields.ds")), "\r\n\r\n 0 \r\n\r\n");
}

TEST_F(FrmReportTest, NotesAreWrittenUnchangedWithCrLfBetweenTheirLines) {
  OpenFor(Path("report.html"));
  // A line break within a paragraph, and blanks that do not break.
  const QString blank(QChar::Nbsp);
  TxtNotes().setPlainText("a" + blank + QStringLiteral("b\nc\u2028d"));
  Click(Button("CommandGenerate"));
  const std::string notes = "a" + qt::ToText(blank) + "b\r\nc\r\nd";
  EXPECT_NE(ReadTextFile(Path("report.html")).find("<td>" + notes + "</td>"), std::string::npos);
  EXPECT_EQ(ReadTextFile(Path("rfields.ds")), "\r\n\r\n 1 \r\n" + notes + "\r\n");
}

TEST_F(FrmReportTest, NotesGrowByAnEmptyLineEachTime) {
  std::string expected = "\r\n\r\n 1 \r\nabc\r\n";
  WriteTextFile(Path("rfields.ds"), expected);
  for (int round = 0; round < 3; ++round) {
    SCOPED_TRACE(round);
    OpenFor(Path("report" + std::to_string(round) + ".html"));
    Click(Button("CommandGenerate"));
    expected += "\r\n";
    EXPECT_EQ(ReadTextFile(Path("rfields.ds")), expected);
  }
}

TEST_F(FrmReportTest, EnterInATextBoxRunsGenerate) {
  for (const char* const name : {"TxtFileName", "TxtSite", "TxtTester", "TxtNotes"}) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
      SCOPED_TRACE(name);
      OpenFor("");
      BoxAnswer box(QMessageBox::Ok);
      Click(Find<QWidget>(*window, name));
      Press(*window, key);
      EXPECT_TRUE(box.HasCome());
      EXPECT_EQ(box.title, "File not specified");
      EXPECT_TRUE(window->isVisible());
    }
  }
}

TEST_F(FrmReportTest, EnterInTheNotesGeneratesFirstAndThenBreaksTheLine) {
  OpenFor("");
  Fill(TxtNotes(), "ab");
  Press(*window, Qt::Key_Left);
  QString during;
  BoxAnswer box(QMessageBox::Ok, [&] { during = TxtNotes().toPlainText(); });
  Press(*window, Qt::Key_Return);
  EXPECT_EQ(during, "ab");
  EXPECT_EQ(TxtNotes().toPlainText(), "a\nb");
}

TEST_F(FrmReportTest, EnterOnTheCheckBoxDoesNothing) {
  OpenFor(Path("report.html"));
  CheckOpenReport().setFocus();
  Press(*window, Qt::Key_Return);
  Press(*window, Qt::Key_Enter);
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(CheckOpenReport().isChecked());
  EXPECT_FALSE(Exists("report.html"));
}

TEST_F(FrmReportTest, EnterWithControlDoesNotGenerate) {
  OpenFor(Path("report.html"));
  Press(*window, Qt::Key_Return, Qt::ControlModifier);
  EXPECT_TRUE(window->isVisible());
  EXPECT_FALSE(Exists("report.html"));
}

TEST_F(FrmReportTest, EnterWithControlBreaksTheLineInTheNotes) {
  OpenFor(Path("report.html"));
  EXPECT_EQ(TxtNotes().placeholderText(), "Ctrl+Enter starts a new line.");
  EXPECT_EQ(TxtNotes().accessibleDescription(), "Ctrl+Enter starts a new line.");
  Fill(TxtNotes(), "ac");
  Press(*window, Qt::Key_Left);
  Press(*window, Qt::Key_Return, Qt::ControlModifier);
  Type(*window, "b");
  Press(*window, Qt::Key_Enter, Qt::ControlModifier | Qt::KeypadModifier);
  EXPECT_EQ(TxtNotes().toPlainText(), "a\nb\nc");
  EXPECT_FALSE(Exists("report.html"));
}

TEST_F(FrmReportTest, EscAndCancelCloseAndSaveNothing) {
  const auto close = std::to_array<void (*)(FrmReport&)>(
      {[](FrmReport& shown) { Press(shown, Qt::Key_Escape); },
       [](FrmReport& shown) { Press(shown, Qt::Key_C, Qt::AltModifier); },
       [](FrmReport& shown) { Click(Find<QPushButton>(shown, "CommandCancel")); },
       [](FrmReport& shown) { shown.close(); }});
  WriteTextFile(Path("rfields.ds"), "kept");
  for (const auto way : close) {
    OpenFor("kept.html");
    Fill(TxtSite(), "changed");
    way(*window);
    EXPECT_TRUE(IsClosedSoon());
    EXPECT_EQ(window->result(), QDialog::Rejected);
    EXPECT_EQ(ReadTextFile(Path("rfields.ds")), "kept");
    EXPECT_EQ(store.Value("LastReportFile"), "kept.html");
  }
}

TEST_F(FrmReportTest, TabFollowsTheReadingOrder) {
  Open();
  EXPECT_EQ(TabOrder(*window),
            "TxtFileName CommandBrowse TxtSite TxtTester TxtNotes CheckOpenReport "
            "CommandGenerate CommandCancel");
}

}  // namespace
}  // namespace kelvara::report
