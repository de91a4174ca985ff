#include "survey/StatusSign.h"

#include <QPainter>
#include <QPixmap>
#include <QPolygonF>
#include <initializer_list>
#include <map>

namespace kelvara::survey {
namespace {

/// Signs are drawn in a square of this side.
constexpr int kSide = 16;

void DrawBackground(QPainter& painter, const QColor& colour) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour);
}

void DrawCharacter(QPainter& painter, const QString& character) {
  QFont font = painter.font();
  font.setPixelSize(11);
  font.setBold(true);
  painter.setFont(font);
  painter.setPen(Qt::white);
  painter.drawText(QRectF(0, 0, kSide, kSide), Qt::AlignCenter, character);
}

void DrawSign(QPainter& painter, AntennaStatus status) {
  const QPen stroke(Qt::white, 2.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
  switch (status) {
    case AntennaStatus::Settled:
      DrawBackground(painter, QColor(0x2e, 0x8b, 0x57));
      painter.drawEllipse(QRectF(1, 1, 14, 14));
      painter.setPen(stroke);
      painter.setBrush(Qt::NoBrush);
      painter.drawPolyline(QPolygonF({{4.5, 8.5}, {7, 11}, {11.5, 5.5}}));
      return;
    case AntennaStatus::NearStep:
      DrawBackground(painter, QColor(0xb3, 0x74, 0x00));
      painter.drawPolygon(QPolygonF({{8, 0.5}, {15.5, 14.5}, {0.5, 14.5}}));
      painter.setPen(QPen(Qt::white, 1.6, Qt::SolidLine, Qt::RoundCap));
      painter.drawPolyline(QPolygonF({{5.2, 12}, {8, 12}, {8, 8.5}, {10.2, 8.5}}));
      return;
    case AntennaStatus::Unchecked:
      DrawBackground(painter, QColor(0x75, 0x75, 0x75));
      painter.drawRoundedRect(QRectF(1.5, 1.5, 13, 13), 2, 2);
      DrawCharacter(painter, QStringLiteral("?"));
      return;
    case AntennaStatus::Suspect:
      DrawBackground(painter, QColor(0xcf, 0x36, 0x36));
      painter.drawPolygon(QPolygonF({{8, 0}, {16, 8}, {8, 16}, {0, 8}}));
      DrawCharacter(painter, QStringLiteral("!"));
      return;
    case AntennaStatus::Apart:
      painter.setBrush(Qt::NoBrush);
      painter.setPen(QPen(QColor(0x8a, 0x6f, 0xd1), 2.4, Qt::SolidLine, Qt::FlatCap));
      painter.drawArc(QRectF(2, 2, 12, 12), 60 * 16, 240 * 16);
      painter.drawLine(QPointF(11, 8), QPointF(16, 8));
      return;
  }
}

QIcon MakeSign(AntennaStatus status) {
  QIcon icon;
  for (const int scale : {1, 2, 3, 4}) {
    QPixmap picture(kSide * scale, kSide * scale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    DrawSign(painter, status);
    painter.end();
    icon.addPixmap(picture);
    // The desktop would tint the sign of a selected row.
    icon.addPixmap(picture, QIcon::Selected);
  }
  return icon;
}

}  // namespace

QIcon StatusSign(AntennaStatus status) {
  static const std::map<AntennaStatus, QIcon> signs = [] {
    std::map<AntennaStatus, QIcon> made;
    for (const AntennaStatus each :
         {AntennaStatus::Settled, AntennaStatus::NearStep, AntennaStatus::Unchecked,
          AntennaStatus::Suspect, AntennaStatus::Apart}) {
      made[each] = MakeSign(each);
    }
    return made;
  }();
  return signs.at(status);
}

}  // namespace kelvara::survey
