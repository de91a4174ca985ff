#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "survey/AntennaPairs.h"
#include "survey/GroundedLaplacian.h"
#include "survey/PairGraph.h"

namespace kelvara::survey {

/// What is adjusted: the pairs, how they hang together, and one antenna of each part, whose delay
/// is held at 0.
struct Network {
  AntennaPairs readings;
  std::vector<std::int16_t> rpns;  ///< By antenna.
  GraphStructure structure;
  std::vector<bool> held;       ///< By antenna: the one with the smallest RPN of its part.
  double medianVariance = 0.0;  ///< Of the pairs' variances; 0 if there are no pairs.

  const std::vector<AntennaPair>& Pairs() const { return readings.pairs; }
  int Antennas() const { return readings.antennas; }
  int DegreesOfFreedom() const {
    return static_cast<int>(Pairs().size()) - Antennas() + structure.parts;
  }
};

/// The network of all pairs that a model holds readings of.
Network ReadNetwork(const sync::SyncModel& model);

/// The least that pairs vary of themselves, in RFPS units.
inline constexpr double kLeastPairDeviation = 0.15;

/// The weight of a pair that is left out or of one that is not trusted at all.
inline constexpr double kLeftOutWeight = 1e-9;

/// A weighted least-squares adjustment, the start of a next one.
struct Adjustment {
  explicit Adjustment(const Network& network);

  std::vector<double> delays;         ///< By antenna, in RFPS units above its part's held one.
  std::vector<double> huberWeights;   ///< By pair: below 1 for an outlier.
  std::vector<double> extraVariance;  ///< By pair: above 0 for one in doubt.
  std::vector<bool> leftOut;          ///< By pair.
  double pairVariance = kLeastPairDeviation * kLeastPairDeviation;
  SymmetricMatrix cofactors;  ///< The covariances of the delays.

  /// The variance of a pair's difference with all that adds to it.
  double Variance(const Network& network, std::size_t pair) const {
    return network.Pairs()[pair].variance + extraVariance[pair] + pairVariance;
  }

  /// The weight with which a pair is adjusted.
  double Weight(const Network& network, std::size_t pair) const {
    return leftOut[pair] ? kLeftOutWeight : huberWeights[pair] / Variance(network, pair);
  }

  /// By how much the measured difference exceeds the adjusted one.
  double Residual(const AntennaPair& pair) const {
    return pair.difference -
           (delays[static_cast<std::size_t>(pair.a)] - delays[static_cast<std::size_t>(pair.b)]);
  }

  // Working memory: the equations that were solved last, and their weights.
  std::vector<double> weights;
  GroundedLaplacian equations;
};

/// Adjusts with Huber's weights until the delays stay, beginning from the values given.
void Adjust(const Network& network, Adjustment& adjustment);

/// Solves once with the weights as they are, and computes the covariances.
void SolveWithCovariances(const Network& network, Adjustment& adjustment);

}  // namespace kelvara::survey
