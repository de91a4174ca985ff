#include "survey/DataSnooping.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <tuple>

namespace kelvara::survey {
namespace {

constexpr int kMostRounds = 8;

/// The redundancy by which a residual is divided is not taken smaller.
constexpr double kLeastDivisor = 0.05;

/// Test values that differ by less are equal, and the antennas decide: rounding errors, which
/// depend on the order of the antennas, must not.
constexpr double kTestValueStep = 1e-6;

struct Candidate {
  std::int64_t steps;
  std::size_t pair;
};

/// All pairs above the limit, the worst first.
std::vector<Candidate> Candidates(const CheckedNetwork& network) {
  std::vector<Candidate> candidates;
  for (std::size_t index = 0; index < network.checks.size(); ++index) {
    const PairCheck& check = network.checks[index];
    if (check.Exceeds(network.critical)) {
      const double steps = std::min(check.Largest() / kTestValueStep, 1e18);
      candidates.push_back({static_cast<std::int64_t>(std::llround(steps)), index});
    }
  }
  return candidates;
}

/// Whether the graph would hang together as before without the pair.
bool CanSpare(const PairGraph& kept, const AntennaPair& pair, const GraphStructure& before) {
  // With two common neighbours, every loop through the pair can be closed another way.
  if (kept.CommonNeighbours(pair.a, pair.b) >= 2) {
    return true;
  }
  PairGraph without = kept;
  without.Disconnect(pair.a, pair.b);
  const GraphStructure after = StructureOf(without);
  return after.parts <= before.parts && after.bridges.size() <= before.bridges.size();
}

std::vector<bool> ChooseLeftOut(const Network& network, const CheckedNetwork& checked) {
  PairGraph kept(network.Antennas());
  for (const AntennaPair& pair : network.Pairs()) {
    kept.Connect(pair.a, pair.b);
  }
  std::vector<Candidate> candidates = Candidates(checked);
  const auto rank = [&](const Candidate& candidate) {
    const AntennaPair& pair = network.Pairs()[candidate.pair];
    const auto [first, second] = std::minmax(network.rpns[static_cast<std::size_t>(pair.a)],
                                             network.rpns[static_cast<std::size_t>(pair.b)]);
    return std::tuple(-candidate.steps, first, second);
  };
  std::sort(candidates.begin(), candidates.end(),
            [&](const Candidate& one, const Candidate& other) { return rank(one) < rank(other); });
  std::vector<bool> leftOut(network.Pairs().size(), false);
  for (const Candidate& candidate : candidates) {
    const AntennaPair& pair = network.Pairs()[candidate.pair];
    if (CanSpare(kept, pair, network.structure)) {
      kept.Disconnect(pair.a, pair.b);
      leftOut[candidate.pair] = true;
    }
  }
  return leftOut;
}

/// The variance that explains what a pair in doubt shows.
double ExplainingVariance(const AntennaPair& pair, const PairCheck& check, double limit,
                          const ReadingStatistics& statistics) {
  const double error = check.WExceeds(limit)
                           ? check.residual / std::max(check.redundancy, kLeastDivisor)
                           : statistics.path - pair.Path();
  return error * error;
}

/// Gives the kept pairs that are still above the limit a variance to match, and adjusts once more.
void DoubtTheRest(const Network& network, CheckedNetwork& checked) {
  bool any = false;
  for (std::size_t index = 0; index < checked.checks.size(); ++index) {
    const PairCheck& check = checked.checks[index];
    if (!checked.adjustment.leftOut[index] && check.Exceeds(checked.critical)) {
      checked.inDoubt[index] = true;
      checked.adjustment.extraVariance[index] = ExplainingVariance(
          network.Pairs()[index], check, checked.critical, network.readings.statistics);
      any = true;
    }
  }
  if (!any) {
    return;
  }
  Adjust(network, checked.adjustment);
  std::vector<PairCheck> after = CheckPairs(network, checked.adjustment);
  for (std::size_t index = 0; index < after.size(); ++index) {
    if (checked.inDoubt[index]) {
      PairCheck& check = after[index];
      check.w = checked.checks[index].w;
      check.smallestDetectable.reset();
      if (check.w && check.redundancy > 0) {
        check.smallestDetectable =
            SmallestDetectable(checked.adjustment.Variance(network, index), check.redundancy);
      }
    }
  }
  checked.checks = std::move(after);
}

}  // namespace

CheckedNetwork SnoopData(const Network& network) {
  const std::size_t pairs = network.Pairs().size();
  CheckedNetwork checked{.adjustment = Adjustment(network),
                         .checks = {},
                         .inDoubt = std::vector<bool>(pairs, false),
                         .critical = CriticalValue(pairs)};
  Adjust(network, checked.adjustment);
  checked.checks = CheckPairs(network, checked.adjustment);
  for (int round = 0; round < kMostRounds; ++round) {
    std::vector<bool> leftOut = ChooseLeftOut(network, checked);
    if (leftOut == checked.adjustment.leftOut) {
      break;
    }
    checked.adjustment.leftOut = std::move(leftOut);
    Adjust(network, checked.adjustment);
    checked.checks = CheckPairs(network, checked.adjustment);
  }
  DoubtTheRest(network, checked);
  return checked;
}

}  // namespace kelvara::survey
