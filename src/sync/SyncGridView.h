#pragma once

#include <QLabel>
#include <QTableView>
#include <functional>
#include <utility>

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

  /// The whole grid as text, with tabs between cells and a line feed after each row.
  QString GridText() const;

 protected:
  bool event(QEvent* event) override;
  void updateGeometries() override;
  bool viewportEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void HideHeaderCells();
  void FitFont();
  void ShowCorner();

  SyncGridModel* gridModel_ = nullptr;
  QLabel* corner_;
  bool fitting_ = false;
  std::function<QString(int, int)> toolTips_;
};

}  // namespace kelvara::sync
