#pragma once

#include <QPixmap>
#include <QString>
#include <QWidget>
#include <optional>
#include <vector>

#include "survey/NetworkPicture.h"
#include "survey/SurveyResult.h"
#include "sync/DisplayOptions.h"

namespace kelvara::survey {

/// The picture of the network: antennas on a circle, pairs as lines. A click on an antenna, or the
/// arrow keys, choose one, whose pairs stand out.
class SurveyNetworkView : public QWidget {
  Q_OBJECT

 public:
  explicit SurveyNetworkView(QWidget* parent);

  /// Shows a survey. Nothing is painted again if it looks the same.
  void ShowNetwork(const SurveyResult& survey, const sync::DisplayOptions& options);

  /// The chosen antenna's index; -1 for none.
  void SetChosen(int antenna);

  QSize sizeHint() const override { return {460, 340}; }
  QSize minimumSizeHint() const override { return {120, 90}; }

 signals:
  void Chosen(int antenna);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool event(QEvent* event) override;

 private:
  /// A line as it is painted.
  struct Line {
    int a = 0;
    int b = 0;
    LineKind kind = LineKind::TwoWay;
    double width = 1.0;
    bool operator==(const Line&) const = default;
  };
  struct Node {
    double x = 0.0;
    double y = 0.0;
    bool standHere = false;
    bool isReference = false;
    bool isSettled = false;
    QString name;
    QString status;
    bool operator==(const Node&) const = default;
  };

  /// The lines that must be painted over the picture to have that of `lines`; nothing if the
  /// picture must be painted from the beginning, which takes several times as long as a redraw of
  /// the grid. Lines that would only become thinner keep their width.
  std::optional<std::vector<Line>> LinesToAdd(std::vector<Line>& lines, std::size_t nodes) const;
  void AddToPicture(const std::vector<Line>& added);
  void PaintPicture(QPainter& painter) const;
  void PaintLine(QPainter& painter, const Line& line, const QColor& colour) const;
  void PaintNode(QPainter& painter, std::size_t index) const;
  void PaintLegend(QPainter& painter) const;
  QColor ColourOf(LineKind kind) const;
  /// Where an antenna is drawn, or a point so far outside of it.
  QPointF PlaceOf(const Node& node, double outside = 0.0) const;
  double LegendWidth() const;
  QSizeF Radii() const;
  QPointF Middle() const;
  /// The antenna at a point; -1 if there is none.
  int NodeAt(const QPointF& point) const;

  std::vector<Node> nodes_;
  std::vector<Line> lines_;
  int chosen_ = -1;
  QPixmap picture_;  ///< The lines and the legend; null once they are out of date.
};

}  // namespace kelvara::survey
