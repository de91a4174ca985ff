#pragma once

#include "proof/SimulatedSession.h"

namespace kelvara::bench {

/// How far surveys and reports of simulated sites agree with the truth; sums over antennas and
/// pairs.
struct SurveyScore {
  int sites = 0;

  // Antennas with an estimate, judged above the truly shortest antenna.
  int antennas = 0;
  int missing = 0;  ///< Never heard, or apart from the main part.
  int surveyRight = 0;
  int reportRight = 0;
  double surveySquares = 0.0;
  double reportSquares = 0.0;

  // Antennas of the main part without its reference, judged above the reference.
  int intervals = 0;
  int covered = 0;
  int settled = 0;
  int settledRight = 0;

  // Pairs that were heard.
  int planted = 0;
  int plantedFound = 0;
  int detectable = 0;
  int detectableFound = 0;
  int suspects = 0;
  int falseSuspects = 0;

  void Add(const SimulatedSession& session);
  void Add(const SurveyScore& other);
};

/// The reports until every antenna of a site is settled, or the most that were tried.
struct ReportsNeeded {
  int guided = 0;  ///< Standing where the survey says.
  int random = 0;  ///< Standing at a random antenna of the site.
  int onWalk = 0;  ///< On the simulated beltpack's own walk, from neighbour to neighbour.
};

inline constexpr int kMostReportsPerAntenna = 60;

/// Visits a site in each of these ways, three reports at each antenna before the survey is asked.
ReportsNeeded CountReportsNeeded(const SiteKind& kind, std::uint64_t seed);

}  // namespace kelvara::bench
