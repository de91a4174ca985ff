#include "sim/SiteWalk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "sim/ExampleSite.h"
#include "sim/RfpsReportText.h"
#include "support/Faults.h"

namespace kelvara::sim {
namespace {

constexpr const char* kSiteFiles[] = {"site-4.txt", "site-12.txt", "site-51.txt"};

TEST(SiteWalkTest, TheSameSeedGivesTheSameWalk) {
  SiteWalk one(DemoSite(), 7);
  SiteWalk two(DemoSite(), 7);
  SiteWalk other(DemoSite(), 8);
  bool differs = false;
  for (int report = 0; report < 50; ++report) {
    const std::string text = RfpsReportText(one.Next());
    EXPECT_EQ(text, RfpsReportText(two.Next()));
    differs = differs || text != RfpsReportText(other.Next());
  }
  EXPECT_TRUE(differs);
}

TEST(SiteWalkTest, ASiteWithoutPlacesGivesTheSameReportsForASeedAsEver) {
  const std::map<std::string, std::uint64_t> hashes{{"site-4.txt", 0x791220753194fdb0U},
                                                    {"site-12.txt", 0x779f747f573dc222U},
                                                    {"site-51.txt", 0xf65ecac7d5f41b9aU}};
  for (const char* name : kSiteFiles) {
    SiteWalk walk(test::ExampleSite(name), 69);
    // A 64-bit FNV-1a hash of the text of 200 reports.
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (int report = 0; report < 200; ++report) {
      for (const char character : RfpsReportText(walk.Next())) {
        hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001b3U;
      }
    }
    EXPECT_EQ(hash, hashes.at(name)) << name;
  }
}

TEST(SiteWalkTest, HearsUpToNineOthersOnceEachWithOneToThreeReadings) {
  for (const char* name : kSiteFiles) {
    const Site site = test::ExampleSite(name);
    SiteWalk walk(site, 3);
    std::set<std::size_t> counts;
    for (int report = 0; report < 500; ++report) {
      const Observation observation = walk.Next();
      std::set<int> rpns{observation.synchronised.rpn};
      for (const Neighbour& neighbour : observation.neighbours) {
        EXPECT_TRUE(rpns.insert(neighbour.antenna.rpn).second);
        EXPECT_GE(neighbour.readings.size(), 1U);
        EXPECT_LE(neighbour.readings.size(), 3U);
      }
      counts.insert(observation.neighbours.size());
    }
    EXPECT_EQ(*counts.rbegin(), std::min<std::size_t>(site.antennas.size() - 1, 9)) << name;
  }
}

TEST(SiteWalkTest, StaysAFewReportsAtEachAntennaAndVisitsAllBeforeTheNextRound) {
  const Site site = test::ExampleSite("site-12.txt");
  SiteWalk walk(site, 5);
  for (int round = 0; round < 20; ++round) {
    std::map<int, int> reportsOfRpn;
    int here = walk.Next().synchronised.rpn;
    // The walk does not say when it moves on, so a round's reports are counted antenna by antenna.
    for (std::size_t visited = 1; visited <= site.antennas.size(); ++visited) {
      EXPECT_EQ(reportsOfRpn.count(here), 0U);
      reportsOfRpn[here] = 1;
      if (visited == site.antennas.size()) {
        break;
      }
      int next = here;
      while (next == here) {
        next = walk.Next().synchronised.rpn;
        reportsOfRpn[here] += next == here ? 1 : 0;
      }
      EXPECT_GE(reportsOfRpn[here], 2);
      EXPECT_LE(reportsOfRpn[here], 4);
      here = next;
    }
    EXPECT_EQ(reportsOfRpn.size(), site.antennas.size());
    walk = SiteWalk(site, static_cast<std::uint64_t>(round));
  }
}

TEST(SiteWalkTest, HearsEveryAntennaFromEveryOther) {
  for (const char* name : kSiteFiles) {
    const Site site = test::ExampleSite(name);
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
      SiteWalk walk(site, seed);
      std::set<std::pair<int, int>> pairs;
      const std::size_t all = site.antennas.size() * (site.antennas.size() - 1);
      // A report hears at least six others, an antenna has two to four reports, and no other is
      // heard a second time before all have been heard once.
      const std::size_t reportsEach = (site.antennas.size() - 1 + 5) / 6;
      const std::size_t rounds = (reportsEach + 1) / 2;
      const std::size_t enough = rounds * 4 * site.antennas.size();
      for (std::size_t report = 0; report < enough; ++report) {
        const Observation observation = walk.Next();
        for (const Neighbour& neighbour : observation.neighbours) {
          pairs.emplace(observation.synchronised.rpn, neighbour.antenna.rpn);
        }
      }
      EXPECT_EQ(pairs.size(), all) << name << ", seed " << seed;
    }
  }
}

TEST(SiteWalkTest, AReadingIsTheDelayOfTheSynchronisedAntennaLessTheNeighboursWithLittleNoise) {
  const Site site{{{1, 0, 0, 290}, {2, 0, 0, 1450}}};
  SiteWalk walk(site, 11);
  std::set<int> phases;
  for (int report = 0; report < 200; ++report) {
    const Observation observation = walk.Next();
    const int truth = observation.synchronised.rpn == 1 ? 10 - 50 : 50 - 10;
    for (const Reading& reading : observation.neighbours.at(0).readings) {
      if (reading.kind == Reading::Kind::Measured) {
        EXPECT_LE(std::abs(reading.phase - truth), 1);
        phases.insert(reading.phase - truth);
      }
    }
  }
  EXPECT_EQ(phases, (std::set<int>{-1, 0, 1}));
}

TEST(SiteWalkTest, SomeReadingsAreUnknownOrBlankAndMostAreMeasured) {
  SiteWalk walk(DemoSite(), 1);
  std::map<Reading::Kind, int> counts;
  for (int report = 0; report < 1000; ++report) {
    for (const Neighbour& neighbour : walk.Next().neighbours) {
      for (const Reading& reading : neighbour.readings) {
        ++counts[reading.kind];
      }
    }
  }
  EXPECT_GT(counts[Reading::Kind::Unknown], 100);
  EXPECT_GT(counts[Reading::Kind::Blank], 100);
  EXPECT_GT(counts[Reading::Kind::Measured],
            4 * (counts[Reading::Kind::Unknown] + counts[Reading::Kind::Blank]));
}

TEST(SiteWalkTest, ASingleAntennaHearsNoOther) {
  SiteWalk walk({{{9, 1, 2, 3}}}, 1);
  for (int report = 0; report < 10; ++report) {
    const Observation observation = walk.Next();
    EXPECT_EQ(observation.synchronised.rpn, 9);
    EXPECT_TRUE(observation.neighbours.empty());
  }
}

Site Row(int antennas, double spacing) {
  Site site;
  for (int antenna = 0; antenna < antennas; ++antenna) {
    site.antennas.push_back({antenna, 0, 0, 290, Place{.x = antenna * spacing, .y = 0}});
  }
  return site;
}

TEST(SiteWalkTest, WithPlacesItHearsOnlyThoseWithinReachAndGoesOnToOneOfThem) {
  for (std::uint64_t seed = 1; seed <= 20; ++seed) {
    SiteWalk walk(Row(9, 100.0), seed);
    std::map<int, int> reportsOfRpn;
    int here = walk.Next().synchronised.rpn;
    for (int report = 0; report < 200; ++report) {
      const Observation observation = walk.Next();
      const int next = observation.synchronised.rpn;
      EXPECT_LE(std::abs(next - here), 1);
      here = next;
      ++reportsOfRpn[here];
      EXPECT_EQ(observation.neighbours.size(), here == 0 || here == 8 ? 1U : 2U);
      for (const Neighbour& neighbour : observation.neighbours) {
        EXPECT_EQ(std::abs(neighbour.antenna.rpn - here), 1);
      }
    }
    EXPECT_EQ(reportsOfRpn.size(), 9U) << "seed " << seed;
  }
}

TEST(SiteWalkTest, ItGoesToEveryPartOfASite) {
  Site site = Row(3, 100.0);
  site.antennas.push_back({50, 0, 0, 0, Place{.x = 0, .y = 5000}});
  for (const int rpn : {60, 61}) {
    site.antennas.push_back({rpn, 0, 0, 0, Place{.x = rpn * 1.0, .y = -5000}});
  }
  for (std::uint64_t seed = 1; seed <= 20; ++seed) {
    SiteWalk walk(site, seed);
    std::map<int, int> reportsOfRpn;
    for (int report = 0; report < 600; ++report) {
      ++reportsOfRpn[walk.Next().synchronised.rpn];
    }
    for (const Antenna& antenna : site.antennas) {
      EXPECT_GT(reportsOfRpn[antenna.rpn], 40) << antenna.rpn;
    }
  }
}

TEST(SiteWalkTest, AReadingIsLowerWhereTheNeighbourIsLate) {
  SiteWalk walk({{{1, 0, 0, 290}, {2, 0, 0, 290}}, {}, {{1, 2, -20.0}}}, 11);
  for (int report = 0; report < 200; ++report) {
    const Observation observation = walk.Next();
    const int expected = observation.synchronised.rpn == 1 ? -20 : 20;
    for (const Reading& reading : observation.neighbours.at(0).readings) {
      if (reading.kind == Reading::Kind::Measured) {
        EXPECT_LE(std::abs(reading.phase - expected), 1);
      }
    }
  }
}

TEST(SiteWalkTest, TheLargestDelaysStillGiveAReport) {
  Site site{{{1, 0, 0, 0, Place{.x = -kMaxPlaceMetres, .y = 0}},
             {2, 0, 0, kMaxCableMetres, Place{.x = kMaxPlaceMetres, .y = 0}},
             {3, 0, 0, kMaxCableMetres}},
            {.share = 1.0, .meanUnits = kMaxBendUnits},
            {{1, 3, -kMaxBendUnits}}};
  SiteWalk walk(site, 1);
  for (int report = 0; report < 100; ++report) {
    const std::string text = RfpsReportText(walk.Next());
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 29);
  }
}

TEST(SiteWalkTest, AStepAtAnAntennaThatIsNotThereIsASubscriptFault) {
  SiteWalk walk(DemoSite(), 1);
  EXPECT_EQ(walk.NextAt(11).synchronised.rpn, 67);
  EXPECT_EQ(test::FaultOf([&] { walk.NextAt(12); }), base::FaultKind::Subscript);
}

TEST(SiteWalkTest, ASiteWithoutAntennasIsASubscriptFault) {
  SiteWalk walk({}, 1);
  EXPECT_EQ(test::FaultOf([&] { walk.Next(); }), base::FaultKind::Subscript);
}

}  // namespace
}  // namespace kelvara::sim
