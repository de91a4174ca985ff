#include "survey/SurveyChanges.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

#include "survey/AntennaPairs.h"
#include "survey/Survey.h"

namespace kelvara::survey {
namespace {

constexpr int kMostRounds = 10;
constexpr double kTLimit = 3.3;
constexpr double kLeastChange = 1.0;
/// Rounding must not decide about a change of exactly that size.
constexpr double kTie = 1e-9;

/// What a delay may differ by from visit to visit without a change, in RFPS units.
constexpr double kRepeatability = 0.3;

constexpr std::size_t kLeastStaying = 2;
constexpr std::size_t kMostUndivided = 20;

/// An antenna of both surveys.
struct Compared {
  DelayChange change;
  double difference;  ///< Of the delays as they are, each above its own survey's datum.
  double variance;
};

std::vector<Compared> CommonAntennas(const SurveyResult& earlier, const SurveyResult& later) {
  const auto isMain = [](const SurveyResult& survey, const SurveyAntenna& antenna) {
    return antenna.part == survey.summary.mainPart;
  };
  std::vector<Compared> common;
  for (const SurveyAntenna& now : later.antennas) {
    const auto before =
        std::find_if(earlier.antennas.begin(), earlier.antennas.end(),
                     [&](const SurveyAntenna& antenna) { return antenna.rpn == now.rpn; });
    if (before != earlier.antennas.end() && isMain(earlier, *before) && isMain(later, now)) {
      common.push_back({.change = {.rpn = now.rpn},
                        .difference = now.delay - before->delay,
                        .variance = now.delayStandardError * now.delayStandardError +
                                    before->delayStandardError * before->delayStandardError +
                                    kRepeatability * kRepeatability});
    }
  }
  return common;
}

void Judge(std::vector<Compared>& common, double shift) {
  for (Compared& antenna : common) {
    antenna.change.phase = antenna.difference - shift;
    antenna.change.t = antenna.change.phase / std::sqrt(antenna.variance);
    antenna.change.changed = std::abs(antenna.change.t) > kTLimit &&
                             std::abs(antenna.change.phase) > kLeastChange - kTie;
  }
}

double MedianDifference(const std::vector<Compared>& common) {
  std::vector<double> differences;
  differences.reserve(common.size());
  for (const Compared& antenna : common) {
    differences.push_back(antenna.difference);
  }
  return Median(std::move(differences));
}

/// Those that have not changed.
std::size_t Staying(const std::vector<Compared>& common) {
  return static_cast<std::size_t>(
      std::count_if(common.begin(), common.end(),
                    [](const Compared& antenna) { return !antenna.change.changed; }));
}

double MeanOfStaying(const std::vector<Compared>& common) {
  double sum = 0.0;
  double weights = 0.0;
  for (const Compared& antenna : common) {
    if (!antenna.change.changed) {
      sum += antenna.difference / antenna.variance;
      weights += 1.0 / antenna.variance;
    }
  }
  return sum / weights;
}

sync::SyncModel ModelOf(const sync::SyncModel& model, std::span<const sync::Reading> readings) {
  sync::SyncModel part;
  for (int antenna = 0; antenna < HeldAntennas(model); ++antenna) {
    part.FindOrAddAa(model.AaRpn(antenna), model.AaFps(antenna), model.AaFpn(antenna));
  }
  for (const sync::Reading& reading : readings) {
    part.AddPhase(reading.from, reading.to, reading.phase);
  }
  return part;
}

}  // namespace

std::vector<DelayChange> CompareSurveys(const SurveyResult& earlier, const SurveyResult& later) {
  std::vector<Compared> common = CommonAntennas(earlier, later);
  if (common.empty()) {
    return {};
  }
  Judge(common, MedianDifference(common));
  for (int round = 0; round < kMostRounds; ++round) {
    const std::size_t staying = Staying(common);
    if (staying < kLeastStaying || 2 * staying < common.size()) {
      break;
    }
    Judge(common, MeanOfStaying(common));
  }
  std::vector<DelayChange> changes;
  changes.reserve(common.size());
  for (const Compared& antenna : common) {
    changes.push_back(antenna.change);
  }
  return changes;
}

std::vector<DelayChange> FindDrift(const sync::SyncModel& model) {
  const std::span<const sync::Reading> readings = model.Readings();
  if (readings.size() <= kMostUndivided) {
    return {};
  }
  const std::size_t half = readings.size() / 2;
  SurveyOptions options;
  options.guidance = false;
  std::vector<DelayChange> changes =
      CompareSurveys(MakeSurvey(ModelOf(model, readings.first(half)), options),
                     MakeSurvey(ModelOf(model, readings.subspan(half)), options));
  std::erase_if(changes, [](const DelayChange& change) { return !change.changed; });
  return changes;
}

}  // namespace kelvara::survey
