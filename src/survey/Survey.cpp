#include "survey/Survey.h"

#include <algorithm>
#include <cmath>

#include "survey/AaSyncRange.h"
#include "survey/DataSnooping.h"
#include "survey/Guidance.h"

namespace kelvara::survey {
namespace {

/// Delays that differ by less are equal, whatever the rounding errors.
constexpr double kSameDelay = 1e-9;

/// Fewer pairs cannot show which of them is wrong.
constexpr int kLeastPairs = 3;

constexpr std::size_t Index(int index) { return static_cast<std::size_t>(index); }

/// The antenna with the smallest delay of each part.
std::vector<int> ShortestOfParts(const Network& network, const Adjustment& adjustment) {
  std::vector<int> shortest(Index(network.structure.parts), -1);
  for (int antenna = 0; antenna < network.Antennas(); ++antenna) {
    int& best = shortest[Index(network.structure.partOf[Index(antenna)])];
    if (best < 0 ||
        adjustment.delays[Index(antenna)] < adjustment.delays[Index(best)] - kSameDelay) {
      best = antenna;
    }
  }
  return shortest;
}

int LargestPart(const GraphStructure& structure) {
  std::vector<int> sizes(Index(structure.parts));
  for (const int part : structure.partOf) {
    ++sizes[Index(part)];
  }
  return sizes.empty()
             ? 0
             : static_cast<int>(std::max_element(sizes.begin(), sizes.end()) - sizes.begin());
}

SurveySummary Summarise(const sync::SyncModel& model, const Network& network,
                        const CheckedNetwork& checked) {
  const ReadingStatistics& statistics = network.readings.statistics;
  SurveySummary summary;
  summary.reports = model.ReportCount();
  summary.parts = network.structure.parts;
  summary.mainPart = LargestPart(network.structure);
  summary.pairsPossible = network.Antennas() * (network.Antennas() - 1) / 2;
  for (const AntennaPair& pair : network.Pairs()) {
    summary.oneWay += pair.IsTwoWay() ? 0 : 1;
    summary.thin += pair.IsThin() ? 1 : 0;
  }
  summary.bridges = network.structure.bridges;
  for (int antenna = 0; antenna < network.Antennas(); ++antenna) {
    if (network.structure.articulation[Index(antenna)]) {
      summary.articulation.push_back(antenna);
    }
  }
  summary.degreesOfFreedom = network.DegreesOfFreedom();
  summary.sigmaReading = std::sqrt(statistics.readingVariance);
  summary.sigmaPair = std::sqrt(checked.adjustment.pairVariance);
  if (statistics.pathKnown) {
    summary.pathExcess = statistics.path;
    summary.pathScatter = statistics.pathScatter;
  }
  summary.critical = checked.critical;
  summary.references = ShortestOfParts(network, checked.adjustment);
  return summary;
}

std::vector<SurveyPair> ListPairs(const Network& network, const CheckedNetwork& checked) {
  const auto& bridges = network.structure.bridges;
  std::vector<SurveyPair> pairs;
  pairs.reserve(network.Pairs().size());
  for (std::size_t index = 0; index < network.Pairs().size(); ++index) {
    const AntennaPair& pair = network.Pairs()[index];
    const PairCheck& check = checked.checks[index];
    const bool rejected = checked.adjustment.leftOut[index];
    pairs.push_back(
        {.a = pair.a,
         .b = pair.b,
         .countAb = pair.countAb,
         .countBa = pair.countBa,
         .difference = pair.difference,
         .residual = check.residual,
         .redundancy = check.redundancy,
         .w = check.w,
         .smallestDetectable = check.smallestDetectable,
         .pathExcess = pair.IsTwoWay() ? std::optional(pair.Path()) : std::nullopt,
         .directionT = check.directionT,
         .thin = pair.IsThin(),
         .bridge = std::binary_search(bridges.begin(), bridges.end(), std::pair(pair.a, pair.b)),
         .rejected = rejected,
         .suspect = rejected || checked.IsSuspect(index)});
  }
  return pairs;
}

/// Fills in the estimates of an antenna, relative to the reference of its part.
void Estimate(SurveyAntenna& antenna, int index, int shortest, int reference, double knownMetres,
              const Adjustment& adjustment) {
  const auto relativeTo = [&](int datum) {
    return adjustment.delays[Index(index)] - adjustment.delays[Index(datum)];
  };
  const auto errorTo = [&](int datum) {
    return std::sqrt(adjustment.cofactors.VarianceOfDifference(index, datum));
  };
  antenna.delay = relativeTo(shortest);
  antenna.delayStandardError = errorTo(shortest);
  antenna.phase = relativeTo(reference);
  antenna.standardError = errorTo(reference);
  antenna.metres = antenna.phase * kMetresPerRfpsUnit + knownMetres;
  antenna.metresStandardError = antenna.standardError * kMetresPerRfpsUnit;
  const AaSyncRange range =
      AaSyncRangeOf(antenna.phase + knownMetres / kMetresPerRfpsUnit, antenna.standardError);
  antenna.aaSync = range.best;
  antenna.aaSyncLow = range.low;
  antenna.aaSyncHigh = range.high;
}

/// What an antenna's pairs say about it.
struct PairTotals {
  int kept = 0;
  bool inLoop = false;
  bool suspect = false;
};

std::vector<PairTotals> CountPairs(SurveyResult& result) {
  std::vector<PairTotals> totals(result.antennas.size());
  for (const SurveyPair& pair : result.pairs) {
    for (const int index : {pair.a, pair.b}) {
      SurveyAntenna& antenna = result.antennas[Index(index)];
      ++antenna.pairs;
      antenna.readings += std::int64_t{pair.countAb} + pair.countBa;
      antenna.stoodAt = antenna.stoodAt || (index == pair.a ? pair.countAb : pair.countBa) > 0;
      PairTotals& total = totals[Index(index)];
      total.kept += pair.rejected ? 0 : 1;
      total.inLoop = total.inLoop || !pair.bridge;
      total.suspect = total.suspect || (pair.suspect && !pair.rejected);
    }
  }
  return totals;
}

AntennaStatus StatusOf(const SurveyAntenna& antenna, const PairTotals& pairs, int antennas,
                       int mainPart) {
  if (antenna.part != mainPart) {
    return AntennaStatus::Apart;
  }
  if (pairs.suspect) {
    return AntennaStatus::Suspect;
  }
  if (!pairs.inLoop || pairs.kept < std::min(kLeastPairs, antennas - 1) || antennas < kLeastPairs) {
    return AntennaStatus::Unchecked;
  }
  return antenna.aaSyncLow == antenna.aaSyncHigh ? AntennaStatus::Settled : AntennaStatus::NearStep;
}

void FillAntennas(const Network& network, const CheckedNetwork& checked,
                  const SurveyOptions& options, SurveyResult& result) {
  const std::vector<int> shortest = result.summary.references;
  if (options.reference) {
    result.summary.mainPart = network.structure.partOf[Index(*options.reference)];
    result.summary.references[Index(result.summary.mainPart)] = *options.reference;
  }
  result.antennas.resize(Index(network.Antennas()));
  const std::vector<PairTotals> totals = CountPairs(result);
  for (int index = 0; index < network.Antennas(); ++index) {
    SurveyAntenna& antenna = result.antennas[Index(index)];
    antenna.rpn = network.rpns[Index(index)];
    antenna.part = network.structure.partOf[Index(index)];
    const bool known = options.reference && antenna.part == result.summary.mainPart;
    Estimate(antenna, index, shortest[Index(antenna.part)],
             result.summary.references[Index(antenna.part)], known ? options.referenceMetres : 0.0,
             checked.adjustment);
    antenna.status =
        StatusOf(antenna, totals[Index(index)], network.Antennas(), result.summary.mainPart);
    result.summary.settled += antenna.status == AntennaStatus::Settled ? 1 : 0;
    if (Index(index) < options.reportMetres.size()) {
      antenna.reportMetres = options.reportMetres[Index(index)];
    }
  }
}

std::vector<SurveyPlace> PlacesToStand(const Network& network, const Adjustment& adjustment,
                                       const SurveyResult& result) {
  if (network.Antennas() < 2) {
    return {};
  }
  std::vector<double> phases;
  for (const SurveyAntenna& antenna : result.antennas) {
    phases.push_back(antenna.metres / kMetresPerRfpsUnit);
  }
  const int reference = result.summary.references[Index(result.summary.mainPart)];
  const GuidanceBasis basis = MakeGuidanceBasis(network, adjustment, phases, reference);
  std::vector<SurveyPlace> places;
  for (const StandingGain& gain : BestToStandAt(StandingGains(network, adjustment, basis))) {
    places.push_back({.antenna = gain.antenna, .gain = gain.gain});
  }
  return places;
}

}  // namespace

SurveyResult MakeSurvey(const sync::SyncModel& model, const SurveyOptions& options) {
  const Network network = ReadNetwork(model);
  const CheckedNetwork checked = SnoopData(network);
  SurveyResult result;
  result.summary = Summarise(model, network, checked);
  result.pairs = ListPairs(network, checked);
  FillAntennas(network, checked, options, result);
  if (options.guidance) {
    result.next = PlacesToStand(network, checked.adjustment, result);
  }
  return result;
}

std::optional<int> AntennaWithRpn(const sync::SyncModel& model, int rpn) {
  for (int antenna = 0; antenna < HeldAntennas(model); ++antenna) {
    if (model.AaRpn(antenna) == rpn) {
      return antenna;
    }
  }
  return std::nullopt;
}

}  // namespace kelvara::survey
