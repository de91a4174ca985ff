#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "survey/SurveyResult.h"

namespace kelvara::survey {

/// How a pair is drawn; the first that applies.
enum class LineKind {
  Rejected,  ///< Contradicts the others and is left out.
  Doubtful,  ///< Contradicts the others, but cannot be left out.
  Bridge,    ///< Alone connects two parts, so nothing checks it.
  OneWay,    ///< Heard in one direction only.
  TwoWay,
};

/// The picture of a network: antennas on a circle, pairs as lines. Coordinates are from -1 to 1, x
/// to the right and y downwards.
struct PictureNode {
  double x = 0.0;
  double y = 0.0;
  bool standHere = false;    ///< Among the places to stand next.
  bool isReference = false;  ///< Of its part.
};

struct PictureLine {
  std::size_t pair = 0;  ///< Index into the survey's pairs.
  LineKind kind = LineKind::TwoWay;
  /// In pixels: 1 for the fewest readings, up to 4; thinner where there are many pairs.
  double width = 1.0;
};

struct NetworkPicture {
  std::vector<PictureNode> nodes;  ///< By antenna, clockwise from the top.
  std::vector<PictureLine> lines;  ///< In the order in which they are drawn, suspects last.
};

/// Lays out the picture of a survey.
NetworkPicture LayOutNetwork(const SurveyResult& survey);

/// The dashes and gaps of a kind of line, in pixels, so that kinds can be told apart without
/// colour; empty for a solid line.
std::span<const double> DashPattern(LineKind kind);

}  // namespace kelvara::survey
