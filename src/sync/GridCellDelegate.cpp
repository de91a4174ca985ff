#include "sync/GridCellDelegate.h"

#include <QPainter>
#include <algorithm>
#include <tuple>

#include "sync/FittedText.h"
#include "sync/SyncGridModel.h"

namespace kelvara::sync {
namespace {

constexpr int kMeasuredBar = 2;

/// Bars along the top and the bottom of a cell, where no text reaches at any zoom.
void DrawBars(QPainter& painter, const QRect& cell, const QColor& colour) {
  painter.fillRect(cell.left(), cell.top(), cell.width(), kMeasuredBar, colour);
  painter.fillRect(cell.left(), cell.bottom() + 1 - kMeasuredBar, cell.width(), kMeasuredBar,
                   colour);
}

}  // namespace

bool GridMarks::IsMeasured(GridPosition cell) const {
  const auto isBefore = [](GridPosition one, GridPosition other) {
    return std::tie(one.row, one.column) < std::tie(other.row, other.column);
  };
  return std::binary_search(measured.begin(), measured.end(), cell, isBefore);
}

void GridCellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
  const auto& model = static_cast<const SyncGridModel&>(*index.model());
  const std::optional<Colour>& background = model.At(index.row(), index.column()).background;
  painter->fillRect(option.rect,
                    background ? QColor(background->Red(), background->Green(), background->Blue())
                               : option.palette.color(QPalette::Base));
  const GridPosition cell{index.row(), index.column()};
  const QColor textColour = background ? QColor(Qt::black) : option.palette.color(QPalette::Text);
  if (!marks_.measured.empty() && marks_.IsMeasured(cell)) {
    DrawBars(*painter, option.rect, textColour);
  }
  if (cell == marks_.mirror) {
    painter->setPen(QPen(textColour, 1, Qt::DashLine));
    painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
  }
  if ((option.state & QStyle::State_Selected) != 0) {
    painter->setPen(option.palette.color(QPalette::Highlight));
    painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
  }
  const QString text = model.CellText(index.row(), index.column());
  if (!text.isEmpty()) {
    painter->setPen(textColour);
    DrawFittedText(*painter, option.rect, text);
  }
}

}  // namespace kelvara::sync
