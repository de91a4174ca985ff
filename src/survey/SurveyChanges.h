#pragma once

#include <cstdint>
#include <vector>

#include "survey/SurveyResult.h"
#include "sync/SyncModel.h"

namespace kelvara::survey {

/// How an antenna's delay differs between two surveys, relative to the antennas that kept theirs.
struct DelayChange {
  std::int16_t rpn = 0;
  double phase = 0.0;  ///< In RFPS units; above 0 if the later delay is longer.
  double t = 0.0;      ///< In its standard deviations.
  bool changed = false;

  double Metres() const { return phase * kMetresPerRfpsUnit; }
};

/// Compares the antennas that are in the main part of both surveys, in the later one's order.
std::vector<DelayChange> CompareSurveys(const SurveyResult& earlier, const SurveyResult& later);

/// The antennas whose delay changed between the first and the second half of the readings that the
/// model kept. Empty if there are no more than twenty.
std::vector<DelayChange> FindDrift(const sync::SyncModel& model);

}  // namespace kelvara::survey
