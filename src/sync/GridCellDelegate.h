#pragma once

#include <QStyledItemDelegate>

namespace kelvara::sync {

/// Paints a cell of the grid: its colour, its text in the middle, and a frame if it is selected.
class GridCellDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
};

}  // namespace kelvara::sync
