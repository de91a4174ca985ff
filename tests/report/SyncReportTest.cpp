#include "report/SyncReport.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "report/ReportRig.h"
#include "support/Golden.h"

namespace kelvara::report {
namespace {

using test::Lines;

class SyncReportTest : public ::testing::Test, public test::ReportRig {
 protected:
  void ExpectGolden(const std::string& name, const std::string& site, const std::string& tester,
                    const std::string& notes) {
    EXPECT_TRUE(syncReport.GenerateReport("C:\\sites\\dock.html", site, tester, notes));
    const std::string expected =
        test::Golden(name, {{"@FILE@", "C:\\sites\\dock.html"}, {"@DATE@", "day20000"}});
    test::ExpectSameText(files.files["C:\\sites\\dock.html"], expected);
    EXPECT_TRUE(boxes.boxes.empty());
    EXPECT_EQ(files.openFiles, 0);
  }

  void ExpectGolden(const std::string& name) {
    ExpectGolden(name, "Dock & Crane <North>", "A. \"Al\" Tester",
                 "  first line\r\n  second line   ");
  }
};

TEST_F(SyncReportTest, FourAntennasWithoutFps) {
  test::FillModel(model, "four-antennas.readings");
  ExpectGolden("report-four-antennas-fps-off.html");
}

TEST_F(SyncReportTest, FourAntennasWithFps) {
  test::FillModel(model, "four-antennas.readings");
  options.fpsShown = true;
  ExpectGolden("report-four-antennas-fps-on.html");
}

TEST_F(SyncReportTest, NoAntennaAtAll) {
  options.fpsShown = true;
  ExpectGolden("report-empty.html", "", "", "");
}

TEST_F(SyncReportTest, AFullModel) {
  test::FillModel(model, "fifty-one-antennas.readings");
  ASSERT_EQ(model.AaCount(), 51);
  options.fpsShown = true;
  ExpectGolden("report-fifty-one-antennas-fps-on.html");
}

TEST_F(SyncReportTest, TwoAntennasThatHearEachOther) {
  FillWithTwoAntennas();
  ASSERT_TRUE(Generate());
  const std::string cables =
      Lines({"", "<tr>", "<td width=75>02</td>", "<td width=75>00</td>", "<td width=75>7</td>",
             "<td width=75>642</td>", "<td width=75>0</td>", "</tr>", "<tr>",
             "<td width=75>02</td>", "<td width=75>01</td>", "<td width=75>13</td>",
             "<td width=75>678</td>", "<td width=75>260</td>", "</tr>", "</tbody></p>"});
  EXPECT_EQ(HtmlAfter("<td><b>Cable Length(m)</b></td>\r\n</tr>", cables), cables);
  const std::string phases =
      Lines({"", "<tr>", "<td width=40><b>RPN</b></td>", "<td width=40><b><b>13</b></td>",
             "<td width=40><b><b>7</b></td>", "</tr>", "<tr>", "<td width=40><b>13</b></td>",
             "<td bgcolor=\"#c0c0c0\" width=40>&nbsp</td>", "<td width=40>9</td>", "</tr>", "<tr>",
             "<td width=40><b>7</b></td>", "<td width=40>-8</td>",
             "<td bgcolor=\"#c0c0c0\" width=40>&nbsp</td>", "</tr>", "</tbody></p>"});
  EXPECT_EQ(HtmlAfter("cellSpacing=0> \r\n<tbody>", phases), phases);
}

TEST_F(SyncReportTest, FpsIsInTheHeadersOfThePhaseTable) {
  FillWithTwoAntennas();
  options.fpsShown = true;
  ASSERT_TRUE(Generate());
  EXPECT_NE(Html().find("<td width=40><b><b>13 [1]</b></td>\r\n"), std::string::npos);
  EXPECT_NE(Html().find("<td width=40><b>13 [1]</b></td>\r\n"), std::string::npos);
  EXPECT_NE(Html().find("<td width=75>13</td>\r\n"), std::string::npos);
}

TEST_F(SyncReportTest, TheFpsOptionIsReadAtEachReport) {
  FillWithTwoAntennas();
  ASSERT_TRUE(Generate());
  EXPECT_EQ(Html().find("13 [1]"), std::string::npos);
  options.fpsShown = true;
  ASSERT_TRUE(Generate());
  EXPECT_NE(Html().find("13 [1]"), std::string::npos);
}

TEST_F(SyncReportTest, RpnsAreDecimalWhateverTheBase) {
  model.FindOrAddAa(200, 10, 0);
  options.rpnHex = true;
  options.units = sync::PhaseUnits::Metres;
  options.fpsShown = true;
  ASSERT_TRUE(Generate());
  EXPECT_NE(Html().find("<td width=75>200</td>\r\n"), std::string::npos);
  EXPECT_NE(Html().find("<td width=40><b>200 [A]</b></td>\r\n"), std::string::npos);
}

TEST_F(SyncReportTest, ErrorsInTheMarkupAreKept) {
  FillWithTwoAntennas();
  ASSERT_TRUE(Generate());
  EXPECT_NE(Html().find("\r\n<meta name=Generator content=\"Kelvara v1.1.0>\r\n"),
            std::string::npos);
  EXPECT_NE(HtmlFrom("Relative Phase Data")
                .find("\r\n<table border=1 cellPadding=5 cellSpacing=0> \r\n<tbody>\r\n"),
            std::string::npos);
  EXPECT_NE(
      HtmlFrom("Cable Lengths").find("</tr>\r\n</tbody></p>\r\n</table></p>\r\n<hr size = 1>"),
      std::string::npos);
  EXPECT_NE(HtmlFrom("Relative Phase Data")
                .find("</tr>\r\n</tbody></p>\r\n</table></p>\r\n<p><hr size = 1>\r\n"),
            std::string::npos);
  EXPECT_NE(Html().find("<td width=40><b><b>13</b></td>"), std::string::npos);
  EXPECT_EQ(Html().find("&nbsp;"), std::string::npos);
}

TEST_F(SyncReportTest, EveryLineEndsInCrLf) {
  FillWithTwoAntennas();
  ASSERT_TRUE(Generate());
  EXPECT_EQ(Html().substr(Html().size() - 9), "</html>\r\n");
  for (std::size_t place = Html().find('\n'); place != std::string::npos;
       place = Html().find('\n', place + 1)) {
    ASSERT_EQ(Html()[place - 1], '\r') << place;
  }
  EXPECT_EQ(std::count(Html().begin(), Html().end(), '\r'),
            std::count(Html().begin(), Html().end(), '\n'));
}

TEST_F(SyncReportTest, BlanksAtTheEndsOfNotesAreRemoved) {
  ASSERT_TRUE(Generate("   two  words  "));
  EXPECT_NE(Html().find("<td><b>Notes</b></td>\r\n<td>two  words</td>\r\n"), std::string::npos);
}

TEST_F(SyncReportTest, NotesOfOnlyBlanksAreEmpty) {
  ASSERT_TRUE(Generate("    "));
  EXPECT_NE(Html().find("<td><b>Notes</b></td>\r\n<td></td>\r\n"), std::string::npos);
}

TEST_F(SyncReportTest, OnlyBlanksAreTrimmed) {
  ASSERT_TRUE(Generate(" \t x \r\n"));
  EXPECT_NE(Html().find("<td><b>Notes</b></td>\r\n<td>\t x \r\n</td>\r\n"), std::string::npos);
}

TEST_F(SyncReportTest, LineBreaksInsideNotesStay) {
  ASSERT_TRUE(Generate("one\r\ntwo\nthree"));
  EXPECT_NE(Html().find("<td>one\r\ntwo\nthree</td>\r\n"), std::string::npos);
}

TEST_F(SyncReportTest, UserTextsAreWrittenUnchanged) {
  const std::string latin("caf\xE9 <b>&amp;\"\0 ", 16);
  ASSERT_TRUE(syncReport.GenerateReport(" <r>.html", latin, " " + latin, latin));
  const std::string& html = files.files[" <r>.html"];
  EXPECT_NE(html.find("<td> <r>.html</td>\r\n"), std::string::npos);
  EXPECT_NE(html.find("<td><b>Site</b></td>\r\n<td>" + latin + "</td>\r\n"), std::string::npos);
  EXPECT_NE(html.find("<td><b>Tester</b></td>\r\n<td> " + latin + "</td>\r\n"), std::string::npos);
  EXPECT_EQ(html.substr(0, 9), "<!DOCTYPE");
}

TEST_F(SyncReportTest, TheDateIsTheShortDateOfTheWallTime) {
  clock.now = 1;
  clock.wall = 20123.9;
  ASSERT_TRUE(Generate());
  EXPECT_NE(Html().find("<td><b>Date</b></td>\r\n<td>day20123</td>\r\n"), std::string::npos);
  EXPECT_NE(Html().find("<font size=-1><i>Generated by Kelvara v1.1.0 on day20123</i></font>\r\n"),
            std::string::npos);
}

TEST_F(SyncReportTest, AnExistingFileIsReplaced) {
  ASSERT_TRUE(Generate());
  const std::string fresh = Html();
  files.files["report.html"] = std::string(100000, 'x');
  ASSERT_TRUE(Generate());
  EXPECT_EQ(Html(), fresh);
}

TEST_F(SyncReportTest, FpnsOfMoreThanTwoDigitsAreNotCut) {
  model.FindOrAddAa(1, 0, 255);
  model.FindOrAddAa(2, 0, 5);
  model.FindOrAddAa(3, 0, 256);
  ASSERT_TRUE(Generate());
  EXPECT_NE(Html().find("<tr>\r\n<td width=75>FF</td>\r\n<td width=75>00</td>\r\n"
                        "<td width=75>1</td>\r\n"),
            std::string::npos);
  EXPECT_NE(Html().find("<td width=75>05</td>\r\n"), std::string::npos);
  EXPECT_NE(Html().find("<td width=75>100</td>\r\n"), std::string::npos);
}

TEST_F(SyncReportTest, PortNumbersWrapAfterRpn63) {
  model.FindOrAddAa(64, 0, 0);
  model.FindOrAddAa(63, 0, 0);
  ASSERT_TRUE(Generate());
  EXPECT_NE(Html().find("<td width=75>63</td>\r\n<td width=75>978</td>\r\n"), std::string::npos);
  EXPECT_NE(Html().find("<td width=75>64</td>\r\n<td width=75>200</td>\r\n"), std::string::npos);
}

TEST_F(SyncReportTest, MeansAreRoundedHalfToEven) {
  model.FindOrAddAa(1, 0, 0);
  model.FindOrAddAa(2, 0, 0);
  model.AddPhase(0, 1, 3);
  model.AddPhase(0, 1, 4);
  model.AddPhase(1, 0, -2);
  model.AddPhase(1, 0, -3);
  ASSERT_TRUE(Generate());
  EXPECT_NE(Html().find("<td width=40>4</td>\r\n"), std::string::npos);
  EXPECT_NE(Html().find("<td width=40>-2</td>\r\n"), std::string::npos);
}

}  // namespace
}  // namespace kelvara::report
