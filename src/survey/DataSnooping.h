#pragma once

#include <vector>

#include "survey/Adjustment.h"
#include "survey/PairChecks.h"

namespace kelvara::survey {

/// The network adjusted without the pairs that contradict the others.
struct CheckedNetwork {
  Adjustment adjustment;
  std::vector<PairCheck> checks;  ///< By pair.
  std::vector<bool> inDoubt;      ///< By pair: contradicts the others, but cannot be left out.
  double critical = 0.0;          ///< The limit of the test values.

  /// Kept, and in doubt or still above the limit.
  bool IsSuspect(std::size_t pair) const {
    return !adjustment.leftOut[pair] && (inDoubt[pair] || checks[pair].WExceeds(critical));
  }
};

/// Adjusts, tests every pair, leaves the worst out as far as the network stays connected and
/// checked as well as before, and repeats until the same pairs are left out. Pairs that contradict
/// the others but cannot be left out get a variance to match.
CheckedNetwork SnoopData(const Network& network);

}  // namespace kelvara::survey
