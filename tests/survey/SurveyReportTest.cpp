#include "survey/SurveyReport.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "support/SyntheticSite.h"
#include "survey/HtmlText.h"
#include "survey/Survey.h"

namespace kelvara::survey {
namespace {

using test::SyntheticSite;

std::string ReportOf(SyntheticSite& site) {
  const SurveyResult survey = MakeSurvey(site.Model());
  return SurveyReportHtml({.model = site.Model(),
                           .survey = survey,
                           .older = "",
                           .changes = nullptr,
                           .drift = nullptr,
                           .source = "site.txt",
                           .date = "1/2/26"});
}

int Count(const std::string& text, const std::string& part) {
  int count = 0;
  for (std::size_t place = text.find(part); place != std::string::npos;
       place = text.find(part, place + part.size())) {
    ++count;
  }
  return count;
}

/// Expects every element to be closed, in order.
void ExpectBalanced(const std::string& html) {
  static const std::regex tag(R"(<(/?)([a-z0-9]+)[^>]*?(/?)>)");
  std::vector<std::string> open;
  for (std::sregex_iterator found(html.begin(), html.end(), tag), end; found != end; ++found) {
    const std::string name = (*found)[2];
    if (name == "meta" || (*found)[3] == "/") {
      continue;
    }
    if ((*found)[1] == "/") {
      ASSERT_FALSE(open.empty()) << name;
      ASSERT_EQ(open.back(), name);
      open.pop_back();
    } else {
      open.push_back(name);
    }
  }
  EXPECT_TRUE(open.empty());
}

SyntheticSite SiteWithSuspect() {
  SyntheticSite site = SyntheticSite::Random(7, 3);
  site.SetNoise(0.5);
  for (int a = 0; a < 7; ++a) {
    for (int b = a + 1; b < 7; ++b) {
      const double error = a == 1 && b == 4 ? 9.0 : 0.0;
      site.Hear(a, b, 3, -error);
      site.Hear(b, a, 3, error);
    }
  }
  return site;
}

TEST(HtmlText, EscapesWhatHtmlWouldRead) {
  EXPECT_EQ(Escaped("a<b>&\"c\"\x01\n\x7F caf\xC3\xA9"),
            "a&lt;b&gt;&amp;&quot;c&quot;    caf\xC3\xA9");
}

TEST(SurveyReport, IsOneFileThatLoadsNothing) {
  SyntheticSite site = SiteWithSuspect();
  const std::string html = ReportOf(site);
  EXPECT_TRUE(html.starts_with("<!DOCTYPE html>\n"));
  EXPECT_LT(html.find("<meta charset=\"utf-8\">"), 1024U);
  for (const char* outside : {"http", "src=", "href=", "url(", "@import", "<script", "<link"}) {
    EXPECT_EQ(html.find(outside), std::string::npos) << outside;
  }
  ExpectBalanced(html);
}

TEST(SurveyReport, ShowsAntennasSuspectsAndWhereToStand) {
  SyntheticSite site = SiteWithSuspect();
  const std::string html = ReportOf(site);
  EXPECT_NE(html.find("From site.txt. 0 reports, 7 antennas"), std::string::npos);
  EXPECT_NE(html.find("<th scope=\"row\">02 and 05</th><td>3 + 3</td>"), std::string::npos);
  EXPECT_EQ(Count(html, ">left out</td>"), 1);
  EXPECT_EQ(Count(html, "class=\"suspect\""), 2);
  EXPECT_EQ(Count(html, ", reference</td>"), 1);
  EXPECT_NE(html.find("the best first: <b>"), std::string::npos);
  // Three of them in the picture, and one in the legend.
  EXPECT_EQ(Count(html, "class=\"ring\""), 4);
  EXPECT_EQ(Count(html, "line class=\"rejected\""), 2);
}

TEST(SurveyReport, NoTextBecomesMarkup) {
  SyntheticSite site({0.0, 9.0});
  site.HearBoth(0, 1, 2);
  const SurveyResult survey = MakeSurvey(site.Model());
  const std::vector<DelayChange> none;
  const std::string html = SurveyReportHtml({.model = site.Model(),
                                             .survey = survey,
                                             .older = "<old>",
                                             .changes = &none,
                                             .drift = nullptr,
                                             .source = "<b>&",
                                             .date = "<i>"});
  EXPECT_NE(html.find("From &lt;b&gt;&amp;. "), std::string::npos);
  EXPECT_NE(html.find("Changes since &lt;old&gt;"), std::string::npos);
  EXPECT_NE(html.find("on &lt;i&gt;<"), std::string::npos);
  ExpectBalanced(html);
}

TEST(SurveyReport, ListsOnlyAntennasThatChanged) {
  SyntheticSite site({0.0, 9.0, 18.0});
  site.HearAll(3);
  const SurveyResult survey = MakeSurvey(site.Model());
  const std::vector<DelayChange> changes = {{.rpn = 1, .phase = 0.2, .t = 0.5, .changed = false},
                                            {.rpn = 3, .phase = -9.0, .t = -12.0, .changed = true}};
  const std::string html = SurveyReportHtml({.model = site.Model(),
                                             .survey = survey,
                                             .older = "before",
                                             .changes = &changes,
                                             .drift = &changes,
                                             .source = "",
                                             .date = ""});
  EXPECT_EQ(Count(html, "<th scope=\"row\">03</th><td>-261</td><td>-12.0</td>"), 2);
  EXPECT_EQ(Count(html, "<td>6</td>"), 0);
  EXPECT_NE(html.find("Changes since before"), std::string::npos);
  EXPECT_NE(html.find("Changes during the recording"), std::string::npos);
}

TEST(SurveyReport, TheMatrixOf51AntennasIsSplitIntoBlocksThatRepeatTheirHeads) {
  SyntheticSite site = SyntheticSite::Random(51, 5);
  site.HearAll(1);
  const std::string html = ReportOf(site);
  EXPECT_EQ(Count(html, "<table class=\"matrix\"><thead>"), 3);
  EXPECT_EQ(Count(html, "class=\"same\""), 51);
  for (int rpn = 1; rpn <= 51; ++rpn) {
    const std::string name = (rpn < 10 ? "0" : "") + std::to_string(rpn);
    EXPECT_EQ(Count(html, "<th scope=\"col\">" + name + "</th>"), 1) << rpn;
    // A row in each block, and one in the table of antennas.
    EXPECT_EQ(Count(html, "<th scope=\"row\">" + name + "</th>"), 4) << rpn;
  }
  ExpectBalanced(html);
}

TEST(SurveyReport, AnAntennaWithoutPairsHasNoLength) {
  SyntheticSite site({0.0, 9.0, 3.0});
  site.HearBoth(0, 1, 2);
  EXPECT_NE(ReportOf(site).find("<th scope=\"row\">03</th><td>0</td><td>0</td><td></td><td></td>"
                                "<td></td><td></td><td>apart</td>"),
            std::string::npos);
}

TEST(SurveyReport, NoAntennaIsAReportToo) {
  SyntheticSite site({});
  const std::string html = ReportOf(site);
  EXPECT_NE(html.find("0 antennas"), std::string::npos);
  EXPECT_EQ(html.find("<table"), std::string::npos);
  ExpectBalanced(html);
}

}  // namespace
}  // namespace kelvara::survey
