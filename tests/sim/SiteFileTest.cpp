#include "sim/SiteFile.h"

#include <gtest/gtest.h>

#include "sim/ExampleSite.h"
#include "support/Doubles.h"
#include "support/Faults.h"

namespace kelvara::sim {
namespace {

/// The text of the fault in a site's text; empty if there is none.
std::string FaultText(const std::string& text) {
  try {
    ParseSite(text, "hall.txt");
  } catch (const base::Fault& fault) {
    EXPECT_EQ(fault.Kind(), base::FaultKind::File);
    return fault.what();
  }
  return {};
}

std::string ManyAntennas(int count) {
  std::string text;
  for (int rpn = 0; rpn < count; ++rpn) {
    text += std::to_string(rpn) + " 1 2 3\n";
  }
  return text;
}

TEST(SiteFileTest, ReadsOneAntennaPerLine) {
  EXPECT_EQ(ParseSite("7 3 90 120\n255 15 255 2750\n0 0 0 0\n", "hall.txt"),
            (Site{{{7, 3, 90, 120}, {255, 15, 255, 2750}, {0, 0, 0, 0}}}));
}

TEST(SiteFileTest, SkipsCommentsEmptyLinesTabsAndCarriageReturns) {
  EXPECT_EQ(
      ParseSite("# hall\r\n\r\n \t\r\n  7\t3  90 120   # stage left\r\n8 3 90 5#x", "hall.txt"),
      (Site{{{7, 3, 90, 120}, {8, 3, 90, 5}}}));
}

TEST(SiteFileTest, NamesTheFileTheLineAndWhatIsWrong) {
  EXPECT_EQ(FaultText("1 2 3 4\n\n1 2 3\n"),
            "\"hall.txt\", line 3: four values are due (RPN, FPS, FPN and cable length), "
            "or six with a place (x and y), there are 3");
  EXPECT_EQ(FaultText("1 2 3 4 5"),
            "\"hall.txt\", line 1: four values are due (RPN, FPS, FPN and cable length), "
            "or six with a place (x and y), there are 5");
  EXPECT_EQ(FaultText("256 2 3 4"), "\"hall.txt\", line 1: RPN 256 is outside 0 to 255");
  EXPECT_EQ(FaultText("-1 2 3 4"), "\"hall.txt\", line 1: RPN -1 is outside 0 to 255");
  EXPECT_EQ(FaultText("1 16 3 4"), "\"hall.txt\", line 1: FPS 16 is outside 0 to 15");
  EXPECT_EQ(FaultText("1 2 999 4"), "\"hall.txt\", line 1: FPN 999 is outside 0 to 255");
  EXPECT_EQ(FaultText("1 2 3 2751"),
            "\"hall.txt\", line 1: cable length 2751 is outside 0 to 2750");
  EXPECT_EQ(FaultText("99999999999 2 3 4"),
            "\"hall.txt\", line 1: RPN 99999999999 is outside 0 to 255");
  EXPECT_EQ(FaultText("1 2 3 4.5"),
            "\"hall.txt\", line 1: cable length \"4.5\" is not a whole number");
  EXPECT_EQ(FaultText("x 2 3 4"), "\"hall.txt\", line 1: RPN \"x\" is not a whole number");
}

TEST(SiteFileTest, ReadsPlacesReflectionsAndFaultsInAnyOrder) {
  const Site site = ParseSite(
      "fault 8 7 -12.5\n7 3 90 120 -10.5 1e2\n8 3 90 5 0 0 # x\nmultipath 0.25 3\n9 3 90 1\n"
      "fault 9 8 999\n",
      "hall.txt");
  EXPECT_EQ(
      site,
      (Site{{{7, 3, 90, 120, Place{-10.5, 100.0}}, {8, 3, 90, 5, Place{0.0, 0.0}}, {9, 3, 90, 1}},
            {0.25, 3.0},
            {{8, 7, -12.5}, {9, 8, 999.0}}}));
}

TEST(SiteFileTest, NamesWhatIsWrongWithAPlace) {
  EXPECT_EQ(FaultText("1 2 3 4 x 0"), "\"hall.txt\", line 1: place x \"x\" is not a number");
  EXPECT_EQ(FaultText("1 2 3 4 0 1.5m"), "\"hall.txt\", line 1: place y \"1.5m\" is not a number");
  EXPECT_EQ(FaultText("1 2 3 4 nan 0"), "\"hall.txt\", line 1: place x \"nan\" is not a number");
  for (const std::string number : {"100000.1", "-100001", "inf", "-inf", "1e999"}) {
    EXPECT_EQ(FaultText("1 2 3 4 " + number + " 0"),
              "\"hall.txt\", line 1: place x " + number + " is outside -100000 to 100000");
  }
}

TEST(SiteFileTest, NamesWhatIsWrongWithReflections) {
  EXPECT_EQ(FaultText("1 2 3 4\nmultipath 0.5"),
            "\"hall.txt\", line 2: two values are due after \"multipath\" (share and mean), "
            "there are 1");
  EXPECT_EQ(FaultText("multipath 1.1 2"), "\"hall.txt\", line 1: share 1.1 is outside 0 to 1");
  EXPECT_EQ(FaultText("multipath 1 -2"), "\"hall.txt\", line 1: mean -2 is outside 0 to 999");
  EXPECT_EQ(FaultText("multipath 0 0\n\nmultipath 1 1"),
            "\"hall.txt\", line 3: \"multipath\" is already in line 1");
}

TEST(SiteFileTest, NamesWhatIsWrongWithAFault) {
  const std::string site = "1 2 3 4\n2 2 3 4\n";
  EXPECT_EQ(FaultText(site + "fault 1 2"),
            "\"hall.txt\", line 3: three values are due after \"fault\" (two RPNs and RFPS units), "
            "there are 2");
  EXPECT_EQ(FaultText(site + "fault 1 256 2"), "\"hall.txt\", line 3: RPN 256 is outside 0 to 255");
  EXPECT_EQ(FaultText(site + "fault 1 2 -999.5"),
            "\"hall.txt\", line 3: RFPS units -999.5 is outside -999 to 999");
  EXPECT_EQ(FaultText(site + "fault 2 2 5"), "\"hall.txt\", line 3: a pair has two different RPNs");
  EXPECT_EQ(FaultText(site + "fault 1 2 5\nfault 2 1 6"),
            "\"hall.txt\", line 4: the pair is already in line 3");
  EXPECT_EQ(FaultText("fault 1 3 5\n" + site),
            "\"hall.txt\", line 1: there is no antenna with RPN 3");
}

TEST(SiteFileTest, AnRpnGivenTwiceIsRefused) {
  EXPECT_EQ(FaultText("7 3 90 1\n8 3 90 1\n7 4 91 2\n"),
            "\"hall.txt\", line 3: RPN 7 is already in line 1");
}

TEST(SiteFileTest, TakesFiftyOneAntennasAndNoMore) {
  EXPECT_EQ(ParseSite(ManyAntennas(51), "hall.txt").antennas.size(), 51U);
  EXPECT_EQ(FaultText(ManyAntennas(52)), "\"hall.txt\", line 52: a site has at most 51 antennas");
}

TEST(SiteFileTest, AFileWithoutAntennasIsRefused) {
  EXPECT_EQ(FaultText(""), "\"hall.txt\": there is no antenna in it");
  EXPECT_EQ(FaultText("# nobody home\n"), "\"hall.txt\": there is no antenna in it");
}

TEST(SiteFileTest, BytesThatAreNotTextAreShownSafely) {
  EXPECT_EQ(FaultText("\x1b[31m\"\xff 2 3 4"),
            "\"hall.txt\", line 1: RPN \"?[31m??\" is not a whole number");
  EXPECT_EQ(FaultText(std::string(300, 'x') + " 2 3 4"),
            "\"hall.txt\", line 1: RPN \"xxxxxxxxxxxxxxxxxxxx...\" is not a whole number");
}

TEST(SiteFileTest, ReadsAFileThroughTheFileSystem) {
  test::MemoryFileSystem files;
  // More than one read's worth.
  files.files["hall.txt"] = "#" + std::string(9000, '-') + "\n7 3 90 120\n";
  EXPECT_EQ(ReadSite(files, "hall.txt"), (Site{{{7, 3, 90, 120}}}));
}

TEST(SiteFileTest, AMissingOrHugeFileIsAFileFault) {
  test::MemoryFileSystem files;
  files.files["huge.txt"] = std::string(100000, '\n');
  EXPECT_EQ(test::FaultOf([&] { ReadSite(files, "missing.txt"); }), base::FaultKind::File);
  EXPECT_EQ(test::FaultOf([&] { ReadSite(files, "huge.txt"); }), base::FaultKind::File);
}

TEST(SiteFileTest, TheExampleSitesHaveAsManyAntennasAsTheirNamesSay) {
  EXPECT_EQ(test::ExampleSite("site-4.txt").antennas.size(), 4U);
  EXPECT_EQ(test::ExampleSite("site-12.txt").antennas.size(), 12U);
  EXPECT_EQ(test::ExampleSite("site-30-sparse.txt").antennas.size(), 30U);
  EXPECT_EQ(test::ExampleSite("site-51.txt").antennas.size(), 51U);
}

TEST(SiteFileTest, TheDemoSiteIsTheExampleOfTwelve) {
  EXPECT_EQ(test::ExampleSite("site-12.txt"), DemoSite());
}

}  // namespace
}  // namespace kelvara::sim
