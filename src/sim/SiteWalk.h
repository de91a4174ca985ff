#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "sim/Observation.h"
#include "sim/RadioPaths.h"
#include "sim/Random.h"
#include "sim/Site.h"

namespace kelvara::sim {

/// A beltpack's walk through a site, the same walk for the same seed. It stays synchronised to an
/// antenna for a few reports; at each it hears those within reach in turn, up to nine at a time. So
/// every antenna is sooner or later heard from every other that is within reach of it.
///
/// Without places it visits all antennas in random order before it begins another round. With
/// places it goes on to one of those that it hears, of these to one that it visited least often; it
/// goes to another part of the site when each antenna of this part has been visited more often than
/// one of those.
class SiteWalk {
 public:
  /// A site without antennas is a subscript fault at the first step.
  SiteWalk(Site site, std::uint64_t seed);

  /// One step: what the beltpack hears where it is now. A reading is the delay of the synchronised
  /// antenna less the neighbour's, less what the neighbour is late by, with a little noise; some
  /// readings are unknown or blank.
  Observation Next();

  /// One step at an antenna that is chosen by its index in the site; a wrong one is a subscript
  /// fault.
  Observation NextAt(std::size_t antenna);

  /// What the beltpack hears where, and how late: the truth behind the readings.
  const RadioPaths& Paths() const { return paths_; }

 private:
  void Move();
  void MoveOn();
  std::vector<Reading> Readings(std::size_t synchronised, std::size_t neighbour);

  Site site_;
  RadioPaths paths_;
  Random random_;
  bool hasPlaces_;
  std::vector<std::size_t> round_;
  std::size_t visited_ = 0;
  std::vector<int> visits_;
  std::size_t here_ = 0;
  int reportsLeft_ = 0;
  /// For each antenna those heard at it, in the order in which they are heard, and which is next.
  std::vector<std::vector<std::size_t>> others_;
  std::vector<std::size_t> nextOther_;
};

}  // namespace kelvara::sim
