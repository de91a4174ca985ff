#include "sync/FittedText.h"

#include <QFontMetrics>

namespace kelvara::sync {
namespace {

/// One pixel on the left, one on the right and the line between two cells.
constexpr int kMargin = 3;
/// Every text up to this length fits at every zoom. Measuring takes as long as drawing.
constexpr int kShortText = 3;

}  // namespace

void DrawFittedText(QPainter& painter, const QRect& cell, const QString& text) {
  const int available = cell.width() - kMargin;
  const int width = text.size() <= kShortText ? 0 : painter.fontMetrics().horizontalAdvance(text);
  if (width <= available) {
    painter.drawText(cell, Qt::AlignCenter, text);
    return;
  }
  painter.save();
  painter.translate(QRectF(cell).center());
  painter.scale(qreal(available) / width, 1);
  painter.drawText(QRect(-width, -cell.height() / 2, 2 * width, cell.height()), Qt::AlignCenter,
                   text);
  painter.restore();
}

}  // namespace kelvara::sync
