#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "sim/Site.h"

namespace kelvara::sim {

/// The length of cable that delays an antenna by one phase unit, in metres. Radio paths count by
/// the same measure.
inline constexpr double kMetresPerPhaseUnit = 29.0;

/// Which antennas of a site a beltpack hears where it is, and how late. Antennas are numbered in
/// the site's order. The same site and seed give the same paths.
class RadioPaths {
 public:
  /// A fault of a pair that is not in the site is a subscript fault.
  RadioPaths(const Site& site, std::uint64_t seed);

  /// The others that a beltpack at `antenna` hears, in the site's order.
  const std::vector<std::size_t>& Heard(std::size_t antenna) const { return heard_[antenna]; }

  /// By how many phase units a beltpack at `antenna` hears `other` late: the path in the air,
  /// reflections and the pair's fault. Negative where a fault makes it early.
  double Lateness(std::size_t antenna, std::size_t other) const {
    return lateness_[antenna * heard_.size() + other];
  }

  /// Whether a walk from one of the antennas to antennas that are heard can reach the other.
  bool AreJoined(std::size_t antenna, std::size_t other) const {
    return partOf_[antenna] == partOf_[other];
  }

 private:
  void DrawPaths(const Site& site, std::uint64_t seed);
  void LabelParts();
  double& At(std::size_t antenna, std::size_t other) {
    return lateness_[antenna * heard_.size() + other];
  }

  std::vector<std::vector<std::size_t>> heard_;
  std::vector<double> lateness_;
  std::vector<std::size_t> partOf_;
};

}  // namespace kelvara::sim
