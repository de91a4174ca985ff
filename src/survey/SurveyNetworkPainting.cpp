#include <QPainter>
#include <algorithm>
#include <array>
#include <numbers>
#include <utility>

#include "survey/SurveyNetworkView.h"

namespace kelvara::survey {
namespace {

constexpr double kLargestNode = 6.0;
constexpr double kSmallestNode = 2.5;
constexpr double kMarkSize = 4.0;
constexpr double kSmallestRadius = 10.0;

/// The circle becomes an ellipse in a wide or high picture, but not a flat one.
constexpr double kMostStretch = 1.8;
constexpr double kSampleWidth = 34.0;

constexpr std::array<std::pair<LineKind, const char*>, 5> kLegend = {
    {{LineKind::TwoWay, "both directions"},
     {LineKind::OneWay, "one way"},
     {LineKind::Bridge, "bridge, unchecked"},
     {LineKind::Doubtful, "in doubt"},
     {LineKind::Rejected, "left out"}}};
constexpr std::array<const char*, 3> kNodeLegend = {"settled", "not settled", "stand here next"};

/// A pen with the dashes of a kind of line, which pens measure in their own width.
QPen PenOf(LineKind kind, const QColor& colour, double width) {
  QPen pen(colour, width);
  pen.setCapStyle(Qt::FlatCap);
  QList<qreal> dashes;
  for (const double length : DashPattern(kind)) {
    dashes.append(length / width);
  }
  if (!dashes.isEmpty()) {
    pen.setDashPattern(dashes);
  }
  return pen;
}

/// A cross: suspects are found without colour and among many lines.
void PaintCross(QPainter& painter, const QPointF& middle, const QColor& colour) {
  const QPointF falling(kMarkSize, kMarkSize);
  const QPointF rising(kMarkSize, -kMarkSize);
  painter.setPen(QPen(colour, 2.0));
  painter.drawLine(middle - falling, middle + falling);
  painter.drawLine(middle - rising, middle + rising);
}

bool IsSuspect(LineKind kind) { return kind == LineKind::Rejected || kind == LineKind::Doubtful; }

}  // namespace

void SurveyNetworkView::paintEvent(QPaintEvent* /*event*/) {
  const double scale = devicePixelRatioF();
  const QSize size = (QSizeF(this->size()) * scale).toSize();
  if (picture_.size() != size) {
    picture_ = QPixmap(size);
    picture_.setDevicePixelRatio(scale);
    picture_.fill(palette().color(QPalette::Base));
    QPainter painter(&picture_);
    painter.setFont(font());
    PaintPicture(painter);
  }
  QPainter painter(this);
  painter.drawPixmap(0, 0, picture_);
  painter.setRenderHint(QPainter::Antialiasing);
  if (chosen_ >= 0) {
    for (const Line& line : lines_) {
      if (line.a == chosen_ || line.b == chosen_) {
        Line bold = line;
        bold.width = std::max(line.width, 1.5) + 0.5;
        PaintLine(
            painter, bold,
            IsSuspect(line.kind) ? ColourOf(line.kind) : palette().color(QPalette::Highlight));
      }
    }
  }
  for (std::size_t index = 0; index < nodes_.size(); ++index) {
    PaintNode(painter, index);
  }
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.setPen(palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
  if (hasFocus()) {
    painter.drawRect(rect().adjusted(1, 1, -2, -2));
  }
}

void SurveyNetworkView::PaintPicture(QPainter& painter) const {
  if (nodes_.empty()) {
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(rect(), Qt::AlignCenter, QStringLiteral("No antennas yet"));
    return;
  }
  painter.setRenderHint(QPainter::Antialiasing);
  for (std::size_t begin = 0; begin < lines_.size();) {
    const Line& first = lines_[begin];
    if (IsSuspect(first.kind) || !DashPattern(first.kind).empty()) {
      PaintLine(painter, first, ColourOf(first.kind));
      ++begin;
      continue;
    }
    std::vector<QLineF> together;
    while (begin < lines_.size() && lines_[begin].kind == first.kind &&
           lines_[begin].width == first.width) {
      const Line& line = lines_[begin++];
      together.emplace_back(PlaceOf(nodes_[static_cast<std::size_t>(line.a)]),
                            PlaceOf(nodes_[static_cast<std::size_t>(line.b)]));
    }
    painter.setPen(QPen(ColourOf(first.kind), first.width));
    painter.drawLines(together.data(), static_cast<int>(together.size()));
  }
  if (LegendWidth() > 0.0) {
    PaintLegend(painter);
  }
}

void SurveyNetworkView::AddToPicture(const std::vector<Line>& added) {
  QPainter painter(&picture_);
  painter.setRenderHint(QPainter::Antialiasing);
  for (const Line& line : added) {
    PaintLine(painter, line, ColourOf(line.kind));
  }
  for (const Line& line : lines_) {
    if (IsSuspect(line.kind)) {
      PaintLine(painter, line, ColourOf(line.kind));
    }
  }
}

void SurveyNetworkView::PaintLine(QPainter& painter, const Line& line, const QColor& colour) const {
  const QPointF a = PlaceOf(nodes_[static_cast<std::size_t>(line.a)]);
  const QPointF b = PlaceOf(nodes_[static_cast<std::size_t>(line.b)]);
  painter.setPen(PenOf(line.kind, colour, line.width));
  painter.drawLine(a, b);
  if (IsSuspect(line.kind)) {
    PaintCross(painter, (a + b) / 2.0, ColourOf(line.kind));
  }
}

void SurveyNetworkView::PaintNode(QPainter& painter, std::size_t index) const {
  const Node& node = nodes_[index];
  const double space =
      2.0 * std::numbers::pi * Radii().height() / static_cast<double>(nodes_.size());
  const double size = std::clamp(space / 3.0, kSmallestNode, kLargestNode);
  const QPointF place = PlaceOf(node);
  const QColor ink = palette().color(QPalette::Text);
  const bool isChosen = static_cast<int>(index) == chosen_;
  if (node.standHere) {
    painter.setPen(QPen(ink, 2.0));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(place, size + 4.5, size + 4.5);
  }
  painter.setPen(QPen(ink, 1.2));
  painter.setBrush(node.isSettled ? ink : palette().color(QPalette::Base));
  painter.drawEllipse(place, size, size);
  const QFontMetricsF metrics(painter.font());
  if (space < metrics.height() * 0.8 && !node.standHere && !node.isReference && !isChosen) {
    return;
  }
  QFont nameFont = font();
  nameFont.setUnderline(node.isReference);
  nameFont.setBold(isChosen);
  painter.setFont(nameFont);
  const QPointF middle = PlaceOf(node, size + 6.0 + metrics.height() / 2.0);
  const QSizeF area(metrics.horizontalAdvance(node.name) * 1.3 + 4.0, metrics.height());
  painter.setPen(ink);
  painter.drawText(QRectF(middle - QPointF(area.width(), area.height()) / 2.0, area),
                   Qt::AlignCenter, node.name);
  painter.setFont(font());
}

void SurveyNetworkView::PaintLegend(QPainter& painter) const {
  const QFontMetricsF metrics(font());
  const double step = metrics.height() + 4.0;
  double y = 8.0 + step / 2.0;
  const QColor ink = palette().color(QPalette::Text);
  const auto write = [&](const char* text) {
    painter.setPen(ink);
    painter.drawText(QPointF(14.0 + kSampleWidth, y + metrics.ascent() / 2.0 - 1.0),
                     QString::fromLatin1(text));
    y += step;
  };
  for (const auto& [kind, text] : kLegend) {
    const bool isDrawn = std::any_of(lines_.begin(), lines_.end(),
                                     [kind = kind](const Line& line) { return line.kind == kind; });
    if (isDrawn) {
      painter.setPen(PenOf(kind, ColourOf(kind), 2.0));
      painter.drawLine(QPointF(8.0, y), QPointF(8.0 + kSampleWidth, y));
      if (IsSuspect(kind)) {
        PaintCross(painter, {8.0 + kSampleWidth / 2.0, y}, ColourOf(kind));
      }
      write(text);
    }
  }
  for (std::size_t entry = 0; entry < kNodeLegend.size(); ++entry) {
    const QPointF place(8.0 + kSampleWidth / 2.0, y);
    painter.setPen(QPen(ink, 1.2));
    painter.setBrush(entry == 0 ? ink : palette().color(QPalette::Base));
    painter.drawEllipse(place, 4.0, 4.0);
    if (entry == 2) {
      painter.setPen(QPen(ink, 2.0));
      painter.setBrush(Qt::NoBrush);
      painter.drawEllipse(place, 7.0, 7.0);
    }
    write(kNodeLegend[entry]);
  }
}

QColor SurveyNetworkView::ColourOf(LineKind kind) const {
  const bool isDark = palette().color(QPalette::Base).lightness() < 128;
  switch (kind) {
    case LineKind::Rejected:
    case LineKind::Doubtful:
      return isDark ? QColor(0xff, 0x6b, 0x6b) : QColor(0xcc, 0x00, 0x00);
    case LineKind::Bridge:
      return isDark ? QColor(0x5a, 0xa9, 0xff) : QColor(0x00, 0x66, 0xcc);
    case LineKind::OneWay:
      return isDark ? QColor(0xb0, 0xb0, 0xb0) : QColor(0x55, 0x55, 0x55);
    case LineKind::TwoWay:
      break;
  }
  return isDark ? QColor(0x78, 0x78, 0x78) : QColor(0x99, 0x99, 0x99);
}

QPointF SurveyNetworkView::PlaceOf(const Node& node, double outside) const {
  const QSizeF radii = Radii();
  return Middle() +
         QPointF(node.x * (radii.width() + outside), node.y * (radii.height() + outside));
}

double SurveyNetworkView::LegendWidth() const {
  const QFontMetricsF metrics(font());
  const double needed =
      metrics.horizontalAdvance(QStringLiteral("bridge, unchecked")) + kSampleWidth + 20.0;
  const double lines = static_cast<double>(kLegend.size() + kNodeLegend.size());
  const bool fits = lines * (metrics.height() + 4.0) + 16.0 <= height();
  return fits && width() - needed >= 0.8 * height() ? needed : 0.0;
}

QSizeF SurveyNetworkView::Radii() const {
  const double margin = kLargestNode + 10.0 + QFontMetricsF(font()).height() * 1.1;
  const double high = std::max(height() / 2.0 - margin, kSmallestRadius);
  const double wide = std::max((width() - LegendWidth()) / 2.0 - margin, kSmallestRadius);
  return {std::min(wide, kMostStretch * high), std::min(high, kMostStretch * wide)};
}

QPointF SurveyNetworkView::Middle() const {
  return {(width() + LegendWidth()) / 2.0, height() / 2.0};
}

}  // namespace kelvara::survey
