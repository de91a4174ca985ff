#include "survey/SurveyNetworkView.h"

#include <QEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLineF>
#include <QMouseEvent>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <utility>

#include "platform/qt/Text.h"
#include "survey/SurveyWords.h"

namespace kelvara::survey {
namespace {

/// Widths are rounded to this, so that a few more readings do not paint everything again.
constexpr double kWidthStep = 0.25;

/// How far from an antenna a click chooses it, in pixels.
constexpr double kReach = 18.0;

}  // namespace

SurveyNetworkView::SurveyNetworkView(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
}

void SurveyNetworkView::ShowNetwork(const SurveyResult& survey,
                                    const sync::DisplayOptions& options) {
  const NetworkPicture layout = LayOutNetwork(survey);
  std::vector<Node> nodes;
  for (std::size_t antenna = 0; antenna < layout.nodes.size(); ++antenna) {
    const PictureNode& node = layout.nodes[antenna];
    const SurveyAntenna& figures = survey.antennas[antenna];
    nodes.push_back({.x = node.x,
                     .y = node.y,
                     .standHere = node.standHere,
                     .isReference = node.isReference,
                     .isSettled = figures.status == AntennaStatus::Settled,
                     .name = qt::ToQString(options.RpnText(figures.rpn)),
                     .status = qt::ToQString(StatusText(figures.status))});
  }
  std::vector<Line> lines;
  for (const PictureLine& line : layout.lines) {
    const SurveyPair& pair = survey.pairs[line.pair];
    lines.push_back({.a = pair.a,
                     .b = pair.b,
                     .kind = line.kind,
                     .width = std::max(std::round(line.width / kWidthStep), 1.0) * kWidthStep});
  }
  // Lines of one kind and width are painted together.
  std::stable_sort(lines.begin(), lines.end(), [](const Line& one, const Line& other) {
    return one.kind != other.kind ? one.kind > other.kind : one.width < other.width;
  });
  const QString words = qt::ToQString(NetworkWords(survey, options));
  if (words != accessibleDescription()) {
    setAccessibleDescription(words);
  }
  const std::optional<std::vector<Line>> added = LinesToAdd(lines, nodes.size());
  if (nodes == nodes_ && added && added->empty()) {
    return;
  }
  nodes_ = std::move(nodes);
  lines_ = std::move(lines);
  if (chosen_ >= static_cast<int>(nodes_.size())) {
    chosen_ = -1;
  }
  if (!added) {
    picture_ = QPixmap();
  } else if (!picture_.isNull()) {
    AddToPicture(*added);
  }
  update();
}

std::optional<std::vector<SurveyNetworkView::Line>> SurveyNetworkView::LinesToAdd(
    std::vector<Line>& lines, std::size_t nodes) const {
  if (nodes != nodes_.size() || lines.size() < lines_.size()) {
    return std::nullopt;
  }
  std::map<std::pair<int, int>, Line> before;
  std::set<LineKind> kindsBefore;
  std::set<LineKind> kinds;
  for (const Line& line : lines_) {
    before[{line.a, line.b}] = line;
    kindsBefore.insert(line.kind);
  }
  std::vector<Line> added;
  for (Line& line : lines) {
    kinds.insert(line.kind);
    const auto found = before.find({line.a, line.b});
    if (found == before.end()) {
      added.push_back(line);
      continue;
    }
    const Line& old = found->second;
    if (old.kind != line.kind && old.kind != LineKind::OneWay) {
      return std::nullopt;
    }
    // New pairs make all lines a little thinner; that alone is not worth a new picture.
    line.width = std::max(line.width, old.width);
    if (line != old) {
      added.push_back(line);
    }
  }
  return kinds == kindsBefore ? std::optional(std::move(added)) : std::nullopt;
}

void SurveyNetworkView::SetChosen(int antenna) {
  if (chosen_ != antenna) {
    chosen_ = antenna < static_cast<int>(nodes_.size()) ? antenna : -1;
    update();
  }
}

int SurveyNetworkView::NodeAt(const QPointF& point) const {
  int nearest = -1;
  double nearestDistance = kReach;
  for (std::size_t index = 0; index < nodes_.size(); ++index) {
    const double distance = QLineF(point, PlaceOf(nodes_[index])).length();
    if (distance < nearestDistance) {
      nearestDistance = distance;
      nearest = static_cast<int>(index);
    }
  }
  return nearest;
}

void SurveyNetworkView::mousePressEvent(QMouseEvent* event) {
  const int antenna = NodeAt(event->position());
  if (event->button() == Qt::LeftButton && antenna >= 0) {
    emit Chosen(antenna);
  }
}

void SurveyNetworkView::keyPressEvent(QKeyEvent* event) {
  const int count = static_cast<int>(nodes_.size());
  int step = 0;
  if (event->key() == Qt::Key_Right || event->key() == Qt::Key_Down) {
    step = 1;
  } else if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Up) {
    step = -1;
  }
  if (step == 0 || count == 0) {
    QWidget::keyPressEvent(event);
    return;
  }
  const int start = chosen_ < 0 ? (step > 0 ? -1 : 0) : chosen_;
  emit Chosen((start + step + count) % count);
}

void SurveyNetworkView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
    picture_ = QPixmap();
    update();
  }
}

bool SurveyNetworkView::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    const auto* help = static_cast<QHelpEvent*>(event);
    const int antenna = NodeAt(help->pos());
    const QString text = antenna < 0 ? toolTip()
                                     : nodes_[static_cast<std::size_t>(antenna)].name +
                                           QStringLiteral(": ") +
                                           nodes_[static_cast<std::size_t>(antenna)].status;
    QToolTip::showText(help->globalPos(), text, this);
    return true;
  }
  return QWidget::event(event);
}

}  // namespace kelvara::survey
