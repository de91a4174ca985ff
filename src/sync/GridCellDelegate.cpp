#include "sync/GridCellDelegate.h"

#include <QPainter>

#include "sync/SyncGridModel.h"

namespace kelvara::sync {

void GridCellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
  const auto& model = static_cast<const SyncGridModel&>(*index.model());
  const std::optional<Colour>& background = model.At(index.row(), index.column()).background;
  painter->fillRect(option.rect,
                    background ? QColor(background->Red(), background->Green(), background->Blue())
                               : option.palette.color(QPalette::Base));
  if ((option.state & QStyle::State_Selected) != 0) {
    painter->setPen(option.palette.color(QPalette::Highlight));
    painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
  }
  const QString text = model.CellText(index.row(), index.column());
  if (!text.isEmpty()) {
    painter->setPen(background ? QColor(Qt::black) : option.palette.color(QPalette::Text));
    painter->drawText(option.rect, Qt::AlignCenter, text);
  }
}

}  // namespace kelvara::sync
