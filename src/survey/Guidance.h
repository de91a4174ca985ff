#pragma once

#include <span>
#include <vector>

#include "survey/Adjustment.h"

namespace kelvara::survey {

/// How much standing at an antenna for three reports would improve the survey: the mean over all
/// antennas of what their variance loses, in squared RFPS units. An antenna whose AA Sync units
/// are certain already counts for a twentieth.
struct StandingGain {
  int antenna = 0;
  double gain = 0.0;
};

/// What the gains are computed from.
struct GuidanceBasis {
  SymmetricMatrix cofactors;    ///< Of all pairs at their full weight.
  std::vector<double> benefit;  ///< By antenna: what a unit of its variance is worth.
  int reference = 0;            ///< Of the main part.
};

/// `phases` are the antennas' phases in RFPS units, with the known length of their reference.
GuidanceBasis MakeGuidanceBasis(const Network& network, const Adjustment& adjustment,
                                std::span<const double> phases, int reference);

/// What the survey gains if the weight of one pair of antennas rises.
double PairGain(const GuidanceBasis& basis, int a, int b, double weightGain);

/// The gain of standing at each antenna.
std::vector<StandingGain> StandingGains(const Network& network, const Adjustment& adjustment,
                                        const GuidanceBasis& basis);

/// The three largest gains above 0, the largest first.
std::vector<StandingGain> BestToStandAt(std::vector<StandingGain> gains);

}  // namespace kelvara::survey
