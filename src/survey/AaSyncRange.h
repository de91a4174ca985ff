#pragma once

#include <cmath>
#include <cstdint>

#include "sync/AaSyncUnits.h"

namespace kelvara::survey {

/// The whole AA Sync units of a phase that was estimated, in RFPS units, and of the ends of its
/// interval of 99 %.
struct AaSyncRange {
  std::int64_t best = 0;
  std::int64_t low = 0;
  std::int64_t high = 0;

  /// Whether the phase is so near a step between two values that either may be right.
  bool IsNearStep() const { return low != high; }
};

/// Rounds half to even.
inline std::int64_t NearestAaSync(double phase) {
  return static_cast<std::int64_t>(std::nearbyint(phase / sync::kRfpsUnitsPerAaSyncUnit));
}

inline AaSyncRange AaSyncRangeOf(double phase, double standardError) {
  constexpr double kWidth = 2.58;
  return {.best = NearestAaSync(phase),
          .low = NearestAaSync(phase - kWidth * standardError),
          .high = NearestAaSync(phase + kWidth * standardError)};
}

}  // namespace kelvara::survey
