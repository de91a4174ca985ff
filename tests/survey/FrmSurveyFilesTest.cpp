#include <gtest/gtest.h>

#include <QMessageBox>

#include "support/TemporaryFolder.h"
#include "survey/FrmSurveyRig.h"
#include "survey/SurveyRows.h"

namespace kelvara::test {
namespace {

/// A whole report: 29 lines, synchronised to antenna 1, which hears 2 and 6.
std::string Report(int phaseOf2, int phaseOf6) {
  std::string report = "rfps\r\n100ec5A301 Sync\r\n";
  report += "100ec5A302 Neighbour phase = " + std::to_string(phaseOf2) + "\r\n";
  report += "100ec5A306 Neighbour phase = " + std::to_string(phaseOf6) + "\r\n";
  for (int line = 5; line <= 29; ++line) {
    report += "\r\n";
  }
  return report;
}

class FrmSurveyFiles : public ::testing::Test {
 protected:
  FrmSurveyFiles() {
    for (int report = 0; report < 5; ++report) {
      rig.window.ProcessRfpsReport(Report(-20, -40));
    }
    rig.OpenSurvey();
  }

  std::string PathOf(const std::string& name) const { return folder.PathOf(name); }

  /// Presses a button, chooses a file, and expects a message box if there is a text for it.
  void ChooseFile(const char* button, const std::string& path, const std::string& message = "") {
    const ChooserUser user(path);
    if (message.empty()) {
      Click(Find<QPushButton>(rig.Survey(), button));
      return;
    }
    int boxes = 0;
    const WhenShown box("MsgBox", [&](QWidget& dialog) {
      ++boxes;
      EXPECT_NE(dynamic_cast<QMessageBox&>(dialog).text().toStdString().find(message),
                std::string::npos)
          << dynamic_cast<QMessageBox&>(dialog).text().toStdString();
      Press(dialog, Qt::Key_Return);
    });
    Click(Find<QPushButton>(rig.Survey(), button));
    EXPECT_EQ(boxes, 1);
  }

  TemporaryFolder folder;
  FrmSurveyRig rig;
};

TEST_F(FrmSurveyFiles, SavesTheSurveyThatItShows) {
  ChooseFile("CmdSaveSurvey", PathOf("survey.html"));
  const std::string html = rig.files.files[PathOf("survey.html")];
  EXPECT_NE(html.find("<h1>Survey of the active antennas</h1>"), std::string::npos);
  EXPECT_NE(html.find("5 reports, 3 antennas"), std::string::npos);
  EXPECT_EQ(html.find("Changes since"), std::string::npos);
}

TEST_F(FrmSurveyFiles, SavesNothingOnCancel) {
  ChooseFile("CmdSaveSurvey", "");
  EXPECT_TRUE(rig.files.files.empty());
}

TEST_F(FrmSurveyFiles, AFolderThatCannotBeWrittenIsOneMessageAndTheWindowStays) {
  rig.files.unopenable[PathOf("survey.html")] = true;
  ChooseFile("CmdSaveSurvey", PathOf("survey.html"), "The survey was not saved");
  EXPECT_TRUE(rig.Survey().isVisible());
}

TEST_F(FrmSurveyFiles, AFullDiskIsOneMessageAndTheWindowStays) {
  rig.files.writesLeft = 0;
  ChooseFile("CmdSaveSurvey", PathOf("survey.html"), "cannot write");
  EXPECT_TRUE(rig.Survey().isVisible());
}

TEST_F(FrmSurveyFiles, ComparesWithARecordedSession) {
  std::string earlier;
  for (int report = 0; report < 5; ++report) {
    earlier += Report(-20, -20);
  }
  rig.files.files[PathOf("spring.txt")] = earlier;
  EXPECT_TRUE(rig.Table().isColumnHidden(survey::kChangeColumn));
  EXPECT_FALSE(Find<QLabel>(rig.Survey(), "Label8").isVisible());
  ChooseFile("CmdCompare", PathOf("spring.txt"));
  EXPECT_FALSE(rig.Table().isColumnHidden(survey::kChangeColumn));
  EXPECT_TRUE(Find<QLabel>(rig.Survey(), "Label8").isVisible());
  EXPECT_EQ(rig.Text("Label8"), "Since spring.txt: 06 is 580 m shorter, of 3 antennas in both.");
  EXPECT_EQ(FrmSurveyRig::Column(rig.Table(), survey::kChangeColumn), "0 -580 changed 0");
  ChooseFile("CmdSaveSurvey", PathOf("survey.html"));
  EXPECT_NE(rig.files.files[PathOf("survey.html")].find("Changes since spring.txt"),
            std::string::npos);
}

TEST_F(FrmSurveyFiles, ComparesWithJsonResults) {
  rig.files.files[PathOf("spring.json")] =
      R"({"reports":5,"aas":[{"rpn":1,"fps":1,"fpn":1},{"rpn":2,"fps":1,"fpn":1},)"
      R"({"rpn":6,"fps":1,"fpn":1}],"cells":[)"
      R"({"from":0,"to":1,"sum":100,"count":5,"max":20,"min":20},)"
      R"({"from":0,"to":2,"sum":200,"count":5,"max":40,"min":40}]})";
  ChooseFile("CmdCompare", PathOf("spring.json"));
  EXPECT_EQ(rig.Text("Label8"), "Since spring.json: none of the 3 antennas in both has changed.");
}

TEST_F(FrmSurveyFiles, AFileThatCannotBeComparedIsOneMessageAndChangesNothing) {
  rig.files.files[PathOf("other.txt")] =
      "rfps\r\n100ec5A351 Sync\r\n100ec5A352 Neighbour phase = 4\r\n" + std::string(26, '\n');
  rig.files.files[PathOf("empty.txt")] = "";
  rig.files.files[PathOf("bad.json")] = "{}";
  rig.files.files[PathOf("log.csv")] = "File Created by Kelvara\r\n";
  for (const auto& [name, message] :
       {std::pair{"missing.txt", "no file"},
        {"other.txt", "No antenna is in the main part of both \"other.txt\" and this survey."},
        {"empty.txt", "holds no report of an antenna"},
        {"bad.json", "has not the form of the results"},
        {"log.csv", "CSV results that Kelvara wrote, not a recorded session"}}) {
    ChooseFile("CmdCompare", PathOf(name), message);
    EXPECT_TRUE(rig.Survey().isVisible());
    EXPECT_TRUE(rig.Table().isColumnHidden(survey::kChangeColumn)) << name;
  }
}

TEST_F(FrmSurveyFiles, TheReportHasTheSameBytesWithAndWithoutASurvey) {
  ASSERT_TRUE(rig.window.GenerateReport("with", "Site", "Tester", "Notes"));
  Press(rig.Survey(), Qt::Key_Escape);
  ASSERT_TRUE(Closes(rig.Survey()));
  FrmMainRig plain;
  for (int report = 0; report < 5; ++report) {
    plain.window.ProcessRfpsReport(Report(-20, -40));
  }
  ASSERT_TRUE(plain.window.GenerateReport("with", "Site", "Tester", "Notes"));
  EXPECT_EQ(rig.files.files["with"], plain.files.files["with"]);
}

TEST_F(FrmSurveyFiles, TheProgramMayEndWhileTheChooserIsOpen) {
  const WhenShown chooser("CommonDialog1", [this](QWidget& dialog) {
    rig.window.close();
    dialog.close();
  });
  Click(Find<QPushButton>(rig.Survey(), "CmdSaveSurvey"));
  EXPECT_TRUE(rig.files.files.empty());
}

}  // namespace
}  // namespace kelvara::test
