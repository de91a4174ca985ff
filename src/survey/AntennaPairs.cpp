#include "survey/AntennaPairs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace kelvara::survey {
namespace {

/// A report's field for a phase has three characters, so it cannot hold less.
constexpr int kSmallestPhase = -99;

/// Control chart constants: the expected range of 2 to 25 normal values in standard deviations.
constexpr std::array<double, 24> kD2 = {1.128, 1.693, 2.059, 2.326, 2.534, 2.704, 2.847, 2.970,
                                        3.078, 3.173, 3.258, 3.336, 3.407, 3.472, 3.532, 3.588,
                                        3.640, 3.689, 3.735, 3.778, 3.819, 3.858, 3.895, 3.931};
constexpr std::int32_t kMostInRange = 25;

/// A wider range shows that something changed between the readings, which is not noise.
constexpr int kWidestRange = 8;

/// The prior: a standard deviation of half a unit, with the weight of ten readings.
constexpr double kPriorVariance = 0.25;
constexpr double kPriorReadings = 10.0;

/// The variance that rounding to whole units causes, below which no estimate may fall.
constexpr double kRoundingVariance = 1.0 / 12.0;

constexpr double kLeastPathScatter = 0.15;
constexpr double kMadToDeviation = 1.4826;
constexpr std::size_t kLeastTwoWayPairs = 3;

/// The readings of a cell, or an empty cell if they cannot be trusted.
sync::PhaseCell TrustedCell(const sync::SyncModel& model, int from, int to) {
  const sync::PhaseCell& cell = model.Cell(from, to);
  return cell.Count > 0 && cell.Min > kSmallestPhase ? cell : sync::PhaseCell{};
}

/// Pools the ranges of the cells into the variance of one reading.
class RangePool {
 public:
  void Add(const sync::PhaseCell& cell) {
    const int range = cell.Max - cell.Min;
    if (cell.Count < 2 || range > kWidestRange) {
      return;
    }
    const std::int32_t count = std::min(cell.Count, kMostInRange);
    ranges_ += range;
    expected_ += kD2[static_cast<std::size_t>(count) - 2];
    degreesOfFreedom_ += count - 1;
  }

  double Variance() const {
    if (degreesOfFreedom_ == 0) {
      return kPriorVariance;
    }
    const double deviation = ranges_ / expected_;
    const double variance = std::max(deviation * deviation, kRoundingVariance);
    return (kPriorReadings * kPriorVariance + degreesOfFreedom_ * variance) /
           (kPriorReadings + degreesOfFreedom_);
  }

 private:
  double ranges_ = 0.0;
  double expected_ = 0.0;
  int degreesOfFreedom_ = 0;
};

double TwoWayVariance(const AntennaPair& pair, double readingVariance) {
  return readingVariance * (1.0 / pair.countAb + 1.0 / pair.countBa) / 4.0;
}

void EstimatePath(const std::vector<AntennaPair>& pairs, ReadingStatistics& statistics) {
  std::vector<double> paths;
  std::vector<double> variances;
  for (const AntennaPair& pair : pairs) {
    if (pair.IsTwoWay()) {
      paths.push_back(pair.Path());
      variances.push_back(TwoWayVariance(pair, statistics.readingVariance));
    }
  }
  if (paths.size() < kLeastTwoWayPairs) {
    return;
  }
  statistics.pathKnown = true;
  statistics.path = Median(paths);
  for (double& path : paths) {
    path = std::abs(path - statistics.path);
  }
  const double scatter = kMadToDeviation * Median(paths);
  statistics.pathScatter = std::sqrt(
      std::max(kLeastPathScatter * kLeastPathScatter, scatter * scatter - Median(variances)));
}

double Difference(const AntennaPair& pair, double path) {
  if (pair.IsTwoWay()) {
    return (pair.meanAb - pair.meanBa) / 2.0;
  }
  return pair.countAb > 0 ? pair.meanAb + path : -(pair.meanBa + path);
}

}  // namespace

int HeldAntennas(const sync::SyncModel& model) {
  return std::min<int>(model.AaCount(), sync::kMaxAas);
}

AntennaPairs ReadPairs(const sync::SyncModel& model) {
  AntennaPairs result;
  result.antennas = HeldAntennas(model);
  RangePool ranges;
  for (int a = 0; a < result.antennas; ++a) {
    for (int b = a + 1; b < result.antennas; ++b) {
      const sync::PhaseCell ab = TrustedCell(model, a, b);
      const sync::PhaseCell ba = TrustedCell(model, b, a);
      ranges.Add(ab);
      ranges.Add(ba);
      if (ab.Count > 0 || ba.Count > 0) {
        result.pairs.push_back({.a = a,
                                .b = b,
                                .countAb = ab.Count,
                                .countBa = ba.Count,
                                .meanAb = ab.Count > 0 ? ab.Mean() : 0.0,
                                .meanBa = ba.Count > 0 ? ba.Mean() : 0.0});
      }
    }
  }
  result.statistics.readingVariance = ranges.Variance();
  EstimatePath(result.pairs, result.statistics);
  for (AntennaPair& pair : result.pairs) {
    pair.difference = Difference(pair, result.statistics.path);
    pair.variance = DifferenceVariance(pair.countAb, pair.countBa, result.statistics);
  }
  return result;
}

double DifferenceVariance(double countAb, double countBa, const ReadingStatistics& statistics) {
  if (countAb > 0.0 && countBa > 0.0) {
    return statistics.readingVariance * (1.0 / countAb + 1.0 / countBa) / 4.0;
  }
  return statistics.readingVariance / (countAb + countBa) +
         statistics.pathScatter * statistics.pathScatter;
}

double Median(std::vector<double> values) {
  const std::size_t half = values.size() / 2;
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(half);
  std::nth_element(values.begin(), middle, values.end());
  return values.size() % 2 == 1 ? *middle
                                : (*middle + *std::max_element(values.begin(), middle)) / 2.0;
}

}  // namespace kelvara::survey
