#include "sim/RfpsReportText.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "sim/ExampleSite.h"
#include "sim/SiteWalk.h"
#include "sync/RfpsReport.h"

namespace kelvara::sim {
namespace {

constexpr Reading kUnknown{Reading::Kind::Unknown, 0};
constexpr Reading kBlank{Reading::Kind::Blank, 0};

Reading Measured(int phase) { return {Reading::Kind::Measured, phase}; }

/// Twenty-nine lines, each ended by CR LF, with no other control character.
void ExpectTwentyNineLines(const std::string& text) {
  std::size_t lines = 0;
  std::size_t start = 0;
  for (std::size_t end = text.find("\r\n"); end != std::string::npos;
       end = text.find("\r\n", start)) {
    const std::string line = text.substr(start, end - start);
    EXPECT_TRUE(std::all_of(line.begin(), line.end(), [](char character) {
      return character >= ' ' && character <= '~';
    })) << line;
    start = end + 2;
    ++lines;
  }
  EXPECT_EQ(lines, 29U);
  EXPECT_EQ(start, text.size());
}

void ExpectAntenna(const sync::RfpsEntry& entry, const Antenna& antenna) {
  EXPECT_EQ(entry.ToRpn, antenna.rpn);
  EXPECT_EQ(entry.ToFps, antenna.fps);
  EXPECT_EQ(entry.ToFpn, antenna.fpn);
}

/// Computes the mean of the readings, with halves rounded to even; false if none is valid.
bool MeanOf(const std::vector<Reading>& readings, int& mean) {
  int sum = 0;
  int count = 0;
  for (const Reading& reading : readings) {
    if (reading.kind == Reading::Kind::Measured) {
      sum += reading.phase;
      ++count;
    }
  }
  if (count == 0) {
    return false;
  }
  const int down = sum >= 0 ? sum / count : -((-sum + count - 1) / count);
  const int rest = 2 * (sum - down * count);
  mean = down + (rest > count || (rest == count && down % 2 != 0) ? 1 : 0);
  return true;
}

/// Expects the report to be read as what was observed: the synchronised antenna first, then each
/// neighbour that has a valid reading, in order.
void ExpectReadAs(const std::string& text, const Observation& observation) {
  const sync::RfpsReport report = sync::ReadRfpsReport(text);
  ASSERT_GE(report.count, 1);
  EXPECT_LE(report.count, 10);
  EXPECT_EQ(report.syncIndex, 0);
  ExpectAntenna(report.entries[0], observation.synchronised);
  std::size_t entry = 1;
  for (const Neighbour& neighbour : observation.neighbours) {
    int mean = 0;
    if (MeanOf(neighbour.readings, mean)) {
      ASSERT_LT(entry, report.entries.size());
      ExpectAntenna(report.entries[entry], neighbour.antenna);
      EXPECT_EQ(report.entries[entry].Phase, mean);
      ++entry;
    }
  }
  EXPECT_EQ(static_cast<std::size_t>(report.count), entry);
}

TEST(RfpsReportTextTest, IsWrittenInThisForm) {
  const Observation observation{{1, 3, 90, 0},
                                {{{2, 3, 90, 0}, {Measured(-12), Measured(-10)}},
                                 {{4, 3, 90, 0}, {kUnknown}},
                                 {{171, 15, 10, 0}, {Measured(6), kBlank, Measured(9)}}}};
  std::string expected =
      "rfps\r\n"
      "Radio parts heard: 3\r\n"
      "100ec5A301 Sync\r\n"
      "100ec5A302 Neighbour phase =  -12\r\n"
      "           Neighbour phase =  -10\r\n"
      "100ec5A304 Neighbour phase =    ?\r\n"
      "100ec0AFAB Neighbour phase =    6\r\n"
      "           Neighbour phase =       Neighbour phase =    9\r\n";
  for (int filler = 8; filler < 29; ++filler) {
    expected += "-\r\n";
  }
  EXPECT_EQ(RfpsReportText(observation), expected);
  ExpectReadAs(expected, observation);
}

TEST(RfpsReportTextTest, NineNeighboursWithThreeReadingsFit) {
  Observation observation;
  observation.synchronised = {200, 3, 90, 0};
  for (int rpn = 0; rpn < 9; ++rpn) {
    observation.neighbours.push_back(
        {{rpn, rpn, 90, 0}, {Measured(rpn), Measured(2 * rpn), Measured(-3 * rpn)}});
  }
  const std::string text = RfpsReportText(observation);
  ExpectTwentyNineLines(text);
  ExpectReadAs(text, observation);
  EXPECT_EQ(sync::ReadRfpsReport(text).count, 10);
}

TEST(RfpsReportTextTest, ATenthNeighbourAndAFourthReadingAreLeftOut) {
  Observation observation;
  observation.neighbours.assign(
      12, {{5, 5, 5, 0}, {Measured(1), Measured(1), Measured(1), Measured(50)}});
  const std::string text = RfpsReportText(observation);
  ExpectTwentyNineLines(text);
  EXPECT_EQ(sync::ReadRfpsReport(text).count, 10);
  EXPECT_EQ(text.find("50\r"), std::string::npos);
}

TEST(RfpsReportTextTest, AnAntennaAloneIsAlsoAReport) {
  const Observation observation{{3, 1, 2, 0}, {}};
  const std::string text = RfpsReportText(observation);
  ExpectTwentyNineLines(text);
  ExpectReadAs(text, observation);
}

TEST(RfpsReportTextTest, PhasesAreLimitedToThreeCharacters) {
  const Observation observation{{3, 1, 2, 0},
                                {{{1, 0, 0, 0}, {Measured(-99)}},
                                 {{2, 0, 0, 0}, {Measured(-100)}},
                                 {{3, 0, 0, 0}, {Measured(999)}},
                                 {{4, 0, 0, 0}, {Measured(1000)}}}};
  const sync::RfpsReport report = sync::ReadRfpsReport(RfpsReportText(observation));
  EXPECT_EQ(report.entries[1].Phase, -99);
  EXPECT_EQ(report.entries[2].Phase, -99);
  EXPECT_EQ(report.entries[3].Phase, 999);
  EXPECT_EQ(report.entries[4].Phase, 999);
}

TEST(RfpsReportTextTest, EveryReportOfEverySiteIsReadAsItWasObserved) {
  for (const char* name : {"site-4.txt", "site-12.txt", "site-51.txt"}) {
    SiteWalk walk(test::ExampleSite(name), 2);
    for (int report = 0; report < 1000; ++report) {
      const Observation observation = walk.Next();
      const std::string text = RfpsReportText(observation);
      ExpectTwentyNineLines(text);
      ExpectReadAs(text, observation);
      EXPECT_LT(text.size(), 1024U);
    }
  }
}

}  // namespace
}  // namespace kelvara::sim
