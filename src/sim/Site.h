#pragma once

#include <vector>

namespace kelvara::sim {

/// The largest values that fit into an antenna's identity in a report.
inline constexpr int kMaxRpn = 255;
inline constexpr int kMaxFps = 15;
inline constexpr int kMaxFpn = 255;

/// The longest cable of a site. A report has three characters for a phase, so nothing below -99
/// units of 29 metres fits; a little is left for the noise of the readings.
inline constexpr int kMaxCableMetres = 2750;

/// One antenna of a site.
struct Antenna {
  int rpn = 0;
  int fps = 0;
  int fpn = 0;
  int cableMetres = 0;

  bool operator==(const Antenna&) const = default;
};

/// The antennas that a simulated beltpack walks among: at least one, at most 51, each with a
/// different RPN.
using Site = std::vector<Antenna>;

/// The site of twelve antennas that is used without a site file.
Site DemoSite();

}  // namespace kelvara::sim
