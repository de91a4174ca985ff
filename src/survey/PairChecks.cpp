#include "survey/PairChecks.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kelvara::survey {
namespace {

/// Below this redundancy, the residual is rounding error.
constexpr double kLeastRedundancy = 0.02;

/// The shift that a test with a risk of 0.001 detects with a power of 0.80.
constexpr double kDetectableShift = 4.13;

/// The variance that the direction test allows beyond readings and path.
constexpr double kDirectionVariance = 0.09;

double Redundancy(double weightedVariance, double variance, bool leftOut) {
  return leftOut ? 1.0 : std::clamp(1.0 - weightedVariance / variance, 0.0, 1.0);
}

std::optional<double> DirectionTest(const AntennaPair& pair, const ReadingStatistics& statistics) {
  if (!statistics.pathKnown || !pair.IsTwoWay()) {
    return std::nullopt;
  }
  const double variance = statistics.readingVariance * (1.0 / pair.countAb + 1.0 / pair.countBa) +
                          4.0 * statistics.pathScatter * statistics.pathScatter +
                          kDirectionVariance;
  return 2.0 * (statistics.path - pair.Path()) / std::sqrt(variance);
}

}  // namespace

bool PairCheck::WExceeds(double limit) const { return w && std::abs(*w) > limit; }

bool PairCheck::DirectionExceeds(double limit) const {
  return directionT && std::abs(*directionT) > limit;
}

double PairCheck::Largest() const {
  return std::max(std::abs(w.value_or(0.0)), std::abs(directionT.value_or(0.0)));
}

double SmallestDetectable(double variance, double redundancy) {
  return kDetectableShift * std::sqrt(variance / redundancy);
}

std::vector<PairCheck> CheckPairs(const Network& network, const Adjustment& adjustment) {
  std::vector<PairCheck> checks(network.Pairs().size());
  for (std::size_t index = 0; index < checks.size(); ++index) {
    const AntennaPair& pair = network.Pairs()[index];
    PairCheck& check = checks[index];
    const bool leftOut = adjustment.leftOut[index];
    const double variance = adjustment.Variance(network, index);
    const double ofDelays = adjustment.cofactors.VarianceOfDifference(pair.a, pair.b);
    const double weighted = adjustment.huberWeights[index] * ofDelays;
    check.residual = adjustment.Residual(pair);
    check.redundancy = Redundancy(weighted, variance, leftOut);
    if (check.redundancy > kLeastRedundancy) {
      check.w = check.residual / std::sqrt(leftOut ? variance + ofDelays : variance - weighted);
      check.smallestDetectable = SmallestDetectable(variance, check.redundancy);
    }
    check.directionT = DirectionTest(pair, network.readings.statistics);
  }
  return checks;
}

double CriticalValue(std::size_t pairs) {
  const double risk = std::min(0.001, 0.05 / std::max(static_cast<double>(pairs), 1.0));
  // Newton's method on the two-sided tail, which is convex here: it cannot overshoot.
  double z = 3.0;
  for (int round = 0; round < 20; ++round) {
    const double tail = std::erfc(z / std::numbers::sqrt2);
    const double slope = std::sqrt(2.0 / std::numbers::pi) * std::exp(-z * z / 2.0);
    z += (tail - risk) / slope;
  }
  return z;
}

}  // namespace kelvara::survey
