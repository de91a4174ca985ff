#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "sync/SyncModel.h"

namespace kelvara::survey {

/// All phases here are in RFPS units, not rounded.

/// Two antennas with at least one reading between them. `a` is the one that appeared first.
struct AntennaPair {
  int a = 0;
  int b = 0;
  std::int32_t countAb = 0;  ///< Readings of b while synchronised to a.
  std::int32_t countBa = 0;  ///< Readings of a while synchronised to b.
  double meanAb = 0.0;       ///< 0 if there are none.
  double meanBa = 0.0;
  double difference = 0.0;  ///< The measured delay of a minus that of b.
  double variance = 0.0;    ///< Of the difference, without what the pairs vary of themselves.

  bool IsTwoWay() const { return countAb > 0 && countBa > 0; }
  std::int64_t Count() const { return std::int64_t{countAb} + countBa; }

  /// Fewer than three readings.
  bool IsThin() const { return Count() < 3; }

  /// The mean extra path of a two-way pair, which delays both directions.
  double Path() const { return -(meanAb + meanBa) / 2.0; }
};

/// What the readings say about themselves, before any adjustment.
struct ReadingStatistics {
  double readingVariance = 0.25;  ///< Of a single reading.
  bool pathKnown = false;         ///< Whether there are enough two-way pairs to know the path.
  double path = 0.0;              ///< The extra path that is usual at this site; 0 if unknown.
  double pathScatter = 2.0;       ///< Its standard deviation from pair to pair.
};

/// All pairs of a model, ordered by their antennas, and the statistics from which their variances
/// come.
struct AntennaPairs {
  int antennas = 0;
  std::vector<AntennaPair> pairs;
  ReadingStatistics statistics;
};

/// The number of antennas that the model holds; its own count includes one that it refused.
int HeldAntennas(const sync::SyncModel& model);

/// Reads the pairs. Cells that cannot be trusted are left out: a report's field ends at -99, so a
/// smaller or equal reading may be a truncated one.
AntennaPairs ReadPairs(const sync::SyncModel& model);

/// The variance of a pair's difference if it had these numbers of readings, which need not be
/// whole. At least one of them must be above 0.
double DifferenceVariance(double countAb, double countBa, const ReadingStatistics& statistics);

/// The median, which for an even number is the mean of the middle two. `values` must not be empty.
double Median(std::vector<double> values);

}  // namespace kelvara::survey
