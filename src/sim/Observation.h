#pragma once

#include <cstddef>
#include <vector>

#include "sim/Site.h"

namespace kelvara::sim {

/// The most neighbours that one report names, and the most readings of each.
inline constexpr std::size_t kMaxNeighbours = 9;
inline constexpr std::size_t kMaxReadings = 3;

/// One reading of a neighbour's phase.
struct Reading {
  enum class Kind {
    Measured,
    Unknown,  ///< Shown as a question mark.
    Blank,    ///< Nothing is shown.
  };

  Kind kind = Kind::Measured;
  /// In units of 29 metres; 0 where nothing was measured.
  int phase = 0;

  bool operator==(const Reading&) const = default;
};

/// A neighbour with its one to three readings.
struct Neighbour {
  Antenna antenna;
  std::vector<Reading> readings;
};

/// What the beltpack knows at one moment: the antenna it is synchronised to, and up to nine others.
struct Observation {
  Antenna synchronised;
  std::vector<Neighbour> neighbours;
};

}  // namespace kelvara::sim
