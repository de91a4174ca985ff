#pragma once

#include <optional>
#include <vector>

namespace kelvara::sim {

/// The largest values that fit into an antenna's identity in a report.
inline constexpr int kMaxRpn = 255;
inline constexpr int kMaxFps = 15;
inline constexpr int kMaxFpn = 255;

/// The longest cable of a site. A report has three characters for a phase, so nothing below -99
/// units of 29 metres fits; a little is left for the noise of the readings.
inline constexpr int kMaxCableMetres = 2750;

/// How far from the origin an antenna may be, in either direction.
inline constexpr double kMaxPlaceMetres = 100000.0;

/// The most by which multipath or a fault may bend a pair, in RFPS units: as much as the largest
/// phase that fits into a report.
inline constexpr double kMaxBendUnits = 999.0;

/// How far from an antenna others are heard, in metres.
inline constexpr double kHearingMetres = 170.0;

/// Where an antenna is, in metres.
struct Place {
  double x = 0.0;
  double y = 0.0;

  bool operator==(const Place&) const = default;
};

/// One antenna of a site.
struct Antenna {
  int rpn = 0;
  int fps = 0;
  int fpn = 0;
  int cableMetres = 0;
  /// An antenna without a place hears all others, and is heard by them, without a delay.
  std::optional<Place> place = std::nullopt;

  bool operator==(const Antenna&) const = default;
};

/// Reflections: a share of the ordered pairs, from 0 to 1, is late by an exponentially distributed
/// delay with this mean, in RFPS units.
struct Multipath {
  double share = 0.0;
  double meanUnits = 0.0;

  bool operator==(const Multipath&) const = default;
};

/// A pair whose readings are wrong: too high by so many RFPS units where `from` hears `to`, too low
/// by as many the other way.
struct PairFault {
  int fromRpn = 0;
  int toRpn = 0;
  double units = 0.0;

  bool operator==(const PairFault&) const = default;
};

/// What a simulated beltpack walks among: at least one antenna, at most 51, each with a different
/// RPN.
struct Site {
  std::vector<Antenna> antennas;
  Multipath multipath = {};
  std::vector<PairFault> faults = {};

  bool operator==(const Site&) const = default;
};

/// The site of twelve antennas that is used without a site file.
Site DemoSite();

}  // namespace kelvara::sim
