#include "proof/SurveyScore.h"

#include <cmath>
#include <functional>

#include "report/CableLengths.h"
#include "sim/Random.h"
#include "survey/AaSyncRange.h"
#include "survey/Survey.h"

namespace kelvara::bench {
namespace {

using survey::SurveyAntenna;
using survey::SurveyPair;
using survey::SurveyResult;

constexpr double kWidthOf95Percent = 1.96;
constexpr int kReportsAtAntenna = 3;

std::int64_t AaSyncOf(double metres) {
  return survey::NearestAaSync(metres / survey::kMetresPerRfpsUnit);
}

void ScoreAntenna(const SimulatedSession& session, const SurveyAntenna& antenna,
                  const SurveyAntenna& reference, SurveyScore& score) {
  const double truth = session.TrueMetres(antenna.rpn);
  ++score.antennas;
  score.surveyRight += antenna.aaSync == AaSyncOf(truth) ? 1 : 0;
  score.surveySquares += std::pow(antenna.metres - truth, 2);
  const std::int32_t reported = antenna.reportMetres.value_or(0);
  score.reportRight += reported == AaSyncOf(truth) * sync::kMetresPerAaSyncUnit ? 1 : 0;
  score.reportSquares += std::pow(reported - truth, 2);
  if (antenna.rpn == reference.rpn) {
    return;
  }
  const double above = truth - session.TrueMetres(reference.rpn);
  ++score.intervals;
  score.covered +=
      std::abs(antenna.metres - above) <= kWidthOf95Percent * antenna.metresStandardError ? 1 : 0;
  if (antenna.status == survey::AntennaStatus::Settled) {
    ++score.settled;
    score.settledRight += antenna.aaSync == AaSyncOf(above) ? 1 : 0;
  }
}

void ScorePair(const SimulatedSession& session, const SurveyResult& survey, const SurveyPair& pair,
               SurveyScore& score) {
  const bool isForward = pair.countAb > 0;
  const int from = survey.Antenna(isForward ? pair.a : pair.b).rpn;
  const int to = survey.Antenna(isForward ? pair.b : pair.a).rpn;
  const bool isPlanted = session.IsDisturbed(from, to);
  const int found = pair.suspect ? 1 : 0;
  score.suspects += found;
  if (!isPlanted) {
    score.falseSuspects += found;
    return;
  }
  ++score.planted;
  score.plantedFound += found;
  const bool isTwoWay = pair.countAb > 0 && pair.countBa > 0;
  const double bias = std::abs(session.PlantedBias(from, to, isTwoWay));
  if (pair.smallestDetectable && bias >= *pair.smallestDetectable) {
    ++score.detectable;
    score.detectableFound += found;
  }
}

bool IsAllSettled(const SurveyResult& survey, int antennas) {
  return survey.summary.settled == antennas;
}

using Step = std::function<void(SimulatedSession&, const SurveyResult&)>;

/// The reports until all is settled, if `step` takes the next three after each survey.
int CountReports(const SiteKind& kind, std::uint64_t seed, const Step& step) {
  SimulatedSession session(kind, seed);
  SurveyResult survey;
  int reports = 0;
  while (!IsAllSettled(survey, kind.antennas) && reports < kMostReportsPerAntenna * kind.antennas) {
    step(session, survey);
    reports += kReportsAtAntenna;
    survey = survey::MakeSurvey(session.Model());
  }
  return reports;
}

}  // namespace

void SurveyScore::Add(const SimulatedSession& session) {
  survey::SurveyOptions options;
  options.reportMetres = report::ReportedMetres(session.Model());
  options.guidance = false;
  const SurveyResult survey = survey::MakeSurvey(session.Model(), options);
  const SurveyAntenna& reference =
      survey.Antenna(survey.summary.references[static_cast<std::size_t>(survey.summary.mainPart)]);
  ++sites;
  missing += session.Antennas() - static_cast<int>(survey.antennas.size());
  for (int index = 0; index < static_cast<int>(survey.antennas.size()); ++index) {
    if (survey.IsInMainPart(index)) {
      ScoreAntenna(session, survey.Antenna(index), reference, *this);
    } else {
      ++missing;
    }
  }
  for (const SurveyPair& pair : survey.pairs) {
    ScorePair(session, survey, pair, *this);
  }
}

void SurveyScore::Add(const SurveyScore& other) {
  sites += other.sites;
  antennas += other.antennas;
  missing += other.missing;
  surveyRight += other.surveyRight;
  reportRight += other.reportRight;
  surveySquares += other.surveySquares;
  reportSquares += other.reportSquares;
  intervals += other.intervals;
  covered += other.covered;
  settled += other.settled;
  settledRight += other.settledRight;
  planted += other.planted;
  plantedFound += other.plantedFound;
  detectable += other.detectable;
  detectableFound += other.detectableFound;
  suspects += other.suspects;
  falseSuspects += other.falseSuspects;
}

ReportsNeeded CountReportsNeeded(const SiteKind& kind, std::uint64_t seed) {
  sim::Random random(~seed);
  const auto anywhere = [&] { return random.Below(kind.antennas); };
  const auto whereTold = [&](SimulatedSession& session, const SurveyResult& survey) {
    const int place =
        survey.next.empty() ? anywhere() : survey.Antenna(survey.next.front().antenna).rpn;
    session.StandAt(place, kReportsAtAntenna);
  };
  const auto atRandom = [&](SimulatedSession& session, const SurveyResult& /*survey*/) {
    session.StandAt(anywhere(), kReportsAtAntenna);
  };
  const auto onWalk = [](SimulatedSession& session, const SurveyResult& /*survey*/) {
    session.Walk(kReportsAtAntenna);
  };
  return {.guided = CountReports(kind, seed, whereTold),
          .random = CountReports(kind, seed, atRandom),
          .onWalk = CountReports(kind, seed, onWalk)};
}

}  // namespace kelvara::bench
