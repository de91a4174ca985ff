#include "sim/RadioPaths.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "base/CheckedInteger.h"
#include "sim/Random.h"

namespace kelvara::sim {
namespace {

/// The shortest extra path in the air as a share of the distance between two antennas. A beltpack
/// is carried near an antenna, not at it, so the other one is not the whole distance farther away.
constexpr double kLeastShare = 0.7;

/// From 0 to 1, but never 0.
double AboveZero(Random& random) {
  constexpr double kStep = 0x1p-53;
  return (static_cast<double>(random.Next() >> 11U) + 1.0) * kStep;
}

double Distance(const Antenna& one, const Antenna& other) {
  if (!one.place || !other.place) {
    return 0.0;
  }
  const double x = one.place->x - other.place->x;
  const double y = one.place->y - other.place->y;
  return std::sqrt(x * x + y * y);
}

double Reflection(const Multipath& multipath, Random& random) {
  const bool isReflected = AboveZero(random) <= multipath.share;
  const double delay = -multipath.meanUnits * std::log(AboveZero(random));
  return isReflected ? delay : 0.0;
}

std::size_t IndexOf(const Site& site, int rpn) {
  const auto found = std::find_if(site.antennas.begin(), site.antennas.end(),
                                  [&](const Antenna& antenna) { return antenna.rpn == rpn; });
  return base::CheckedIndex(found - site.antennas.begin(), site.antennas.size());
}

}  // namespace

RadioPaths::RadioPaths(const Site& site, std::uint64_t seed)
    : heard_(site.antennas.size()),
      lateness_(site.antennas.size() * site.antennas.size()),
      partOf_(site.antennas.size()) {
  DrawPaths(site, seed);
  for (const PairFault& fault : site.faults) {
    const std::size_t from = IndexOf(site, fault.fromRpn);
    const std::size_t to = IndexOf(site, fault.toRpn);
    At(from, to) -= fault.units;
    At(to, from) += fault.units;
  }
  LabelParts();
}

void RadioPaths::DrawPaths(const Site& site, std::uint64_t seed) {
  Random random(seed);
  for (std::size_t one = 0; one < site.antennas.size(); ++one) {
    for (std::size_t other = 0; other < one; ++other) {
      const double distance = Distance(site.antennas[one], site.antennas[other]);
      // Drawn once for both directions: a path is the same from both ends.
      const double share = 1.0 - (1.0 - kLeastShare) * AboveZero(random);
      const double path = share * distance / kMetresPerPhaseUnit;
      At(one, other) = path + Reflection(site.multipath, random);
      At(other, one) = path + Reflection(site.multipath, random);
      if (distance <= kHearingMetres) {
        heard_[one].push_back(other);
        heard_[other].push_back(one);
      }
    }
  }
}

void RadioPaths::LabelParts() {
  std::iota(partOf_.begin(), partOf_.end(), std::size_t{0});
  for (std::size_t antenna = 0; antenna < heard_.size(); ++antenna) {
    for (const std::size_t other : heard_[antenna]) {
      std::replace(partOf_.begin(), partOf_.end(), std::size_t{partOf_[other]},
                   std::size_t{partOf_[antenna]});
    }
  }
}

}  // namespace kelvara::sim
