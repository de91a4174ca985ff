#pragma once

#include <QHeaderView>

namespace kelvara::sync {

/// A header of the grid: fixed sections, texts centred and never shortened for a margin's sake.
class GridHeader : public QHeaderView {
 public:
  explicit GridHeader(Qt::Orientation orientation, QWidget* parent = nullptr);

  /// The size that the grid has fixed. The texts, which a header would measure, have no part in it.
  QSize sizeHint() const override { return minimumSize(); }

 protected:
  void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
};

}  // namespace kelvara::sync
