#include "report/ReportDialog.h"

#include <gtest/gtest.h>

#include <vector>

#include "report/ReportRig.h"
#include "support/DesktopDoubles.h"
#include "support/Faults.h"

namespace kelvara::report {
namespace {

using platform::FileChooserKind;
using platform::MessageAnswer;
using platform::MessageButtons;
using platform::MessageIcon;

constexpr const char* kRememberedPath = "C:\\Program\\rfields.ds";

class ReportDialogTest : public ::testing::Test, public test::ReportRig {
 protected:
  ReportDialogTest() { FillWithTwoAntennas(); }

  bool GenerateTo(const std::string& fileName) {
    return dialog.CommandGenerate_Click(fileName, {"a site", "a tester", true, "notes"});
  }
  bool IsRemembered() const { return files.files.count(kRememberedPath) > 0; }

  ReportDialog dialog{model, syncReport, desktop};
};

TEST_F(ReportDialogTest, WithoutAntennasOneBoxSaysSo) {
  model.Clear();
  EXPECT_FALSE(dialog.HasPhaseInformation());
  ASSERT_EQ(boxes.boxes.size(), 1U);
  EXPECT_EQ(boxes.boxes[0].text, "No phase information has been captured.");
  EXPECT_EQ(boxes.boxes[0].title, "Report Can't Be Generated");
  EXPECT_EQ(boxes.boxes[0].icon, MessageIcon::Exclamation);
  EXPECT_EQ(boxes.boxes[0].buttons, MessageButtons::Ok);
  EXPECT_FALSE(IsRemembered());
}

TEST_F(ReportDialogTest, WithAnAntennaThereIsNoBox) {
  EXPECT_TRUE(dialog.HasPhaseInformation());
  EXPECT_TRUE(boxes.boxes.empty());
}

TEST_F(ReportDialogTest, StartsWithTheLastReportAndTheRememberedFields) {
  store.SetValue("LastFile", "C:\\logs\\log.txt");
  store.SetValue("LastReportFile", "C:\\sites\\hall.html");
  files.files[kRememberedPath] = "s\r\nt\r\n 0 \r\nn\r\n";
  ReportFields fields;
  EXPECT_EQ(dialog.Form_Load(fields), "C:\\sites\\hall.html");
  EXPECT_EQ(fields.site, "s");
  EXPECT_EQ(fields.tester, "t");
  EXPECT_FALSE(fields.showReport);
  EXPECT_EQ(fields.notes, "n\r\n");
}

TEST_F(ReportDialogTest, BrowseLooksInTheFolderOfTheLastCapture) {
  store.SetValue("LastFile", "C:\\logs\\log.txt");
  store.SetValue("LastReportFile", "C:\\sites\\hall.html");
  chooser.answer = "C:\\logs\\hall.html";
  EXPECT_EQ(dialog.CommandBrowse_Click(), "C:\\logs\\hall.html");
  ASSERT_EQ(chooser.requests.size(), 1U);
  EXPECT_EQ(chooser.requests[0].kind, FileChooserKind::Save);
  EXPECT_EQ(chooser.requests[0].title, "Select a file to write to");
  EXPECT_EQ(chooser.requests[0].filter, "HTML File (*.html)|*.html|");
  EXPECT_EQ(chooser.requests[0].initialFolder, "C:\\logs");
  EXPECT_EQ(chooser.requests[0].initialName, "");
  EXPECT_EQ(store.Value("LastReportFile"), "C:\\sites\\hall.html");
}

TEST_F(ReportDialogTest, BrowseOffersANameWithTheDateForTheFirstReport) {
  clock.wall = 20778.99;  // 21 November 2026, close to midnight.
  dialog.CommandBrowse_Click();
  clock.wall = 20820.0;
  dialog.CommandBrowse_Click();
  ASSERT_EQ(chooser.requests.size(), 2U);
  EXPECT_EQ(chooser.requests[0].initialName, "Kelvara 2026-11-21.html");
  EXPECT_EQ(chooser.requests[1].initialName, "Kelvara 2027-01-02.html");
}

TEST_F(ReportDialogTest, BrowseWithoutALastCaptureHasNoFolder) {
  EXPECT_EQ(dialog.CommandBrowse_Click(), std::nullopt);
  ASSERT_EQ(chooser.requests.size(), 1U);
  EXPECT_EQ(chooser.requests[0].initialFolder, "");
}

TEST_F(ReportDialogTest, LastCaptureWithoutAFolderShowsNoChooser) {
  store.SetValue("LastFile", "log.txt");
  chooser.answer = "C:\\x.html";
  EXPECT_EQ(dialog.CommandBrowse_Click(), std::nullopt);
  EXPECT_TRUE(chooser.requests.empty());
  EXPECT_TRUE(boxes.boxes.empty());
}

TEST_F(ReportDialogTest, ChooserThatFailsCountsAsCancelled) {
  chooser.failing = true;
  EXPECT_EQ(dialog.CommandBrowse_Click(), std::nullopt);
}

TEST_F(ReportDialogTest, GenerateWritesRemembersShowsAndCloses) {
  const ReportFields fields{" a site ", "a tester", true, "  one\r\ntwo "};
  EXPECT_TRUE(dialog.CommandGenerate_Click("report.html", fields));
  EXPECT_EQ(HtmlAfter("<td><b>Site</b></td>\r\n", "<td> a site </td>"), "<td> a site </td>");
  EXPECT_EQ(HtmlAfter("<td><b>Notes</b></td>\r\n", "<td>one\r\ntwo</td>"), "<td>one\r\ntwo</td>");
  EXPECT_EQ(store.Value("LastReportFile"), "report.html");
  EXPECT_EQ(files.files[kRememberedPath], " a site \r\na tester\r\n 1 \r\none\r\ntwo\r\n");
  EXPECT_EQ(opener.documents, std::vector<std::string>{"report.html"});
  EXPECT_TRUE(boxes.boxes.empty());
}

TEST_F(ReportDialogTest, ReportIsShownOnlyWhenAskedFor) {
  EXPECT_TRUE(dialog.CommandGenerate_Click("report.html", {"", "", false, ""}));
  EXPECT_TRUE(opener.documents.empty());
  EXPECT_EQ(files.files[kRememberedPath], "\r\n\r\n 0 \r\n\r\n");
}

TEST_F(ReportDialogTest, AsksBeforeAFileIsReplaced) {
  files.files["report.html"] = "old";
  boxes.answer = MessageAnswer::No;
  EXPECT_FALSE(GenerateTo("report.html"));
  ASSERT_EQ(boxes.boxes.size(), 1U);
  EXPECT_EQ(boxes.boxes[0].text, "report.html already exists.\r\n\r\nDo you want to replace it?");
  EXPECT_EQ(boxes.boxes[0].title, "Generate Report");
  EXPECT_EQ(boxes.boxes[0].icon, MessageIcon::Exclamation);
  EXPECT_EQ(boxes.boxes[0].buttons, MessageButtons::YesNo);
  EXPECT_EQ(Html(), "old");
  EXPECT_EQ(store.Value("LastReportFile"), "");
  EXPECT_FALSE(IsRemembered());
  EXPECT_TRUE(opener.documents.empty());

  boxes.answer = MessageAnswer::Yes;
  EXPECT_TRUE(GenerateTo("report.html"));
  EXPECT_EQ(HtmlFrom("<!DOCTYPE"), Html());
  EXPECT_EQ(boxes.boxes.size(), 2U);
}

TEST_F(ReportDialogTest, UnreadableFileIsNotAskedAbout) {
  files.files["report.html"] = "old";
  files.unopenable["report.html"] = true;
  EXPECT_FALSE(GenerateTo("report.html"));
  // The box about the report that cannot be written, and no question before it.
  ASSERT_EQ(boxes.boxes.size(), 1U);
  EXPECT_EQ(boxes.boxes[0].buttons, MessageButtons::Ok);
}

TEST_F(ReportDialogTest, EmptyFileNameShowsOneBox) {
  EXPECT_FALSE(GenerateTo(""));
  ASSERT_EQ(boxes.boxes.size(), 1U);
  EXPECT_EQ(boxes.boxes[0].text, "A filename must be specified\r\nCan't generate report.");
  EXPECT_EQ(boxes.boxes[0].title, "File not specified");
  EXPECT_EQ(boxes.boxes[0].icon, MessageIcon::Exclamation);
  EXPECT_EQ(boxes.boxes[0].buttons, MessageButtons::Ok);
  EXPECT_TRUE(files.files.empty());
}

TEST_F(ReportDialogTest, ReportThatFailsSavesNothing) {
  files.writesLeft = 0;
  EXPECT_FALSE(GenerateTo("report.html"));
  ASSERT_EQ(boxes.boxes.size(), 1U);
  EXPECT_EQ(boxes.boxes[0].text,
            "Error occured while generating report.\r\nCheck the filename and path");
  EXPECT_EQ(boxes.boxes[0].title, "Generate Report");
  EXPECT_EQ(boxes.boxes[0].icon, MessageIcon::Critical);
  EXPECT_EQ(store.Value("LastReportFile"), "");
  EXPECT_FALSE(IsRemembered());
  EXPECT_TRUE(opener.documents.empty());
}

TEST_F(ReportDialogTest, TooManyAntennasToListAreAFaultForTheCaller) {
  for (std::int16_t rpn = 100; model.AaCount() < 51; ++rpn) {
    model.FindOrAddAa(rpn, 0, 0);
  }
  EXPECT_THROW(model.FindOrAddAa(99, 0, 0), base::Fault);
  EXPECT_TRUE(dialog.HasPhaseInformation());
  EXPECT_EQ(test::FaultOf([this] { GenerateTo("report.html"); }), base::FaultKind::Subscript);
  EXPECT_TRUE(files.files.empty());
  EXPECT_TRUE(boxes.boxes.empty());
}

TEST_F(ReportDialogTest, BrowserThatCannotBeStartedShowsOneBoxAfterEverythingIsSaved) {
  opener.answer = false;
  EXPECT_TRUE(GenerateTo("report.html"));
  ASSERT_EQ(boxes.boxes.size(), 1U);
  EXPECT_EQ(boxes.boxes[0].text, "Could not open the HTML formatted report.");
  EXPECT_EQ(boxes.boxes[0].title, "Web Browser Error");
  EXPECT_EQ(boxes.boxes[0].icon, MessageIcon::Critical);
  EXPECT_EQ(boxes.boxes[0].buttons, MessageButtons::Ok);
  EXPECT_EQ(store.Value("LastReportFile"), "report.html");
  EXPECT_TRUE(IsRemembered());
}

TEST_F(ReportDialogTest, FieldsThatCannotBeRememberedDoNotStopTheReport) {
  files.unopenable[kRememberedPath] = true;
  EXPECT_TRUE(GenerateTo("report.html"));
  EXPECT_TRUE(boxes.boxes.empty());
  EXPECT_EQ(opener.documents.size(), 1U);
}

TEST_F(ReportDialogTest, EmptyNotesOfADemoBeginWithALineThatSaysSo) {
  dialog.SetDemo();
  for (const char* const remembered : {"", "s\r\nt\r\n 1 \r\n\r\n", "s\r\nt\r\n 1 \r\n \r\n\r\n"}) {
    if (*remembered != '\0') {
      files.files[kRememberedPath] = remembered;
    }
    ReportFields fields;
    dialog.Form_Load(fields);
    EXPECT_EQ(fields.notes, "Demo: simulated readings.");
  }
}

TEST_F(ReportDialogTest, NotesRememberedInADemoStayAsTheyAre) {
  dialog.SetDemo();
  files.files[kRememberedPath] = "s\r\nt\r\n 1 \r\nmine\r\n";
  ReportFields fields;
  dialog.Form_Load(fields);
  EXPECT_EQ(fields.notes, "mine\r\n");
}

TEST_F(ReportDialogTest, TheLineOfADemoIsReportedButNeverRemembered) {
  struct Case {
    const char* notes;
    const char* remembered;
  };
  boxes.answer = MessageAnswer::Yes;
  dialog.SetDemo();
  for (const Case& c :
       {Case{"Demo: simulated readings.", ""}, Case{"Demo: simulated readings.\r\n", ""},
        Case{"Demo: simulated readings.\r\none\r\ntwo", "one\r\ntwo"},
        Case{"Demo: simulated readings. one", "one"},
        Case{"one Demo: simulated readings.\r\ntwo", "one \r\ntwo"},
        Case{"one\r\nDemo: simulated readings.\r\ntwo", "one\r\ntwo"}, Case{"one", "one"},
        Case{"", ""}}) {
    EXPECT_TRUE(dialog.CommandGenerate_Click("report.html", {"s", "t", false, c.notes}));
    EXPECT_EQ(files.files[kRememberedPath],
              "s\r\nt\r\n 0 \r\n" + std::string(c.remembered) + "\r\n");
    const std::string notes = c.notes;
    EXPECT_EQ(Html().find("Demo: simulated readings.") != std::string::npos,
              notes.find("Demo:") != std::string::npos);
  }
}

TEST_F(ReportDialogTest, WithoutADemoNotesAreRememberedAsTyped) {
  const std::string notes = "Demo: simulated readings.";
  EXPECT_TRUE(dialog.CommandGenerate_Click("report.html", {"s", "t", false, notes}));
  EXPECT_EQ(files.files[kRememberedPath], "s\r\nt\r\n 0 \r\n" + notes + "\r\n");
}

}  // namespace
}  // namespace kelvara::report
