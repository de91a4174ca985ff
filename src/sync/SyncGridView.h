#pragma once

#include <QLabel>
#include <QPoint>
#include <QTableView>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "sync/GridCellDelegate.h"
#include "sync/GridHeader.h"
#include "sync/MeasuredCells.h"
#include "sync/SyncGridModel.h"

namespace kelvara::sync {

/// The grid on the screen. Header row 0 and header column 0 of the model are shown as headers,
/// which stay in place while the rest scrolls.
class SyncGridView : public QTableView {
  Q_OBJECT

 public:
  explicit SyncGridView(QWidget* parent = nullptr);

  /// Sets the model to show, which must exist as long as the view. Called once.
  void SetGridModel(SyncGridModel* model);

  /// Sets the function that gives the tool tip of a data cell, called with the grid's row and
  /// column.
  void SetToolTips(std::function<QString(int row, int column)> toolTips) {
    toolTips_ = std::move(toolTips);
  }

  /// Sets what an empty grid says. After `SetGridModel`.
  void SetEmptyText(const QString& text);

  /// What Copy copies: the rectangle around the selected cells, or else the whole grid, as text
  /// with tabs between cells and a line feed after each row. Cells that are not selected are empty.
  QString CopiedText() const;

  /// Scales columns, rows and texts, in per cent of their usual size: 50 to 200.
  void SetZoom(int percent);
  int Zoom() const { return zoom_; }

  /// Zooms by Ctrl++, Ctrl+- or Ctrl+0; false for any other key.
  bool ZoomByKey(const QKeyEvent& event);

  /// Marks these cells, given by rows, as measured, instead of those marked before.
  void ShowMeasured(std::vector<GridPosition> cells);

 protected:
  bool event(QEvent* event) override;
  void updateGeometries() override;
  bool viewportEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void changeEvent(QEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;

 private:
  void HideHeaderCells();
  void FitFont();
  int ColumnPixels(int twips) const;
  void OpenContextMenu();
  /// Marks the headers and the mirror of the cell under the mouse or, when there is none or the
  /// keyboard has been used since, of the current cell.
  void MarkCell();
  void ShowCorner();
  /// Tells screen readers what an empty grid waits for.
  void DescribeEmptiness();

  SyncGridModel* gridModel_ = nullptr;
  QLabel* corner_;
  bool fitting_ = false;
  int zoom_;
  QString emptyText_;
  int wheelAngle_ = 0;
  GridHeader* columnHeader_;
  GridHeader* rowHeader_;
  GridMarks marks_;
  /// Where the mouse points, unless the keyboard has been used since.
  std::optional<QPoint> mouse_;
  std::function<QString(int, int)> toolTips_;
};

}  // namespace kelvara::sync
