#pragma once

#include <QStyledItemDelegate>
#include <vector>

#include "sync/MeasuredCells.h"

namespace kelvara::sync {

/// The cells that the grid marks by lines, which leave their colours as they are.
struct GridMarks {
  /// The last measured cells, by rows.
  std::vector<GridPosition> measured;
  /// The cell of the same two antennas the other way round. Row 0 if there is none.
  GridPosition mirror;

  bool IsMeasured(GridPosition cell) const;
};

/// Paints a cell of the grid: its colour, its text in the middle, a frame if it is selected, and
/// the lines that mark it.
class GridCellDelegate : public QStyledItemDelegate {
 public:
  /// `marks` must outlive the delegate.
  GridCellDelegate(const GridMarks& marks, QObject* parent)
      : QStyledItemDelegate(parent), marks_(marks) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;

 private:
  const GridMarks& marks_;
};

}  // namespace kelvara::sync
