#include <gtest/gtest.h>

#include "base/Fault.h"
#include "report/ReportRig.h"
#include "report/SyncReport.h"
#include "support/Golden.h"

namespace kelvara::report {
namespace {

using base::Fault;

class SyncReportFaultsTest : public ::testing::Test, public test::ReportRig {
 protected:
  /// Expects the one box that every failure shows from the opening of the file on.
  void ExpectFailureBox() {
    ASSERT_EQ(boxes.boxes.size(), 1U);
    EXPECT_EQ(boxes.boxes[0].text,
              "Error occured while generating report.\r\nCheck the filename and path");
    EXPECT_EQ(boxes.boxes[0].title, "Generate Report");
    EXPECT_EQ(boxes.boxes[0].icon, platform::MessageIcon::Critical);
    EXPECT_EQ(boxes.boxes[0].buttons, platform::MessageButtons::Ok);
    EXPECT_EQ(files.openFiles, 0);
  }

  void ExpectEndsAfterTheSummary() {
    const std::string summaryEnd = "</table>\r\n</p>\r\n<hr size = 1>\r\n";
    ASSERT_GE(Html().size(), summaryEnd.size());
    EXPECT_EQ(Html().substr(Html().size() - summaryEnd.size()), summaryEnd);
    EXPECT_NE(Html().find("<td><b>Notes</b></td>"), std::string::npos);
  }
};

TEST_F(SyncReportFaultsTest, AFileThatCannotBeOpenedShowsOneBox) {
  files.unopenable["report.html"] = true;
  EXPECT_FALSE(Generate());
  ExpectFailureBox();
  EXPECT_EQ(files.files.count("report.html"), 0U);
}

TEST_F(SyncReportFaultsTest, AWriteThatFailsKeepsWhatWasWritten) {
  test::FillModel(model, "fifty-one-antennas.readings");
  ASSERT_TRUE(Generate());
  const std::string whole = Html();
  int failures = 0;
  for (;; ++failures) {
    SCOPED_TRACE(failures);
    boxes.boxes.clear();
    files.writesLeft = failures;
    if (Generate()) {
      break;
    }
    ExpectFailureBox();
    EXPECT_LT(Html().size(), whole.size());
    EXPECT_EQ(Html(), whole.substr(0, Html().size()));
    EXPECT_EQ(Html().empty(), failures == 0);
  }
  EXPECT_GT(failures, 0);
  EXPECT_EQ(Html(), whole);
}

TEST_F(SyncReportFaultsTest, ADelayBeyond16BitsEndsTheFileAfterTheSummary) {
  model.FindOrAddAa(1, 0, 0);
  model.FindOrAddAa(2, 0, 0);
  model.AddPhase(0, 1, 32767);
  model.AddPhase(1, 0, -32767);
  EXPECT_FALSE(Generate());
  ExpectFailureBox();
  ExpectEndsAfterTheSummary();
}

TEST_F(SyncReportFaultsTest, ALagThatCannotBeNegatedEndsTheFileAfterTheSummary) {
  model.FindOrAddAa(1, 0, 0);
  model.FindOrAddAa(2, 0, 0);
  model.AddPhase(0, 1, -32768);
  EXPECT_FALSE(Generate());
  ExpectFailureBox();
  ExpectEndsAfterTheSummary();
}

TEST_F(SyncReportFaultsTest, APortNumberBeyond16BitsEndsTheFileInItsRow) {
  model.FindOrAddAa(5362, 0, 0);
  model.FindOrAddAa(1, 0, 0);
  EXPECT_FALSE(Generate());
  ExpectFailureBox();
  const std::string cables = HtmlFrom("Active Antenna Cable Lengths");
  EXPECT_NE(cables.find("<td width=75>1</td>\r\n<td width=75>606</td>\r\n"), std::string::npos);
  EXPECT_EQ(cables.find("</tbody>"), std::string::npos);
}

TEST_F(SyncReportFaultsTest, AFaultAndAFailedWriteStillShowOneBox) {
  model.FindOrAddAa(1, 0, 0);
  model.FindOrAddAa(2, 0, 0);
  model.AddPhase(0, 1, -32768);
  files.writesLeft = 0;
  EXPECT_FALSE(Generate());
  ExpectFailureBox();
}

TEST_F(SyncReportFaultsTest, TooManyAntennasAreAFaultBeforeTheFileIsOpened) {
  for (std::int16_t rpn = 0; rpn < 51; ++rpn) {
    model.FindOrAddAa(rpn, 0, 0);
  }
  EXPECT_THROW(model.FindOrAddAa(51, 0, 0), Fault);
  ASSERT_EQ(model.AaCount(), 52);
  files.files["report.html"] = "an older report";
  try {
    Generate();
    ADD_FAILURE() << "no fault";
  } catch (const Fault& fault) {
    EXPECT_EQ(fault.Kind(), base::FaultKind::Subscript);
  }
  EXPECT_EQ(Html(), "an older report");
  EXPECT_TRUE(boxes.boxes.empty());
}

TEST_F(SyncReportFaultsTest, TheNextReportAfterAFailureIsWhole) {
  FillWithTwoAntennas();
  ASSERT_TRUE(Generate());
  const std::string whole = Html();
  files.writesLeft = 0;
  ASSERT_FALSE(Generate());
  files.writesLeft.reset();
  EXPECT_TRUE(Generate());
  EXPECT_EQ(Html(), whole);
}

}  // namespace
}  // namespace kelvara::report
