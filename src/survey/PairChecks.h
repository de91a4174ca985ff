#pragma once

#include <optional>
#include <vector>

#include "survey/Adjustment.h"

namespace kelvara::survey {

/// What the adjusted network says about one pair.
struct PairCheck {
  double residual = 0.0;    ///< In RFPS units.
  double redundancy = 0.0;  ///< The share of an error that shows in the residual, 0 to 1.
  std::optional<double> w;  ///< The residual in its standard deviations; none if nothing checks it.
  std::optional<double> directionT;          ///< The path of a two-way pair against the usual one.
  std::optional<double> smallestDetectable;  ///< The error found in 80 % of cases, in RFPS units.

  bool WExceeds(double limit) const;
  bool DirectionExceeds(double limit) const;
  bool Exceeds(double limit) const { return WExceeds(limit) || DirectionExceeds(limit); }

  /// The larger of the two test values.
  double Largest() const;
};

/// The error of a pair that its w would show in most cases: the test's non-centrality for a risk of
/// 0.1 % and a power of 80 %, as in geodesy. `redundancy` is above 0.
double SmallestDetectable(double variance, double redundancy);

/// Checks every pair against the others.
std::vector<PairCheck> CheckPairs(const Network& network, const Adjustment& adjustment);

/// The limit of the test values for so many pairs, such that in a network without errors one in
/// twenty surveys has a suspect, and one in a thousand pairs at most.
double CriticalValue(std::size_t pairs);

}  // namespace kelvara::survey
