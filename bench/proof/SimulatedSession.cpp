#include "proof/SimulatedSession.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "sim/RfpsReportText.h"

namespace kelvara::bench {
namespace {

using sim::kMetresPerPhaseUnit;

/// A square of this side fits into the reach of an antenna, corner to corner.
constexpr double kDenseSide = 120.0;

/// Sparse antennas are in a grid, each moved by up to the jitter in both directions.
constexpr double kGridSpacing = 120.0;
constexpr double kGridJitter = 30.0;

constexpr int kLongestCable = 1200;

/// A step of the AA Sync units is so many RFPS units; a cable far from one is within this distance
/// of the middle between two.
constexpr double kUnitsPerStep = 4.5;
constexpr double kFarFromSteps = 1.2;

constexpr std::size_t kLeastHeardToSettle = 3;

constexpr double kLeastFault = 2.0;
constexpr double kMostFault = 20.0;
constexpr double kMultipathShare = 0.2;
constexpr double kMultipathMean = 2.0;

/// A reflection that delays by less does not make a pair wrong.
constexpr double kLeastPlanted = 1.0;

double Between(sim::Random& random, double least, double most) {
  return least + (most - least) * (random.Symmetric() + 1.0) / 2.0;
}

sim::Place PlaceOf(const SiteKind& kind, int antenna, sim::Random& random) {
  if (kind.density == Density::Dense) {
    return {.x = Between(random, 0.0, kDenseSide), .y = Between(random, 0.0, kDenseSide)};
  }
  const int columns = static_cast<int>(std::ceil(std::sqrt(kind.antennas)));
  return {.x = antenna % columns * kGridSpacing + Between(random, -kGridJitter, kGridJitter),
          .y = antenna / columns * kGridSpacing + Between(random, -kGridJitter, kGridJitter)};
}

int CableOf(const SiteKind& kind, sim::Random& random) {
  if (!kind.canSettle) {
    return random.Below(kLongestCable + 1);
  }
  const int step = 1 + random.Below(9);
  const double units = kUnitsPerStep * step + Between(random, -kFarFromSteps, kFarFromSteps);
  return static_cast<int>(std::lround(units * kMetresPerPhaseUnit));
}

/// Whether every antenna can be reached and hears as many others as are asked for.
bool IsConnected(const sim::Site& site, std::size_t leastHeard) {
  const sim::RadioPaths paths(site, 0);
  for (std::size_t antenna = 0; antenna < site.antennas.size(); ++antenna) {
    if (!paths.AreJoined(0, antenna) || paths.Heard(antenna).size() < leastHeard) {
      return false;
    }
  }
  return true;
}

void AddBadPair(sim::Site& site, sim::Random& random) {
  const sim::RadioPaths paths(site, 0);
  const int from = random.Below(static_cast<int>(site.antennas.size()));
  const auto& heard = paths.Heard(static_cast<std::size_t>(from));
  const std::size_t to =
      heard[static_cast<std::size_t>(random.Below(static_cast<int>(heard.size())))];
  const double units = Between(random, kLeastFault, kMostFault);
  site.faults.push_back({.fromRpn = from,
                         .toRpn = static_cast<int>(to),
                         .units = random.Below(2) == 0 ? units : -units});
}

sim::Site WithoutDisturbance(sim::Site site) {
  site.multipath = {};
  site.faults.clear();
  return site;
}

}  // namespace

sim::Site MakeSite(const SiteKind& kind, std::uint64_t seed) {
  sim::Random random(seed);
  sim::Site site;
  do {
    site.antennas.clear();
    for (int antenna = 0; antenna < kind.antennas; ++antenna) {
      site.antennas.push_back({.rpn = antenna,
                               .fps = 3,
                               .fpn = 90,
                               .cableMetres = CableOf(kind, random),
                               .place = PlaceOf(kind, antenna, random)});
    }
    if (kind.canSettle) {
      site.antennas[0].cableMetres = 0;
    }
  } while (!IsConnected(site, kind.canSettle ? kLeastHeardToSettle : 1));
  if (kind.disturbance == Disturbance::BadPair) {
    AddBadPair(site, random);
  } else if (kind.disturbance == Disturbance::Multipath) {
    site.multipath = {.share = kMultipathShare, .meanUnits = kMultipathMean};
  }
  return site;
}

SimulatedSession::SimulatedSession(const SiteKind& kind, std::uint64_t seed)
    : site_(MakeSite(kind, seed)),
      walk_(site_, seed),
      quietPaths_(sim::SiteWalk(WithoutDisturbance(site_), seed).Paths()),
      shortestMetres_(std::min_element(site_.antennas.begin(), site_.antennas.end(),
                                       [](const auto& one, const auto& other) {
                                         return one.cableMetres < other.cableMetres;
                                       })
                          ->cableMetres) {}

void SimulatedSession::Walk(int reports) {
  for (int report = 0; report < reports; ++report) {
    Take(walk_.Next());
  }
}

void SimulatedSession::StandAt(int rpn, int reports) {
  for (int report = 0; report < reports; ++report) {
    Take(walk_.NextAt(static_cast<std::size_t>(rpn)));
  }
}

void SimulatedSession::Take(const sim::Observation& observation) {
  const std::string report = sim::RfpsReportText(observation);
  parser_.ProcessRfpsReport(report);
  text_ += report;
}

double SimulatedSession::TrueMetres(int rpn) const {
  return site_.antennas[static_cast<std::size_t>(rpn)].cableMetres - shortestMetres_;
}

double SimulatedSession::PlantedBias(int from, int to, bool isTwoWay) const {
  return isTwoWay ? (Planted(to, from) - Planted(from, to)) / 2.0 : -Planted(from, to);
}

bool SimulatedSession::IsDisturbed(int from, int to) const {
  return std::abs(Planted(from, to)) >= kLeastPlanted ||
         std::abs(Planted(to, from)) >= kLeastPlanted;
}

double SimulatedSession::Planted(int from, int to) const {
  const auto one = static_cast<std::size_t>(from);
  const auto other = static_cast<std::size_t>(to);
  return walk_.Paths().Lateness(one, other) - quietPaths_.Lateness(one, other);
}

}  // namespace kelvara::bench
