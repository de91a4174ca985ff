#include "survey/Adjustment.h"

#include <algorithm>
#include <cmath>

namespace kelvara::survey {
namespace {

constexpr int kMostRounds = 20;
constexpr double kSmallestMove = 1e-4;

/// Residuals beyond this many standard deviations get a weight below 1.
constexpr double kHuberLimit = 1.5;

/// The mean of min(t², 1.5²) of a standard normal t.
constexpr double kClippedVariance = 0.7785;

/// The prior weight of the pairs' own variance, in degrees of freedom.
constexpr double kPriorFreedom = 4.0;

constexpr double kLeastPairVariance = kLeastPairDeviation * kLeastPairDeviation;
constexpr double kMostPairVariance = 100.0;

void SetUpEquations(const Network& network, Adjustment& adjustment) {
  GroundedLaplacian& equations = adjustment.equations;
  equations.Clear();
  for (int antenna = 0; antenna < network.Antennas(); ++antenna) {
    if (network.held[static_cast<std::size_t>(antenna)]) {
      // A held antenna is the ground itself; this gives its own row a pivot.
      equations.Ground(antenna, 1.0);
    }
  }
  for (std::size_t index = 0; index < network.Pairs().size(); ++index) {
    const AntennaPair& pair = network.Pairs()[index];
    const double weight = adjustment.Weight(network, index);
    adjustment.weights[index] = weight;
    if (network.held[static_cast<std::size_t>(pair.a)]) {
      equations.Ground(pair.b, weight);
    } else if (network.held[static_cast<std::size_t>(pair.b)]) {
      equations.Ground(pair.a, weight);
    } else {
      equations.Connect(pair.a, pair.b, weight);
    }
  }
  equations.Factor();
}

/// Moves the delays to the solution of the equations and returns the largest move. Solving for the
/// move refines the solution where weights differ by many powers of ten.
double MoveDelays(const Network& network, Adjustment& adjustment) {
  std::vector<double> moves(adjustment.delays.size());
  for (std::size_t index = 0; index < network.Pairs().size(); ++index) {
    const AntennaPair& pair = network.Pairs()[index];
    const double pull = adjustment.weights[index] * adjustment.Residual(pair);
    moves[static_cast<std::size_t>(pair.a)] += pull;
    moves[static_cast<std::size_t>(pair.b)] -= pull;
  }
  for (std::size_t antenna = 0; antenna < moves.size(); ++antenna) {
    if (network.held[antenna]) {
      moves[antenna] = 0.0;
    }
  }
  adjustment.equations.Solve(moves);
  double largest = 0.0;
  for (std::size_t antenna = 0; antenna < moves.size(); ++antenna) {
    adjustment.delays[antenna] += moves[antenna];
    largest = std::max(largest, std::abs(moves[antenna]));
  }
  return largest;
}

/// Sets Huber's weights from the residuals, and the pairs' own variance from the kept ones.
void Reweigh(const Network& network, Adjustment& adjustment) {
  double squares = 0.0;
  int kept = 0;
  for (std::size_t index = 0; index < network.Pairs().size(); ++index) {
    const double residual = adjustment.Residual(network.Pairs()[index]);
    const double variance = adjustment.Variance(network, index);
    const double square = residual * residual / variance;
    const bool isOutlier = square > kHuberLimit * kHuberLimit;
    adjustment.huberWeights[index] = isOutlier ? kHuberLimit / std::sqrt(square) : 1.0;
    if (!adjustment.leftOut[index]) {
      squares += isOutlier ? kHuberLimit * kHuberLimit : square;
      ++kept;
    }
  }
  const int freedom = kept - network.Antennas() + network.structure.parts;
  if (freedom > 0) {
    const double factor = (kPriorFreedom * kClippedVariance + squares) /
                          ((kPriorFreedom + freedom) * kClippedVariance);
    const double ofReadings = network.medianVariance;
    adjustment.pairVariance =
        std::clamp((ofReadings + adjustment.pairVariance) * factor - ofReadings, kLeastPairVariance,
                   kMostPairVariance);
  }
}

std::vector<bool> ChooseHeld(const std::vector<std::int16_t>& rpns,
                             const GraphStructure& structure) {
  std::vector<int> held(static_cast<std::size_t>(structure.parts), -1);
  for (std::size_t antenna = 0; antenna < rpns.size(); ++antenna) {
    int& best = held[static_cast<std::size_t>(structure.partOf[antenna])];
    if (best < 0 || rpns[antenna] < rpns[static_cast<std::size_t>(best)]) {
      best = static_cast<int>(antenna);
    }
  }
  std::vector<bool> isHeld(structure.partOf.size(), false);
  for (const int antenna : held) {
    isHeld[static_cast<std::size_t>(antenna)] = true;
  }
  return isHeld;
}

}  // namespace

Network ReadNetwork(const sync::SyncModel& model) {
  Network network;
  network.readings = ReadPairs(model);
  for (int antenna = 0; antenna < network.Antennas(); ++antenna) {
    network.rpns.push_back(model.AaRpn(antenna));
  }
  PairGraph graph(network.Antennas());
  std::vector<double> variances;
  for (const AntennaPair& pair : network.Pairs()) {
    graph.Connect(pair.a, pair.b);
    variances.push_back(pair.variance);
  }
  network.structure = StructureOf(graph);
  network.held = ChooseHeld(network.rpns, network.structure);
  network.medianVariance = variances.empty() ? 0.0 : Median(std::move(variances));
  return network;
}

Adjustment::Adjustment(const Network& network)
    : delays(static_cast<std::size_t>(network.Antennas())),
      huberWeights(network.Pairs().size(), 1.0),
      extraVariance(network.Pairs().size()),
      leftOut(network.Pairs().size(), false),
      cofactors(network.Antennas()),
      weights(network.Pairs().size()),
      equations(network.Antennas()) {}

void Adjust(const Network& network, Adjustment& adjustment) {
  for (int round = 0; round < kMostRounds; ++round) {
    SetUpEquations(network, adjustment);
    const double moved = MoveDelays(network, adjustment);
    Reweigh(network, adjustment);
    if (moved < kSmallestMove) {
      break;
    }
  }
  SolveWithCovariances(network, adjustment);
}

void SolveWithCovariances(const Network& network, Adjustment& adjustment) {
  SetUpEquations(network, adjustment);
  MoveDelays(network, adjustment);
  adjustment.equations.Invert(adjustment.cofactors);
  for (int antenna = 0; antenna < network.Antennas(); ++antenna) {
    if (network.held[static_cast<std::size_t>(antenna)]) {
      adjustment.cofactors.Row(static_cast<std::size_t>(antenna))[antenna] = 0.0;
    }
  }
}

}  // namespace kelvara::survey
