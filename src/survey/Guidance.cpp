#include "survey/Guidance.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

#include "survey/AaSyncRange.h"

namespace kelvara::survey {
namespace {

/// Joins the parts, so that a pair between two of them has a gain.
constexpr double kGroundWeight = 1e-4;

constexpr double kReports = 3.0;

/// A report lists some of the neighbours: this many of those that can be heard.
constexpr double kNeighboursInReport = 7.5;

constexpr double kCertainBenefit = 0.05;
constexpr std::size_t kOffered = 3;

/// The pair of each two antennas, by both indices.
class PairTable {
 public:
  explicit PairTable(const Network& network)
      : antennas_(static_cast<std::size_t>(network.Antennas())), table_(antennas_ * antennas_) {
    for (const AntennaPair& pair : network.Pairs()) {
      Entry(pair.a, pair.b) = &pair;
      Entry(pair.b, pair.a) = &pair;
    }
  }

  /// Null if the two have no readings.
  const AntennaPair* Find(int a, int b) const {
    return table_[static_cast<std::size_t>(a) * antennas_ + static_cast<std::size_t>(b)];
  }

 private:
  const AntennaPair*& Entry(int a, int b) {
    return table_[static_cast<std::size_t>(a) * antennas_ + static_cast<std::size_t>(b)];
  }

  std::size_t antennas_;
  std::vector<const AntennaPair*> table_;
};

std::int32_t CountFrom(const AntennaPair& pair, int antenna) {
  return pair.a == antenna ? pair.countAb : pair.countBa;
}

/// By how much the weight of a pair rises with more readings taken at one of its antennas.
double WeightGain(const AntennaPair* pair, int antenna, double more,
                  const ReadingStatistics& statistics, double pairVariance) {
  const auto weight = [&](double here, double there) {
    return 1.0 / (DifferenceVariance(here, there, statistics) + pairVariance);
  };
  if (pair == nullptr) {
    return weight(more, 0.0);
  }
  const double here = CountFrom(*pair, antenna);
  const double there = static_cast<double>(pair->Count()) - here;
  return std::max(weight(here + more, there) - weight(here, there), 0.0);
}

/// The antennas that can be expected to be heard at an antenna.
std::vector<int> ExpectedNeighbours(const PairTable& pairs, int antenna, int antennas) {
  std::vector<int> known;
  std::vector<int> all;
  bool stoodAt = false;
  for (int other = 0; other < antennas; ++other) {
    if (other == antenna) {
      continue;
    }
    all.push_back(other);
    if (const AntennaPair* const pair = pairs.Find(antenna, other)) {
      known.push_back(other);
      stoodAt = stoodAt || CountFrom(*pair, antenna) > 0;
    }
  }
  return stoodAt ? known : all;
}

}  // namespace

GuidanceBasis MakeGuidanceBasis(const Network& network, const Adjustment& adjustment,
                                std::span<const double> phases, int reference) {
  GroundedLaplacian equations(network.Antennas());
  for (int antenna = 0; antenna < network.Antennas(); ++antenna) {
    equations.Ground(antenna, kGroundWeight);
  }
  for (std::size_t index = 0; index < network.Pairs().size(); ++index) {
    const AntennaPair& pair = network.Pairs()[index];
    equations.Connect(
        pair.a, pair.b,
        adjustment.leftOut[index] ? kLeftOutWeight : 1.0 / adjustment.Variance(network, index));
  }
  equations.Factor();
  GuidanceBasis basis{
      .cofactors = SymmetricMatrix(network.Antennas()), .benefit = {}, .reference = reference};
  equations.Invert(basis.cofactors);
  for (int antenna = 0; antenna < network.Antennas(); ++antenna) {
    const double standardError =
        std::sqrt(basis.cofactors.VarianceOfDifference(antenna, reference));
    const double phase = phases[static_cast<std::size_t>(antenna)];
    basis.benefit.push_back(AaSyncRangeOf(phase, standardError).IsNearStep() ? 1.0
                                                                             : kCertainBenefit);
  }
  return basis;
}

double PairGain(const GuidanceBasis& basis, int a, int b, double weightGain) {
  const double* const rowA = basis.cofactors.Row(static_cast<std::size_t>(a));
  const double* const rowB = basis.cofactors.Row(static_cast<std::size_t>(b));
  const double atReference = rowA[basis.reference] - rowB[basis.reference];
  double sum = 0.0;
  for (std::size_t antenna = 0; antenna < basis.benefit.size(); ++antenna) {
    const double change = rowA[antenna] - rowB[antenna] - atReference;
    sum += basis.benefit[antenna] * change * change;
  }
  const double variance = basis.cofactors.VarianceOfDifference(a, b);
  return weightGain / (1.0 + weightGain * variance) * sum /
         static_cast<double>(basis.benefit.size());
}

std::vector<StandingGain> StandingGains(const Network& network, const Adjustment& adjustment,
                                        const GuidanceBasis& basis) {
  const PairTable pairs(network);
  std::vector<StandingGain> gains;
  for (int antenna = 0; antenna < network.Antennas(); ++antenna) {
    const std::vector<int> neighbours = ExpectedNeighbours(pairs, antenna, network.Antennas());
    const double more =
        kReports * std::min(1.0, kNeighboursInReport / static_cast<double>(neighbours.size()));
    double gain = 0.0;
    for (const int other : neighbours) {
      const double weightGain = WeightGain(pairs.Find(antenna, other), antenna, more,
                                           network.readings.statistics, adjustment.pairVariance);
      gain += PairGain(basis, antenna, other, weightGain);
    }
    gains.push_back({antenna, gain});
  }
  return gains;
}

std::vector<StandingGain> BestToStandAt(std::vector<StandingGain> gains) {
  std::erase_if(gains, [](const StandingGain& gain) { return !(gain.gain > 0.0); });
  std::stable_sort(
      gains.begin(), gains.end(),
      [](const StandingGain& one, const StandingGain& other) { return one.gain > other.gain; });
  gains.resize(std::min(gains.size(), kOffered));
  return gains;
}

}  // namespace kelvara::survey
