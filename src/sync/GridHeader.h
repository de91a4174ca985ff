#pragma once

#include <QHeaderView>

namespace kelvara::sync {

/// A header of the grid. Its sections are fixed; its texts are centred and not shortened to keep a
/// margin.
class GridHeader : public QHeaderView {
 public:
  explicit GridHeader(Qt::Orientation orientation, QWidget* parent = nullptr);

  /// The size that the grid has set; the header does not measure its texts.
  QSize sizeHint() const override { return minimumSize(); }

  /// Highlights one section; 0, the hidden one, for none.
  void SetMarked(int section);

 protected:
  void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;

 private:
  int marked_ = 0;
};

}  // namespace kelvara::sync
