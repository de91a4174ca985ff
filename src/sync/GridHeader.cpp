#include "sync/GridHeader.h"

#include <QPainter>

namespace kelvara::sync {

GridHeader::GridHeader(Qt::Orientation orientation, QWidget* parent)
    : QHeaderView(orientation, parent) {
  setSectionResizeMode(Fixed);
  setSectionsClickable(false);
  setHighlightSections(false);
  setMinimumSectionSize(1);
}

void GridHeader::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const {
  painter->fillRect(rect, palette().color(QPalette::Button));
  painter->setPen(palette().color(QPalette::Mid));
  painter->drawLine(rect.topRight(), rect.bottomRight());
  painter->drawLine(rect.bottomLeft(), rect.bottomRight());
  painter->setPen(palette().color(QPalette::ButtonText));
  painter->drawText(rect, Qt::AlignCenter,
                    model()->headerData(logicalIndex, orientation(), Qt::DisplayRole).toString());
}

}  // namespace kelvara::sync
