#include "sync/GridCellDelegate.h"

#include <QPainter>
#include <algorithm>
#include <tuple>

#include "sync/SyncGridModel.h"

namespace kelvara::sync {
namespace {

constexpr int kMeasuredFrame = 2;

/// A frame inside a cell, in the colour of the texts.
void DrawFrame(QPainter& painter, const QRect& cell, const QPen& pen) {
  const int inset = pen.width() / 2;
  painter.setPen(pen);
  painter.drawRect(cell.adjusted(inset, inset, -1 - inset, -1 - inset));
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
    DrawFrame(*painter, option.rect,
              QPen(textColour, kMeasuredFrame, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
  }
  if (cell == marks_.mirror) {
    DrawFrame(*painter, option.rect, QPen(textColour, 1, Qt::DashLine));
  }
  if ((option.state & QStyle::State_Selected) != 0) {
    painter->setPen(option.palette.color(QPalette::Highlight));
    painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
  }
  const QString text = model.CellText(index.row(), index.column());
  if (!text.isEmpty()) {
    painter->setPen(textColour);
    painter->drawText(option.rect, Qt::AlignCenter, text);
  }
}

}  // namespace kelvara::sync
