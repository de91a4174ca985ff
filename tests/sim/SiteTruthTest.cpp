#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "report/CableLengths.h"
#include "sim/ExampleSite.h"
#include "sim/RfpsReportText.h"
#include "sim/SiteWalk.h"
#include "support/SyncRig.h"
#include "sync/AaSyncUnits.h"

namespace kelvara::sim {
namespace {

bool IsMatrixFull(const sync::SyncModel& model, std::size_t antennas) {
  if (static_cast<std::size_t>(model.AaCount()) != antennas) {
    return false;
  }
  for (int from = 0; from < model.AaCount(); ++from) {
    for (int to = 0; to < model.AaCount(); ++to) {
      if (from != to && model.Cell(from, to).Count == 0) {
        return false;
      }
    }
  }
  return true;
}

/// Walks until every antenna has been heard from every other, and returns the number of reports.
int FillMatrix(const Site& site, std::uint64_t seed, test::SyncRig& rig) {
  constexpr int kMaxReports = 5000;
  constexpr int kReportsPerCheck = 20;
  SiteWalk walk(site, seed);
  int reports = 0;
  do {
    for (int report = 0; report < kReportsPerCheck; ++report) {
      rig.Process(RfpsReportText(walk.Next()));
    }
    reports += kReportsPerCheck;
  } while (reports < kMaxReports && !IsMatrixFull(rig.model, site.antennas.size()));
  return reports;
}

void ExpectTrueLengths(const Site& site, const sync::SyncModel& model) {
  const report::CableLengths lengths(model);
  const int shortest =
      std::min_element(site.antennas.begin(), site.antennas.end(),
                       [](const auto& a, const auto& b) { return a.cableMetres < b.cableMetres; })
          ->cableMetres;
  for (int aa = 0; aa < model.AaCount(); ++aa) {
    const auto antenna =
        std::find_if(site.antennas.begin(), site.antennas.end(),
                     [&](const Antenna& candidate) { return candidate.rpn == model.AaRpn(aa); });
    ASSERT_NE(antenna, site.antennas.end());
    EXPECT_EQ(model.AaFps(aa), antenna->fps);
    EXPECT_EQ(model.AaFpn(aa), antenna->fpn);
    EXPECT_LE(std::abs(lengths.Metres(aa) - (antenna->cableMetres - shortest)),
              sync::kMetresPerAaSyncUnit)
        << "RPN " << antenna->rpn << " with " << antenna->cableMetres << " metres";
  }
}

class SiteTruthTest : public ::testing::TestWithParam<const char*> {};

TEST_P(SiteTruthTest, LengthsRelativeToTheShortestCableAreWithinOneSyncUnit) {
  const Site site = test::ExampleSite(GetParam());
  for (std::uint64_t seed = 1; seed <= 10; ++seed) {
    test::SyncRig rig;
    const int reports = FillMatrix(site, seed, rig);
    ASSERT_TRUE(IsMatrixFull(rig.model, site.antennas.size())) << "seed " << seed;
    EXPECT_EQ(rig.model.ReportCount(), reports);
    EXPECT_EQ(rig.beeper.count, 0);
    ExpectTrueLengths(site, rig.model);
  }
}

TEST_P(SiteTruthTest, LengthsStayTrueOverManyReports) {
  const Site site = test::ExampleSite(GetParam());
  test::SyncRig rig;
  SiteWalk walk(site, 4);
  for (int report = 0; report < 3000; ++report) {
    rig.Process(RfpsReportText(walk.Next()));
  }
  ASSERT_TRUE(IsMatrixFull(rig.model, site.antennas.size()));
  EXPECT_EQ(rig.beeper.count, 0);
  ExpectTrueLengths(site, rig.model);
}

INSTANTIATE_TEST_SUITE_P(Examples, SiteTruthTest,
                         ::testing::Values("site-4.txt", "site-12.txt", "site-51.txt"));

TEST(SiteTruthOfExtremesTest, TheLongestCableIsMeasuredToo) {
  const Site site{{{1, 0, 0, 0}, {2, 0, 0, kMaxCableMetres}, {3, 0, 0, 1000}}};
  for (std::uint64_t seed = 1; seed <= 50; ++seed) {
    test::SyncRig rig;
    FillMatrix(site, seed, rig);
    ASSERT_TRUE(IsMatrixFull(rig.model, site.antennas.size()));
    ExpectTrueLengths(site, rig.model);
  }
}

}  // namespace
}  // namespace kelvara::sim
