#include <array>
#include <utility>

#include "survey/Figures.h"
#include "survey/HtmlText.h"
#include "survey/NetworkPicture.h"
#include "survey/SurveyReportParts.h"

namespace kelvara::survey {
namespace {

/// The picture's sizes in pixels.
constexpr double kRadius = 300.0;
constexpr double kEdge = 345.0;
constexpr double kNodeRadius = 6.0;
constexpr double kRingRadius = 11.0;
constexpr double kLabelRadius = 324.0;
constexpr double kMarkSize = 5.0;

std::string Number(double value) { return Decimals(value, 1); }

std::string Attribute(std::string_view name, double value) {
  return " " + std::string(name) + "=\"" + Number(value) + "\"";
}

std::string_view ClassOf(LineKind kind) {
  switch (kind) {
    case LineKind::Rejected:
      return "rejected";
    case LineKind::Doubtful:
      return "doubtful";
    case LineKind::Bridge:
      return "bridge";
    case LineKind::OneWay:
      return "oneway";
    case LineKind::TwoWay:
      break;
  }
  return "twoway";
}

std::string LineHtml(LineKind kind, double width, double x1, double y1, double x2, double y2) {
  std::string html = "<line class=\"" + std::string(ClassOf(kind)) + "\"" + Attribute("x1", x1) +
                     Attribute("y1", y1) + Attribute("x2", x2) + Attribute("y2", y2) +
                     Attribute("stroke-width", width);
  std::string dashes;
  for (const double length : DashPattern(kind)) {
    dashes += (dashes.empty() ? "" : " ") + Number(length);
  }
  if (!dashes.empty()) {
    html += " stroke-dasharray=\"" + dashes + "\"";
  }
  html += "/>";
  if (kind == LineKind::Rejected || kind == LineKind::Doubtful) {
    // A cross in the middle: suspects are found without colour and among many lines.
    const double x = (x1 + x2) / 2.0;
    const double y = (y1 + y2) / 2.0;
    html += "<path class=\"mark\" d=\"M" + Number(x - kMarkSize) + " " + Number(y - kMarkSize) +
            "L" + Number(x + kMarkSize) + " " + Number(y + kMarkSize) + "M" +
            Number(x - kMarkSize) + " " + Number(y + kMarkSize) + "L" + Number(x + kMarkSize) +
            " " + Number(y - kMarkSize) + "\"/>";
  }
  return html + "\n";
}

std::string CircleHtml(std::string_view circleClass, double x, double y, double radius) {
  return "<circle class=\"" + std::string(circleClass) + "\"" + Attribute("cx", x) +
         Attribute("cy", y) + Attribute("r", radius) + "/>";
}

std::string NodeHtml(const PictureNode& node, const SurveyAntenna& antenna) {
  const double x = node.x * kRadius;
  const double y = node.y * kRadius;
  const bool settled = antenna.status == AntennaStatus::Settled;
  std::string html = "<g><title>" + RpnText(antenna.rpn) + ": " +
                     std::string(StatusText(antenna.status)) + "</title>";
  if (node.standHere) {
    html += CircleHtml("ring", x, y, kRingRadius);
  }
  html += CircleHtml(settled ? "settled" : "open", x, y, kNodeRadius);
  html += "<text" + Attribute("x", node.x * kLabelRadius) +
          Attribute("y", node.y * kLabelRadius + 4.0) +
          (node.isReference ? " class=\"datum\"" : "") + ">" + RpnText(antenna.rpn) +
          "</text></g>\n";
  return html;
}

std::string LegendHtml() {
  static constexpr std::array<std::pair<LineKind, std::string_view>, 5> kEntries = {
      {{LineKind::TwoWay, "heard in both directions"},
       {LineKind::OneWay, "heard in one direction"},
       {LineKind::Bridge, "bridge: nothing checks it"},
       {LineKind::Doubtful, "in doubt: contradicts the others, but cannot be left out"},
       {LineKind::Rejected, "left out: contradicts the others"}}};
  std::string html = "<ul class=\"legend\">\n";
  for (const auto& [kind, text] : kEntries) {
    html += "<li><svg width=\"70\" height=\"14\" viewBox=\"0 0 70 14\" aria-hidden=\"true\">" +
            LineHtml(kind, 2.0, 2.0, 7.0, 68.0, 7.0) + "</svg> " + std::string(text) + "</li>\n";
  }
  const auto node = [](const std::string& picture, std::string_view text) {
    return "<li><svg width=\"70\" height=\"26\" viewBox=\"0 0 70 26\" aria-hidden=\"true\">" +
           picture + "</svg> " + std::string(text) + "</li>\n";
  };
  html += node(CircleHtml("settled", 35, 13, kNodeRadius), "settled");
  html += node(CircleHtml("open", 35, 13, kNodeRadius), "not settled");
  html += node(CircleHtml("ring", 35, 13, kRingRadius) + CircleHtml("open", 35, 13, kNodeRadius),
               "stand here next");
  return html +
         "</ul>\n<p>Wider lines have more readings. The underlined RPN is the reference.</p>\n";
}

}  // namespace

std::string NetworkHtml(const SurveyResult& survey) {
  const NetworkPicture picture = LayOutNetwork(survey);
  const std::string edge = Number(-kEdge);
  const std::string size = Number(2.0 * kEdge);
  std::string html =
      "<div class=\"network\">\n<svg class=\"picture\" role=\"img\" aria-label=\"The network of "
      "antennas\" viewBox=\"" +
      edge + " " + edge + " " + size + " " + size + "\">\n";
  for (const PictureLine& line : picture.lines) {
    const SurveyPair& pair = survey.pairs[line.pair];
    const PictureNode& a = picture.nodes[static_cast<std::size_t>(pair.a)];
    const PictureNode& b = picture.nodes[static_cast<std::size_t>(pair.b)];
    html +=
        LineHtml(line.kind, line.width, a.x * kRadius, a.y * kRadius, b.x * kRadius, b.y * kRadius);
  }
  for (std::size_t antenna = 0; antenna < picture.nodes.size(); ++antenna) {
    html += NodeHtml(picture.nodes[antenna], survey.antennas[antenna]);
  }
  return html + "</svg>\n<div>" + LegendHtml() + "</div>\n</div>\n";
}

}  // namespace kelvara::survey
