#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace kelvara::survey {

/// The metres of cable that delay by one RFPS unit.
inline constexpr double kMetresPerRfpsUnit = 29.0;

/// How far an antenna's length can be relied on; the first that applies.
enum class AntennaStatus {
  Apart,      ///< Not connected to the main part of the network.
  Suspect,    ///< One of its pairs contradicts the others and could not be left out.
  Unchecked,  ///< Too few pairs to notice a wrong one.
  NearStep,   ///< Its AA Sync units may be one more or one less.
  Settled,    ///< Its AA Sync units are certain.
};

/// "settled", "near a step" and so on.
std::string_view StatusText(AntennaStatus status);

struct SurveyAntenna {
  std::int16_t rpn = 0;
  int part = 0;               ///< Index of its part.
  int pairs = 0;              ///< Pairs with readings.
  std::int64_t readings = 0;  ///< Of all its pairs, in both directions.
  bool stoodAt = false;       ///< Whether a beltpack was synchronised to it.
  double phase = 0.0;         ///< In RFPS units, above the reference of its part.
  double standardError = 0.0;
  double metres = 0.0;  ///< With the known length of the reference, if it is in this part.
  double metresStandardError = 0.0;
  std::int64_t aaSync = 0;  ///< AA Sync units of the length, and of the ends of its interval.
  std::int64_t aaSyncLow = 0;
  std::int64_t aaSyncHigh = 0;
  AntennaStatus status = AntennaStatus::Unchecked;
  std::optional<std::int32_t> reportMetres;  ///< The length in the HTML report of the results.
  double delay = 0.0;  ///< In RFPS units, above the smallest of its part, and the error of that.
  double delayStandardError = 0.0;
};

/// A pair of antennas, by their indices; `a` appeared first. Phases in RFPS units.
struct SurveyPair {
  int a = 0;
  int b = 0;
  std::int32_t countAb = 0;
  std::int32_t countBa = 0;
  double difference = 0.0;  ///< The measured phase of a minus that of b.
  double residual = 0.0;
  double redundancy = 0.0;
  std::optional<double> w;
  std::optional<double> smallestDetectable;
  std::optional<double> pathExcess;
  std::optional<double> directionT;
  bool thin = false;
  bool bridge = false;
  bool rejected = false;
  bool suspect = false;  ///< Rejected, or kept and still above the limit.
};

struct SurveySummary {
  std::int32_t reports = 0;
  int parts = 0;
  int mainPart = 0;
  int pairsPossible = 0;
  int oneWay = 0;
  int thin = 0;
  std::vector<std::pair<int, int>> bridges;  ///< By antenna.
  std::vector<int> articulation;             ///< Antennas whose loss splits a part.
  int degreesOfFreedom = 0;
  double sigmaReading = 0.0;          ///< Standard deviation of a reading.
  double sigmaPair = 0.0;             ///< What pairs vary beyond their readings.
  std::optional<double> pathExcess;   ///< The usual extra path; none if unknown.
  std::optional<double> pathScatter;  ///< Its standard deviation from pair to pair.
  double critical = 0.0;              ///< The limit of the test values.
  int settled = 0;                    ///< Antennas with this status.
  std::vector<int> references;        ///< The antenna with phase 0 of each part.
};

/// An antenna to stand at, and what it would gain; see StandingGain.
struct SurveyPlace {
  int antenna = 0;
  double gain = 0.0;
};

/// Everything that a survey found. Every number is finite.
struct SurveyResult {
  SurveySummary summary;
  std::vector<SurveyAntenna> antennas;  ///< In order of appearance.
  std::vector<SurveyPair> pairs;        ///< By a, then b.
  std::vector<SurveyPlace> next;        ///< At most three, the best first.

  /// The pairs that are suspect, as indices.
  std::vector<std::size_t> Suspects() const;

  const SurveyAntenna& Antenna(int index) const {
    return antennas[static_cast<std::size_t>(index)];
  }

  bool IsInMainPart(int antenna) const { return Antenna(antenna).part == summary.mainPart; }

  /// Whether an antenna's length is settled, and the report's length is another.
  static bool ReportDiffers(const SurveyAntenna& antenna);
};

}  // namespace kelvara::survey
