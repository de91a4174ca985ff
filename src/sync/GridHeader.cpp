#include "sync/GridHeader.h"

#include <QPainter>
#include <utility>

#include "sync/FittedText.h"

namespace kelvara::sync {

GridHeader::GridHeader(Qt::Orientation orientation, QWidget* parent)
    : QHeaderView(orientation, parent) {
  setSectionResizeMode(Fixed);
  setSectionsClickable(false);
  setHighlightSections(false);
  setMinimumSectionSize(1);
}

void GridHeader::SetMarked(int section) {
  if (section != marked_) {
    updateSection(std::exchange(marked_, section));
    updateSection(marked_);
  }
}

void GridHeader::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const {
  const bool isMarked = logicalIndex == marked_;
  painter->fillRect(rect, palette().color(isMarked ? QPalette::Highlight : QPalette::Button));
  painter->setPen(palette().color(QPalette::Mid));
  painter->drawLine(rect.topRight(), rect.bottomRight());
  painter->drawLine(rect.bottomLeft(), rect.bottomRight());
  painter->setPen(palette().color(isMarked ? QPalette::HighlightedText : QPalette::ButtonText));
  DrawFittedText(*painter, rect,
                 model()->headerData(logicalIndex, orientation(), Qt::DisplayRole).toString());
}

}  // namespace kelvara::sync
