#include "report/TestReport.h"

#include <gtest/gtest.h>

#include <vector>

#include "report/ReportRig.h"
#include "support/DesktopDoubles.h"

namespace kelvara::report {
namespace {

class TestReportTest : public ::testing::Test, public test::ReportRig {
 protected:
  bool Run() {
    return testReport.Run([this] { model.Clear(); });
  }
  const std::string& TestHtml() { return files.files["C:\\Program/test.html"]; }
  bool Has(const std::string& text) { return TestHtml().find(text) != std::string::npos; }

  TestReport testReport{model, syncReport, desktop};
};

TEST_F(TestReportTest, FillsTheModelWithTheFixedData) {
  FillWithTwoAntennas();
  ASSERT_TRUE(Run());
  ASSERT_EQ(model.AaCount(), 4);
  for (std::int16_t aa = 0; aa < 4; ++aa) {
    EXPECT_EQ(model.AaRpn(aa), aa);
    EXPECT_EQ(model.AaFps(aa), 0);
    EXPECT_EQ(model.AaFpn(aa), 0);
  }
  const int sums[4][4] = {{0, 3, 0, 0}, {-10, 0, -10, -10}, {0, 10, 0, 0}, {0, 10, 0, 0}};
  for (int from = 0; from < 4; ++from) {
    for (int to = 0; to < 4; ++to) {
      SCOPED_TRACE(std::to_string(from) + " to " + std::to_string(to));
      EXPECT_EQ(model.Cell(from, to).Sum, sums[from][to]);
      EXPECT_EQ(model.Cell(from, to).Count, from == to ? 0 : 1);
    }
  }
}

TEST_F(TestReportTest, ClearsByTheOperationGivenBeforeItFills) {
  int clears = 0;
  testReport.Run([&] {
    ++clears;
    EXPECT_EQ(model.AaCount(), 0);
    EXPECT_TRUE(files.files.empty());
  });
  EXPECT_EQ(clears, 1);
  EXPECT_EQ(model.AaCount(), 4);
}

TEST_F(TestReportTest, WritesAndOpensTestHtmlInTheProgramsFolder) {
  ASSERT_TRUE(Run());
  EXPECT_EQ(files.files.size(), 1U);
  EXPECT_TRUE(Has("<td>C:\\Program/test.html</td>"));
  EXPECT_TRUE(Has("<td>HGC</td>"));
  EXPECT_TRUE(Has("<td>Marro</td>"));
  EXPECT_TRUE(Has("<td>Test with automatically generated data</td>"));
  EXPECT_TRUE(Has("<td width=40>-10</td>"));
  EXPECT_EQ(opener.documents, std::vector<std::string>{"C:\\Program/test.html"});
  EXPECT_TRUE(boxes.boxes.empty());
}

TEST_F(TestReportTest, BrowserThatCannotBeStartedShowsOneBox) {
  opener.answer = false;
  EXPECT_TRUE(Run());
  ASSERT_EQ(boxes.boxes.size(), 1U);
  EXPECT_EQ(boxes.boxes[0].text, "Could not open the HTML formatted report.");
  EXPECT_EQ(boxes.boxes[0].title, "Web Browser Error");
  EXPECT_EQ(boxes.boxes[0].icon, platform::MessageIcon::Critical);
  EXPECT_EQ(boxes.boxes[0].buttons, platform::MessageButtons::Ok);
}

TEST_F(TestReportTest, ReportThatCannotBeWrittenReturnsFalse) {
  files.unopenable["C:\\Program/test.html"] = true;
  EXPECT_FALSE(Run());
  ASSERT_EQ(boxes.boxes.size(), 1U);
  EXPECT_EQ(boxes.boxes[0].title, "Generate Report");
}

}  // namespace
}  // namespace kelvara::report
