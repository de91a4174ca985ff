#include "survey/NetworkPicture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace kelvara::survey {
namespace {

constexpr double kMostExtraWidth = 3.0;

/// A line is as wide as possible from so many readings on.
constexpr double kReadingsOfWidest = 60.0;

/// With more pairs than this, lines become thinner.
constexpr double kManyPairs = 100.0;

constexpr double kLeastSuspectWidth = 3.0;

LineKind KindOf(const SurveyPair& pair) {
  if (pair.suspect) {
    return pair.rejected ? LineKind::Rejected : LineKind::Doubtful;
  }
  if (pair.bridge) {
    return LineKind::Bridge;
  }
  return pair.countAb > 0 && pair.countBa > 0 ? LineKind::TwoWay : LineKind::OneWay;
}

double WidthOf(const SurveyPair& pair, std::size_t pairs) {
  const auto readings = static_cast<double>(std::int64_t{pair.countAb} + pair.countBa);
  const double width =
      1.0 + kMostExtraWidth * std::min(std::log(readings) / std::log(kReadingsOfWidest), 1.0);
  const double scale = std::min(1.0, std::sqrt(kManyPairs / static_cast<double>(pairs)));
  return pair.suspect ? std::max(width, kLeastSuspectWidth) : width * scale;
}

}  // namespace

NetworkPicture LayOutNetwork(const SurveyResult& survey) {
  NetworkPicture picture;
  const auto antennas = static_cast<double>(survey.antennas.size());
  for (std::size_t antenna = 0; antenna < survey.antennas.size(); ++antenna) {
    const double angle = 2.0 * std::numbers::pi * static_cast<double>(antenna) / antennas;
    picture.nodes.push_back({.x = std::sin(angle), .y = -std::cos(angle)});
  }
  for (const SurveyPlace& place : survey.next) {
    picture.nodes[static_cast<std::size_t>(place.antenna)].standHere = true;
  }
  for (const int reference : survey.summary.references) {
    picture.nodes[static_cast<std::size_t>(reference)].isReference = true;
  }
  for (std::size_t pair = 0; pair < survey.pairs.size(); ++pair) {
    picture.lines.push_back({.pair = pair,
                             .kind = KindOf(survey.pairs[pair]),
                             .width = WidthOf(survey.pairs[pair], survey.pairs.size())});
  }
  std::stable_sort(
      picture.lines.begin(), picture.lines.end(),
      [](const PictureLine& one, const PictureLine& other) { return one.kind > other.kind; });
  return picture;
}

std::span<const double> DashPattern(LineKind kind) {
  static constexpr std::array<double, 2> kDots = {2, 4};
  static constexpr std::array<double, 6> kDashTwoDots = {10, 3, 2, 3, 2, 3};
  static constexpr std::array<double, 4> kDashDot = {16, 4, 3, 4};
  static constexpr std::array<double, 2> kDashes = {7, 5};
  switch (kind) {
    case LineKind::Rejected:
      return kDots;
    case LineKind::Doubtful:
      return kDashTwoDots;
    case LineKind::Bridge:
      return kDashDot;
    case LineKind::OneWay:
      return kDashes;
    case LineKind::TwoWay:
      break;
  }
  return {};
}

}  // namespace kelvara::survey
