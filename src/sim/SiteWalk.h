#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "sim/Observation.h"
#include "sim/Random.h"
#include "sim/Site.h"

namespace kelvara::sim {

/// The length of cable that delays an antenna by one phase unit, in metres.
inline constexpr double kMetresPerPhaseUnit = 29.0;

/// A beltpack's walk through a site, the same walk for the same seed. It stays synchronised to an
/// antenna for a few reports and visits all of them before it begins another round; at each it
/// hears all the others in turn, up to nine at a time. So every antenna is sooner or later heard
/// from every other.
class SiteWalk {
 public:
  /// A site without antennas is a subscript fault at the first step.
  SiteWalk(Site site, std::uint64_t seed);

  /// One step: what the beltpack hears where it is now. A reading is the delay of the synchronised
  /// antenna less the neighbour's, with a little noise; some readings are unknown or blank.
  Observation Next();

 private:
  void Move();
  std::vector<Reading> Readings(const Antenna& synchronised, const Antenna& neighbour);

  Site site_;
  Random random_;
  std::vector<std::size_t> round_;
  std::size_t visited_ = 0;
  int reportsLeft_ = 0;
  /// For each antenna the others, in the order in which they are heard from it, and which is next.
  std::vector<std::vector<std::size_t>> others_;
  std::vector<std::size_t> nextOther_;
};

}  // namespace kelvara::sim
